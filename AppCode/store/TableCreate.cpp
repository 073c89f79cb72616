#include "store/TableCreate.h"

#include "store/Database.h"
#include "store/RecordOps.h"

namespace qln {

bool gfbDB_TableCreate(int iTable)
{
    DbTable &table = dbuaTable[iTable];
    if (dbConnection().state() == 1)
        gbDBConnected = true;
    if (!gbDBConnected)
        gpDB_Connect(QString());
    // No handler here: the first refusal stops the batch and is left for the caller.
    auto run = [](const QString &sql) {
        if (dbConnection().execute(sql))
            return true;
        gDBErr() = dbConnection().lastError();
        return false;
    };
    if (!run(table.sCreateSql))
        return false;
    for (const QString &piece : table.sIndexSql.split(QLatin1Char(';'))) {
        const QString statement = piece.trimmed();
        if (!statement.isEmpty() && !run(statement))
            return false;
    }
    return false; // callers rely on it only through the open's retry
}

bool gfbDB_ColumnAdd(int iTable, const QString &sColumn, const QString &sType)
{
    return gfiDB_Execute(QStringLiteral("ALTER TABLE ") + dbuaTable[iTable].sSqlFile + QStringLiteral(" ADD ") + sColumn +
                         QLatin1Char(' ') + sType) != 0;
}

bool gfbDB_ColumnRename(const QString &sTable, const QString &sOldName, const QString &sNewName)
{
    return dbConnection().execute(QStringLiteral("sp_RENAME '") + sTable + QLatin1Char('.') + sOldName + QStringLiteral("', '") +
                                  sNewName + QStringLiteral(" ', 'COLUMN'"));
}

} // namespace qln
