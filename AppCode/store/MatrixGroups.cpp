#include "store/MatrixGroups.h"

#include "store/Database.h"
#include "store/RecordOps.h"
#include "store/TableLayout.h"

namespace qln {

namespace {

using G = MatrixGroupRecord;

const TableLayout<G> &layout()
{
    static const TableLayout<G> columns = {
        {"GroupUID", "INTEGER", &G::GroupUID},          {"GroupName", "CHAR (32)", &G::GroupName},
        {"xAxisLabel", "CHAR (32)", &G::xAxisLabel},    {"yAxisLabel", "CHAR (32)", &G::yAxisLabel},
        {"zAxisLabel", "CHAR (32)", &G::zAxisLabel},    {"InvUID", "INTEGER", &G::InvUID},
        {"ItemID", "CHAR (15)", &G::ItemID},            {"Cost", "Decimal (18,2)", &G::Cost},
        {"Price", "Decimal (18,2)", &G::Price},         {"MatrixExists", "SMALLINT", &G::MatrixExists},
        {"MatrixBuilt", "SMALLINT", &G::MatrixBuilt},
    };
    return columns;
}

} // namespace

void gpMatrixGroups_Open(int iTable, const QString &sPath)
{
    Q_UNUSED(sPath);
    gpDB_Table_register(iTable, QStringLiteral("MatrixGroups"), QStringLiteral("MTXGRPS"), QStringLiteral("MTXGRPS"),
                        QStringLiteral("Matrix Groups"));
    gpDB_table_routines_set(iTable, {gpMatrixGroups_key, gpMatrixGroups_read, gpMatrixGroups_write, gfsMatrixGroups_values});
    const QString &t = dbuaTable[iTable].sSqlFile;
    const QString indexes = gfsIndex_statement("Create UNIQUE CLUSTERED Index Index0", t, "GroupUID") +
                            gfsIndex_statement("Create UNIQUE Index Index1", t, "GroupName") +
                            gfsIndex_statement("Create UNIQUE Index Index2", t, "GroupUID, xAxisLabel") +
                            gfsIndex_statement("Create UNIQUE Index Index3", t, "GroupUID, yAxisLabel") +
                            gfsIndex_statement("Create UNIQUE Index Index4", t, "GroupUID, zAxisLabel") +
                            gfsIndex_statement("Create UNIQUE Index Index5", t, "InvUID") +
                            gfsIndex_statement("Create UNIQUE Index Index6", t, "ItemID");
    gfbDB_TableCreate_missing(iTable, layout().createSql(t), indexes);
}

void gpMatrixGroups_key(int iTable, int iKey)
{
    const G &g = gMatrixGroups;
    const int uid = layout().ordinal(&G::GroupUID);
    switch (iKey) {
    case 0: gpDB_KeySet(iTable, 1, {{uid, g.GroupUID}}); break;
    case 1: gpDB_KeySet(iTable, 1, {{layout().ordinal(&G::GroupName), g.GroupName}}); break;
    case 2: gpDB_KeySet(iTable, 2, {{uid, g.GroupUID}, {layout().ordinal(&G::xAxisLabel), g.xAxisLabel}}); break;
    case 3: gpDB_KeySet(iTable, 2, {{uid, g.GroupUID}, {layout().ordinal(&G::yAxisLabel), g.yAxisLabel}}); break;
    case 4: gpDB_KeySet(iTable, 2, {{uid, g.GroupUID}, {layout().ordinal(&G::zAxisLabel), g.zAxisLabel}}); break;
    case 5: gpDB_KeySet(iTable, 1, {{layout().ordinal(&G::InvUID), g.InvUID}}); break;
    case 6: gpDB_KeySet(iTable, 1, {{layout().ordinal(&G::ItemID), g.ItemID}}); break;
    default: break;
    }
}

void gpMatrixGroups_read(int iTable) { layout().read(iTable, gMatrixGroups); }

void gpMatrixGroups_write(int iTable) { layout().write(iTable, gMatrixGroups); }

QString gfsMatrixGroups_values() { return layout().values(gMatrixGroups); }

} // namespace qln
