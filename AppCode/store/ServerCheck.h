#pragma once

namespace qln {

// Before the data path is trusted: can the server's folder be reached? When not, this
// program asks whether to try again. After a lost connection the tables are opened again.
bool gfbServer_Check();

// A lost connection leaves every table's record set behind with it. The keyed operations call
// gpDB_Tables_refresh first: once the server answers again the tables 1 to 7 are opened anew.
// A set so opened, like the first-row set a read that found nothing leaves in place, holds no
// row that the program read, so Update and Delete refuse it (gfbDB_Set_unread) rather than
// write the buffer over whatever row it starts on, until a read succeeds again.
void gpDB_Tables_lost(bool bLost = true); // false: a new connection, its tables opened by the start
void gpDB_Tables_refresh();
void gpDB_Tables_reopen();
bool gfbDB_Set_unread(int iTable);
void gpDB_Set_read(int iTable);    // a read put its own set in the table's slot
void gpDB_Set_unread_mark(int iTable); // the set now in the slot was not read

} // namespace qln
