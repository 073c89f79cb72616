#pragma once
#include <functional>
#include <memory>

namespace qln {

class Recordset;

// Decodes each row of `rows` into the table's buffer by the table's own routine, calling
// `each` after every row; the table's current record set is left as it was. For lists that
// read many records with one statement; the buffer is the caller's to keep or restore.
void gpDB_rows_decode(int iTable, std::unique_ptr<Recordset> &rows, const std::function<void()> &each);
// The current row of `rows` alone.
void gpDB_row_decode(int iTable, std::unique_ptr<Recordset> &rows);

} // namespace qln
