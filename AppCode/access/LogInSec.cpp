#include "access/LogInSec.h"

#include "store/Database.h"
#include "store/FieldCodec.h"
#include "store/RecordOps.h"
#include "store/TableLayout.h"

namespace qln {

namespace {

using L = LogInSecRecord;

const TableLayout<L> &layout()
{
    static const TableLayout<L> columns = {
        {"aDate", "DATETIME", &L::aDate},      {"aTime", "DATETIME", &L::aTime},   {"SalesCode", "CHAR (8)", &L::SalesCode},
        {"Detail", "CHAR (20)", &L::Detail},   {"Result", "CHAR (1)", &L::Result}, {"ID", "INTEGER", &L::ID},
        {"Station", "SMALLINT", &L::Station}, {"Spare", "CHAR (10)", &L::Spare},
    };
    return columns;
}

} // namespace

void gpLogInSec_Open(int iTable, const QString &sPath)
{
    Q_UNUSED(sPath);
    gpDB_Table_register(iTable, QStringLiteral("LogInSec"), QStringLiteral("LogInSec"), QStringLiteral("LogInSec"),
                        QStringLiteral("Login Security"));
    gpDB_table_routines_set(iTable, {gpLogInSec_key, gpLogInSec_read, gpLogInSec_write, gfsLogInSec_values});
    const QString &t = dbuaTable[iTable].sSqlFile;
    const QString indexes = gfsIndex_statement("Create UNIQUE Index idx_1", t, "ID") +
                            gfsIndex_statement("Create UNIQUE Index idx_2", t, "adate, SalesCode, ID") +
                            gfsIndex_statement("Create UNIQUE Index idx_3", t, "SalesCode, adate, ID") +
                            gfsIndex_statement("Create UNIQUE Index idx_4", t, "adate, atime, ID");
    gfbDB_TableCreate_missing(iTable, layout().createSql(t), indexes);
}

void gpLogInSec_key(int iTable, int iKey)
{
    const LogInSecRecord &r = gLogInSec;
    const int date = layout().ordinal(&L::aDate), id = layout().ordinal(&L::ID), code = layout().ordinal(&L::SalesCode);
    switch (iKey) {
    case 1: gpDB_KeySet(iTable, 1, {{id, r.ID}}); break;
    case 2: gpDB_KeySet(iTable, 3, {{date, r.aDate}, {code, r.SalesCode}, {id, r.ID}}); break;
    case 3: gpDB_KeySet(iTable, 3, {{code, r.SalesCode}, {date, r.aDate}, {id, r.ID}}); break;
    case 4: gpDB_KeySet(iTable, 3, {{date, r.aDate}, {layout().ordinal(&L::aTime), r.aTime}, {id, r.ID}}); break;
    default: break;
    }
}

void gpLogInSec_read(int iTable) { layout().read(iTable, gLogInSec); }

void gpLogInSec_write(int iTable) { layout().write(iTable, gLogInSec); }

QString gfsLogInSec_values() { return layout().values(gLogInSec); }

void gpLogInSec_clear()
{
    gLogInSec = LogInSecRecord();
    for (QString L::*field : {&L::SalesCode, &L::Detail, &L::Result, &L::Spare})
        gLogInSec.*field = layout().fitted(field, QString());
    gLogInSec.aDate = gLogInSec.aTime = gfdDate_zero();
}

} // namespace qln
