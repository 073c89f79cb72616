#include "store/MtxItem.h"

#include "store/Database.h"
#include "store/RecordOps.h"
#include "store/TableLayout.h"

namespace qln {

namespace {

using M = MtxItemRecord;

const TableLayout<M> &layout()
{
    static const TableLayout<M> columns = {
        {"InvUID", "INTEGER", &M::InvUID},         {"MatrixGroupUID", "INTEGER not null", &M::MatrixGroupUID},
        {"xAxisValue", "CHAR (32)", &M::xAxisValue}, {"yAxisValue", "CHAR (32)", &M::yAxisValue},
        {"zAxisValue", "CHAR (32)", &M::zAxisValue}, {"xpos", "SMALLINT not null", &M::xpos},
        {"Ypos", "SMALLINT not null", &M::Ypos},   {"Zpos", "SMALLINT not null", &M::Zpos},
    };
    return columns;
}

} // namespace

void gpMtxItem_Open(int iTable, const QString &sPath)
{
    Q_UNUSED(sPath);
    gpDB_Table_register(iTable, QStringLiteral("MtxItem"), QStringLiteral("MtxItem"), QStringLiteral("MtxItem"),
                        QStringLiteral("Matrix Items"));
    gpDB_table_routines_set(iTable, {gpMtxItem_key, gpMtxItem_read, gpMtxItem_write, gfsMtxItem_values});
    const QString &t = dbuaTable[iTable].sSqlFile;
    const QString indexes = gfsIndex_statement("Create UNIQUE CLUSTERED Index Index0", t, "invuid, MatrixGroupUID") +
                            gfsIndex_statement("Create Index Index1", t, "MatrixGroupUID, xAxisValue, yAxisValue") +
                            gfsIndex_statement("Create UNIQUE Index Index2", t,
                                               "MatrixGroupUID, xAxisValue, yAxisValue, zAxisValue") +
                            gfsIndex_statement("Create Index Index3", t, "InvUID") +
                            gfsIndex_statement("Create UNIQUE Index Index4", t, "MatrixGroupUID, xpos, ypos, zpos");
    gfbDB_TableCreate_missing(iTable, layout().createSql(t), indexes);
}

void gpMtxItem_key(int iTable, int iKey)
{
    const M &m = gMtxItem;
    const KeySegment uid{layout().ordinal(&M::InvUID), m.InvUID};
    const KeySegment group{layout().ordinal(&M::MatrixGroupUID), m.MatrixGroupUID};
    const KeySegment x{layout().ordinal(&M::xAxisValue), m.xAxisValue};
    const KeySegment y{layout().ordinal(&M::yAxisValue), m.yAxisValue};
    switch (iKey) {
    case 0: gpDB_KeySet(iTable, 2, {uid, group}); break;
    case 1: gpDB_KeySet(iTable, 3, {group, x, y}); break;
    case 2: gpDB_KeySet(iTable, 4, {group, x, y, {layout().ordinal(&M::zAxisValue), m.zAxisValue}}); break;
    case 3: gpDB_KeySet(iTable, 1, {uid}); break;
    case 4:
        gpDB_KeySet(iTable, 4,
                    {group, {layout().ordinal(&M::xpos), m.xpos}, {layout().ordinal(&M::Ypos), m.Ypos},
                     {layout().ordinal(&M::Zpos), m.Zpos}});
        break;
    default: break;
    }
}

void gpMtxItem_read(int iTable) { layout().read(iTable, gMtxItem); }

void gpMtxItem_write(int iTable) { layout().write(iTable, gMtxItem); }

QString gfsMtxItem_values() { return layout().values(gMtxItem); }

} // namespace qln
