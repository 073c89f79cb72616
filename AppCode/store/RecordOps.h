#pragma once
#include "store/Database.h"

#include <QString>
#include <QVariant>
#include <functional>
#include <initializer_list>
#include <utility>

// Record-at-a-time operations on keyed tables, carried out over SQL.
namespace qln {

// Operation codes as callers name them.
enum DbOp : int {
    kOpOpen = 0, kOpClose = 1, kOpInsert = 2, kOpUpdate = 3, kOpDelete = 4, kOpEqual = 5,
    kOpGetNext = 6, kOpGetPrevious = 7, kOpGreater = 8, kOpGreaterEqual = 9, kOpLess = 10,
    kOpLessEqual = 11, kOpGetFirst = 12, kOpGetLast = 13, kOpBeginTrans = 19, kOpEndTrans = 20,
    kOpReserved = 21, kOpBySQL = 36,
};

QString gfsDB_OperationName(int iOperation);

bool gfbDB_RecordOp(int iTable, int iOperation, int iKey = 0, bool bRaw = false, bool bLock = false,
                    const QString &sSQL = QString());

// The four routines each table module gives; the routers reach them by table number.
struct TableRoutines {
    std::function<void(int iTable, int iKey)> key;
    std::function<void(int iTable)> read;  // current row -> buffer
    std::function<void(int iTable)> write; // buffer -> current row
    std::function<QString()> values;       // text for VALUES(...)
};
void gpDB_table_routines_set(int iTable, TableRoutines routines);
void gpDB_table_key_set(int iTable, int iKey);
void gpDB_table_row_to_record(int iTable);
void gpDB_table_record_to_row(int iTable);
QString gfsDB_table_values_get(int iTable);

using KeySegment = std::pair<int, QVariant>; // column ordinal, value
void gpDB_KeySet(int iTable, int iSegments, std::initializer_list<KeySegment> segments);
QString gfsDB_KeyValue(int iSegment); // the value as it joins a statement
int gfiDB_KeyOrdinal(int iSegment);   // the column the segment compares

// The table's current record set; null when none is open.
class Recordset *gfrsDB_Current(int iTable);
QVariant gfvDB_FieldGet(int iTable, int iField);
QVariant gfvDB_FieldGet(int iTable, const QString &sField);
QString gfsDB_FieldName(int iTable, int iField);
void gpDB_FieldSet(int iTable, int iField, const QVariant &vValue);
QString gfsDB_Quote(const QVariant &vValue, bool bDouble, int iMaxLen);

// Statement builders; each returns the text it built and runs it through the common tail.
bool gfbDB_GetByKey(int iTable, const QString &sOperator, const QString &sSQL);
bool gfbDB_GetByField(int iTable, const QString &sOperator, int iField);
bool gfbDB_GetNext(int iTable, int iKey);
bool gfbDB_GetPrevious(int iTable, int iKey);
bool gfbDB_GetFirst(int iTable, int iKey);
bool gfbDB_GetLast(int iTable, int iKey);
bool gfbDB_BySQL(int iTable, const QString &sSQL);
bool gfbDB_Insert(int iTable);

// The texts alone, for those who only need the statement.
QString gfsDB_KeySql(int iTable, const QString &sOperator);
QString gfsDB_NextSql(int iTable, int iKey, const QString &sOperator);
QString gfsDB_FirstSql(int iTable, int iKey);
QString gfsDB_LastSql(int iTable, int iKey);

int gfiDB_RecordCount(int iTable, const QString &sTable = QString());
int gfiDB_Execute(const QString &sSQL);
bool gfbDB_ExecuteSQL(const QString &sSQL, int iTable, bool bNoFetch);
void gpDB_DeleteRecall(int iTable, const QString &sWhat);

// The last statement a keyed read sent, for the lookup grid's counts and for tests.
const QString &gsDB_LastSql();

} // namespace qln
