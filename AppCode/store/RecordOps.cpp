#include "store/RecordOps.h"

#include "common/ProcessState.h"
#include "platform/Messages.h"
#include "store/RowsDecode.h"
#include "store/ServerCheck.h"
#include "store/StatementLog.h"

#include <QDateTime>
#include <array>

namespace qln {

namespace {

struct KeyState {
    std::array<int, 9> field{};
    std::array<QVariant, 9> value{};
};

KeyState &keyState()
{
    static KeyState state;
    return state;
}

std::vector<TableRoutines> &routines()
{
    static std::vector<TableRoutines> table(100);
    return table;
}

QString &lastSql()
{
    static QString text;
    return text;
}

const QString &tableName(int iTable) { return dbuaTable[iTable].sSqlFile; }

// The name of the key's column i (1-based), read from the table's current record set.
QString keyField(int iTable, int i) { return gfsDB_FieldName(iTable, keyState().field[i - 1]); }

QString keyValue(int i) { return gfsDB_KeyValue(i); }

QString quoted(const QString &value) { return QLatin1Char('\'') + value + QLatin1Char('\''); }

// A read that found nothing leaves the table's first-row set, so that its column names stay
// at hand; the buffer still holds the row before, and an Update would land on the wrong row.
void firstRowSet_leave(int iTable)
{
    dbaRecordset[iTable].reset();
    gfbDB_TableOpen(iTable);
    gpDB_Set_unread_mark(iTable);
}

// Opens a statement as the table's current record set: true with a row.
bool openTail(int iTable, const QString &sql)
{
    lastSql() = sql;
    auto recordset = std::make_unique<Recordset>();
    if (!recordset->open(dbConnection(), sql)) {
        gDBErr() = recordset->lastError();
        gpDB_LogRefusedQuery(sql, recordset->lastError());
        return false;
    }
    if (recordset->recordCount() < 1) {
        firstRowSet_leave(iTable);
        return false;
    }
    dbaRecordset[iTable] = std::move(recordset);
    gpDB_Set_read(iTable);
    return true;
}


bool isKeyedRead(const QString &name)
{
    static const QStringList names = {QStringLiteral("="), QStringLiteral(">"), QStringLiteral(">="), QStringLiteral("<"),
                                      QStringLiteral("<=")};
    return names.contains(name);
}

} // namespace

QString gfsDB_OperationName(int iOperation)
{
    switch (iOperation) {
    case 0: return QStringLiteral("Open");
    case 1: return QStringLiteral("Close");
    case 2: return QStringLiteral("Insert");
    case 3: return QStringLiteral("Update");
    case 4: return QStringLiteral("Delete");
    case 5: return QStringLiteral("=");
    case 6: case 24: return QStringLiteral("Get Next");
    case 7: case 35: return QStringLiteral("Get Previous");
    case 8: return QStringLiteral(">");
    case 9: return QStringLiteral(">=");
    case 10: return QStringLiteral("<");
    case 11: return QStringLiteral("<=");
    case 12: case 33: return QStringLiteral("Get First");
    case 13: case 34: return QStringLiteral("Get Last");
    case 19: return QStringLiteral("Begin Trans");
    case 20: return QStringLiteral("End Trans");
    case 21: return QStringLiteral("21");
    case 36: return QStringLiteral("BySQL");
    default: return QString();
    }
}

// ---------------------------------------------------------------- routers

void gpDB_table_routines_set(int iTable, TableRoutines r) { routines().at(iTable) = std::move(r); }

void gpDB_table_key_set(int iTable, int iKey)
{
    if (iTable >= 0 && iTable < int(routines().size()) && routines()[iTable].key)
        routines()[iTable].key(iTable, iKey);
}

void gpDB_table_row_to_record(int iTable)
{
    if (iTable >= 0 && iTable < int(routines().size()) && routines()[iTable].read)
        routines()[iTable].read(iTable);
}

void gpDB_table_record_to_row(int iTable)
{
    if (iTable >= 0 && iTable < int(routines().size()) && routines()[iTable].write)
        routines()[iTable].write(iTable);
}

QString gfsDB_table_values_get(int iTable)
{
    if (iTable >= 0 && iTable < int(routines().size()) && routines()[iTable].values)
        return routines()[iTable].values();
    return QString();
}

// ---------------------------------------------------------------- key state and fields

QString gfsDB_Quote(const QVariant &vValue, bool bDouble, int iMaxLen)
{
    QString text = vValue.toString();
    if (text.contains(QChar(0))) // a buffer never filled
        text = QString(text.size(), QLatin1Char(' '));
    if (text.contains(QLatin1String("''")) || !text.contains(QLatin1Char('\'')))
        return text;
    if (!bDouble)
        return text.replace(QLatin1Char('\''), QLatin1Char(' '));
    text = text.replace(QLatin1Char('\''), QLatin1String("''")).trimmed();
    if (text.size() > iMaxLen) {
        text.replace(QLatin1String(", "), QLatin1String(","));
        text.replace(QLatin1String("  "), QLatin1String(" "));
        if (text.endsWith(QLatin1Char(',')))
            text.chop(1);
    }
    return text;
}

void gpDB_KeySet(int iTable, int iSegments, std::initializer_list<KeySegment> segments)
{
    dbuaTable[iTable].iKeySegments = iSegments;
    KeyState &state = keyState();
    int i = 0;
    for (const KeySegment &segment : segments) {
        if (i >= 9)
            break;
        state.field[i] = segment.first;
        const QVariant &v = segment.second;
        // The late segments lose their apostrophes: the asymmetry is the suite's own.
        state.value[i] = v.typeId() == QMetaType::QString ? QVariant(gfsDB_Quote(v, i < 3, 0)) : v;
        ++i;
    }
}

QString gfsDB_KeyValue(int iSegment)
{
    const QVariant &v = keyState().value[iSegment - 1];
    switch (v.typeId()) {
    case QMetaType::QDateTime:
        return v.toDateTime().toString(QStringLiteral("yyyyMMdd HH:mm:ss"));
    case QMetaType::QDate:
        return v.toDate().toString(QStringLiteral("yyyyMMdd")) + QStringLiteral(" 00:00:00");
    case QMetaType::Bool:
        return v.toBool() ? QStringLiteral("-1") : QStringLiteral("0");
    default:
        return v.toString();
    }
}

int gfiDB_KeyOrdinal(int iSegment) { return keyState().field[iSegment - 1]; }

Recordset *gfrsDB_Current(int iTable)
{
    return iTable >= 0 && iTable < int(dbaRecordset.size()) ? dbaRecordset[size_t(iTable)].get() : nullptr;
}

QVariant gfvDB_FieldGet(int iTable, int iField)
{
    const Recordset *rs = gfrsDB_Current(iTable);
    return rs ? rs->value(iField) : QVariant();
}

QVariant gfvDB_FieldGet(int iTable, const QString &sField)
{
    const Recordset *rs = gfrsDB_Current(iTable);
    return rs ? rs->value(rs->fieldIndex(sField)) : QVariant();
}

QString gfsDB_FieldName(int iTable, int iField)
{
    const Recordset *rs = gfrsDB_Current(iTable);
    return rs ? rs->fieldName(iField) : QString();
}

void gpDB_FieldSet(int iTable, int iField, const QVariant &vValue)
{
    Recordset *rs = gfrsDB_Current(iTable);
    if (!rs)
        return;
    const int type = vValue.typeId();
    if (type == QMetaType::QDateTime || type == QMetaType::QDate) {
        rs->setValue(iField, vValue);
        return;
    }
    if (rs->recordCount() == 0)
        return;
    if (vValue.toString().trimmed().isEmpty()) {
        // Empty, not null: a NULL column gets the empty text too, so that blanking always lands.
        const QString empty = QStringLiteral("");
        const QVariant present = rs->value(iField);
        if (present.isNull() || present.toString() != empty)
            rs->setValue(iField, empty);
        return;
    }
    const QVariant present = rs->value(iField);
    if (present.isNull() || present.toString() != vValue.toString())
        rs->setValue(iField, vValue);
}

// ---------------------------------------------------------------- statement texts

QString gfsDB_KeySql(int iTable, const QString &sOperator)
{
    int n = dbuaTable[iTable].iKeySegments;
    if (n == 0 && iTable == 99)
        n = 1;
    QString sql = QStringLiteral("SELECT TOP 1 * FROM ") + tableName(iTable) + QStringLiteral(" WHERE ");
    if (n >= 1 && n <= 6) {
        for (int i = 1; i <= n; ++i) {
            if (i > 1)
                sql += QStringLiteral(" AND ");
            sql += keyField(iTable, i) + sOperator + quoted(keyValue(i));
        }
        sql += QStringLiteral(" ORDER BY ") + keyField(iTable, 1);
    }
    return sql;
}

QString gfsDB_NextSql(int iTable, int iKey, const QString &op)
{
    Q_UNUSED(iKey);
    const int n = dbuaTable[iTable].iKeySegments;
    const QString T = tableName(iTable);
    auto F = [&](int i) { return keyField(iTable, i); };
    auto V = [&](int i) { return quoted(keyValue(i)); };
    const QString opEq = op + QLatin1Char('=');
    const QString count = QStringLiteral("(SELECT COUNT(*) FROM ") + T + QStringLiteral(" WHERE ") + F(1) + QLatin1Char('=') +
                          V(1) + QStringLiteral(") > 1 AND ");
    QString sql = QStringLiteral("SELECT  TOP 1 * FROM ") + T + QStringLiteral(" WHERE ");
    const QString last = F(1) + op + V(1);
    switch (n) {
    case 1:
        sql += last;
        break;
    case 2:
        sql += count + F(1) + QLatin1Char('=') + V(1) + QStringLiteral(" AND ") + F(2) + op + V(2) + QStringLiteral(" OR ") + last;
        break;
    case 3:
        sql += count + F(1) + QLatin1Char('=') + V(1) + QStringLiteral(" AND ") + F(2) + QLatin1Char('=') + V(2) +
               QStringLiteral(" AND ") + F(3) + op + QLatin1Char(' ') + V(3) + QStringLiteral(" OR ") + F(1) + QLatin1Char('=') +
               V(1) + QStringLiteral(" AND ") + F(2) + op + QLatin1Char(' ') + V(2) + QStringLiteral(" OR ") + last;
        break;
    case 4:
    case 5: {
        sql += count + F(1) + QLatin1Char('=') + V(1);
        for (int i = 2; i < n; ++i)
            sql += QStringLiteral(" AND ") + F(i) + opEq + V(i);
        sql += QStringLiteral(" AND ") + F(n) + op + V(n) + QStringLiteral(" OR ") + last;
        break;
    }
    default: // the server refuses what is left
        sql += count + QStringLiteral(" OR ") + last;
        break;
    }
    QStringList order;
    for (int i = 1; i <= qMin(n, 6); ++i)
        order << (op == QLatin1String("<") ? F(i) + QStringLiteral(" DESC") : F(i));
    return sql + QStringLiteral(" ORDER BY ") + order.join(QLatin1Char(','));
}

QString gfsDB_FirstSql(int iTable, int iKey)
{
    QString sql = QStringLiteral("SELECT TOP 1 * FROM ") + tableName(iTable);
    if (iKey == -1)
        return sql;
    gpDB_table_key_set(iTable, iKey);
    const int n = dbuaTable[iTable].iKeySegments;
    if (n == 0)
        return sql;
    sql += QStringLiteral(" ORDER BY ");
    if (n <= 5) {
        QStringList order;
        for (int i = 1; i <= n; ++i)
            order << keyField(iTable, i);
        sql += order.join(QLatin1Char(','));
    }
    return sql;
}

QString gfsDB_LastSql(int iTable, int iKey)
{
    QString sql = QStringLiteral("SELECT TOP 1 * FROM ") + tableName(iTable) + QStringLiteral(" ORDER BY ");
    if (iKey == -1)
        return sql + gfsDB_FieldName(iTable, 0) + QStringLiteral(" DESC");
    gpDB_table_key_set(iTable, iKey);
    const int n = dbuaTable[iTable].iKeySegments;
    if (n >= 1 && n <= 5) {
        QStringList order;
        for (int i = 1; i <= n; ++i)
            order << keyField(iTable, i) + QStringLiteral(" DESC");
        sql += order.join(QLatin1Char(','));
    }
    return sql;
}

// ---------------------------------------------------------------- reads

bool gfbDB_GetByKey(int iTable, const QString &sOperator, const QString &sSQL)
{
    QString sql = sSQL.isEmpty() ? gfsDB_KeySql(iTable, sOperator) : sSQL;
    // The item identifier compares without its leading blanks, wherever the letters stand.
    sql.replace(QLatin1String("ItemID"), QLatin1String("ltrim(ItemID)"));
    if (sOperator == QLatin1String("<") || sOperator == QLatin1String("<="))
        sql += QStringLiteral(" DESC");
    return openTail(iTable, sql);
}

bool gfbDB_GetByField(int iTable, const QString &sOperator, int iField)
{
    const QString value = gfvDB_FieldGet(iTable, iField).toString().replace(QLatin1Char('\''), QLatin1String("''"));
    const QString field = gfsDB_FieldName(iTable, iField);
    QString sql = QStringLiteral("SELECT TOP 1 * FROM ") + tableName(iTable) + QStringLiteral(" WHERE ") + field + sOperator +
                  quoted(value);
    if (sOperator == QLatin1String("<") || sOperator == QLatin1String("<="))
        sql += QStringLiteral(" ORDER BY ") + field + QStringLiteral(" DESC");
    return openTail(iTable, sql);
}

bool gfbDB_GetNext(int iTable, int iKey)
{
    gpDB_table_key_set(iTable, iKey);
    return openTail(iTable, gfsDB_NextSql(iTable, iKey, QStringLiteral(">")));
}

bool gfbDB_GetPrevious(int iTable, int iKey)
{
    gpDB_table_key_set(iTable, iKey);
    return openTail(iTable, gfsDB_NextSql(iTable, iKey, QStringLiteral("<")));
}

bool gfbDB_GetFirst(int iTable, int iKey) { return openTail(iTable, gfsDB_FirstSql(iTable, iKey)); }

bool gfbDB_GetLast(int iTable, int iKey) { return openTail(iTable, gfsDB_LastSql(iTable, iKey)); }

bool gfbDB_BySQL(int iTable, const QString &sSQL) { return openTail(iTable, sSQL); }

const QString &gsDB_LastSql() { return lastSql(); }

void gpDB_rows_decode(int iTable, std::unique_ptr<Recordset> &rows, const std::function<void()> &each)
{
    std::swap(dbaRecordset[size_t(iTable)], rows);
    Recordset &set = *dbaRecordset[size_t(iTable)];
    for (set.moveFirst(); !set.eof(); set.moveNext()) {
        gpDB_table_row_to_record(iTable);
        each();
    }
    std::swap(dbaRecordset[size_t(iTable)], rows);
}

void gpDB_row_decode(int iTable, std::unique_ptr<Recordset> &rows)
{
    std::swap(dbaRecordset[size_t(iTable)], rows);
    gpDB_table_row_to_record(iTable);
    std::swap(dbaRecordset[size_t(iTable)], rows);
}

// ---------------------------------------------------------------- writes

namespace {
void recallWhenDeletingItems(const QString &sSQL)
{
    if (sSQL.contains(QLatin1String("Invt")) && sSQL.contains(QLatin1String("DELETE")))
        gpDB_DeleteRecall(1, sSQL);
}

int mfiDB_Execute(const QString &sSQL, bool (Connection::*run)(const QString &, int *))
{
    recallWhenDeletingItems(sSQL);
    int affected = 0;
    if ((dbConnection().*run)(sSQL, &affected))
        return affected;
    if (sSQL.contains(QLatin1String("RESTORE DATADASE")))
        return 0;
    // Syntax errors went by unseen in the suite; here they still reach the log.
    gpDB_LogRefused(sSQL, dbConnection().lastError());
    return 0;
}
} // namespace

bool gfbDB_Insert(int iTable)
{
    const QString sql = QStringLiteral("INSERT INTO ") + tableName(iTable) + QStringLiteral(" VALUES(") +
                        gfsDB_table_values_get(iTable) + QLatin1Char(')');
    if (mfiDB_Execute(sql, &Connection::executeInsert) > 0)
        return true;
    const DbError &error = dbConnection().lastError();
    gsDBLastError = error.description.startsWith(QLatin1String("Cannot insert duplicate")) ? QStringLiteral("Duplicate Key")
                                                                                          : error.description.trimmed();
    return false;
}

void gpDB_DeleteRecall(int iTable, const QString &sWhat)
{
    Q_UNUSED(sWhat);
    gpFile_append(gfsDataPath_file(QStringLiteral("DeleteRecall.txt")),
                  {gfsPrint_zones({gfsNow_text() + QLatin1Char(' '), QString(), QStringLiteral("  ") + kProgramName}),
                   QStringLiteral("INSERT INTO ") + tableName(iTable) + QStringLiteral(" VALUES(") +
                       gfsDB_table_values_get(iTable) + QLatin1Char(')')});
}

int gfiDB_Execute(const QString &sSQL) { return mfiDB_Execute(sSQL, &Connection::execute); }

bool gfbDB_ExecuteSQL(const QString &sSQL, int iTable, bool bNoFetch)
{
    recallWhenDeletingItems(sSQL);
    auto recordset = std::make_unique<Recordset>();
    if (!recordset->open(dbConnection(), sSQL)) {
        const DbError &error = recordset->lastError();
        if (error.number == DbError::kNotSupported)
            return false;
        gpDB_LogRefusedQuery(sSQL, error);
        gfiMsgBox(QStringLiteral("An error occurred in executing SQL. View PVSW.log in datapath for details."));
        return false;
    }
    if (bNoFetch)
        return false;
    if (!recordset->eof() && !recordset->bof()) {
        recordset->moveFirst();
        dbaRecordset[iTable] = std::move(recordset);
        gpDB_Set_read(iTable);
        return true;
    }
    firstRowSet_leave(iTable);
    return false;
}

int gfiDB_RecordCount(int iTable, const QString &sTable)
{
    Recordset recordset;
    const QString sql = QStringLiteral("SELECT COUNT(*) FROM ") + (sTable.isEmpty() ? tableName(iTable) : sTable);
    if (!recordset.open(dbConnection(), sql) || recordset.recordCount() == 0) {
        gDBErr() = recordset.lastError();
        return 0;
    }
    return recordset.value(0).toInt();
}

// ---------------------------------------------------------------- the entry point

namespace {
// The set holds no row the buffer came from: a reopen after a lost connection, or a read
// that found nothing, left it.
bool mfbUnread_refused(const QString &what)
{
    gDBErr() = {DbError::kRowChanged,
                QStringLiteral("Row cannot be located for %1. Some values may have been changed since it was last read.").arg(what),
                QStringLiteral("QSQL")};
    return false;
}
} // namespace

bool gfbDB_RecordOp(int iTable, int iOperation, int iKey, bool bRaw, bool bLock, const QString &sSQL)
{
    Q_UNUSED(bLock); // its check always passes
    gpDB_Tables_refresh();
    bool result = true;
    const QString name = gfsDB_OperationName(iOperation);
    const bool positioned = isKeyedRead(name) || name == QLatin1String("Get First") || name == QLatin1String("Get Last");
    if (positioned && (!bRaw || gbDBKeyForced))
        gpDB_table_key_set(iTable, iKey);

    if (name == QLatin1String("19") || name == QLatin1String("20") || name == QLatin1String("21")) {
        dbuaTable[iTable].iReserved2 = 0;
    } else if (name == QLatin1String("Insert")) {
        result = gfbDB_Insert(iTable);
    } else if (name == QLatin1String("Update")) {
        if (gfbDB_Set_unread(iTable)) {
            result = mfbUnread_refused(QStringLiteral("updating"));
        } else {
            if (!bRaw)
                gpDB_table_record_to_row(iTable);
            Recordset *rs = gfrsDB_Current(iTable);
            result = rs && rs->update();
            if (!result && rs)
                gDBErr() = rs->lastError();
        }
    } else if (name == QLatin1String("Delete")) {
        if (gfbDB_Set_unread(iTable)) {
            result = mfbUnread_refused(QStringLiteral("deletion"));
        } else {
            if (iTable == 1)
                gpDB_DeleteRecall(iTable, QString());
            Recordset *rs = gfrsDB_Current(iTable);
            result = rs && rs->deleteCurrent();
            if (!result && rs)
                gDBErr() = rs->lastError();
        }
    } else if (isKeyedRead(name)) {
        result = bRaw && !gbDBKeyForced ? gfbDB_GetByField(iTable, name, iKey) : gfbDB_GetByKey(iTable, name, sSQL);
    } else if (name == QLatin1String("Get Next")) {
        result = gfbDB_GetNext(iTable, iKey);
    } else if (name == QLatin1String("Get Previous")) {
        result = gfbDB_GetPrevious(iTable, iKey);
    } else if (name == QLatin1String("Get First")) {
        result = gfbDB_GetFirst(iTable, iKey);
    } else if (name == QLatin1String("Get Last")) {
        result = gfbDB_GetLast(iTable, iKey);
    } else if (name == QLatin1String("BySQL")) {
        result = gfbDB_BySQL(iTable, sSQL);
    }

    const bool decodes = positioned || name == QLatin1String("Get Next") || name == QLatin1String("Get Previous");
    if (result && !bRaw && decodes)
        gpDB_table_row_to_record(iTable);
    return result;
}

} // namespace qln
