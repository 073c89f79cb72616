#include "store/Upc.h"

#include "store/Database.h"
#include "store/RecordOps.h"
#include "store/TableLayout.h"

namespace qln {

namespace {

using U = UpcRecord;

const TableLayout<U> &layout()
{
    static const TableLayout<U> columns = {
        {"SL", "CHAR (8) NOT NULL", &U::SL}, {"UPC", "CHAR (15) NOT NULL", &U::UPC}, {"LABEL", "CHAR (30)", &U::LABEL},
        {"POLL", "CHAR (1)", &U::POLL},      {"InvUID", "INTEGER", &U::InvUID},
    };
    return columns;
}

} // namespace

void gpUpc_Open(int iTable, const QString &sPath)
{
    Q_UNUSED(sPath);
    gpDB_Table_register(iTable, QStringLiteral("UPC"), QStringLiteral("UPC"), QStringLiteral("UPC"),
                        QStringLiteral("UPC Lookup"));
    gpDB_table_routines_set(iTable, {gpUpc_key, gpUpc_read, gpUpc_write, gfsUpc_values});
    const QString &t = dbuaTable[iTable].sSqlFile;
    const QString indexes = gfsIndex_statement("Create Index idx_0", t, "SL") +
                            gfsIndex_statement("Create UNIQUE  CLUSTERED Index idx_1", t, "UPC, SL") +
                            gfsIndex_statement("Create UNIQUE Index idx_2", t, "UPC") +
                            gfsIndex_statement("Create Index idx_3", t, "Poll") +
                            gfsIndex_statement("Create Index idx_4", t, "InvUID");
    gfbDB_TableCreate_missing(iTable, layout().createSql(t), indexes);
}

void gpUpc_key(int iTable, int iKey)
{
    const UpcRecord &u = gUpc;
    const int sl = layout().ordinal(&U::SL), upc = layout().ordinal(&U::UPC);
    switch (iKey) {
    case 0: gpDB_KeySet(iTable, 1, {{sl, u.SL}}); break;
    case 1: gpDB_KeySet(iTable, 2, {{upc, u.UPC}, {sl, u.SL}}); break;
    case 2: gpDB_KeySet(iTable, 1, {{upc, u.UPC}}); break;
    case 3: gpDB_KeySet(iTable, 1, {{layout().ordinal(&U::POLL), u.POLL}}); break;
    case 4: gpDB_KeySet(iTable, 1, {{layout().ordinal(&U::InvUID), u.InvUID}}); break;
    default: break;
    }
}

void gpUpc_read(int iTable) { layout().read(iTable, gUpc); }

void gpUpc_write(int iTable) { layout().write(iTable, gUpc); }

QString gfsUpc_values() { return layout().values(gUpc); }
void gpUpc_row_put(RowSink &sink) { layout().put(gUpc, sink); }

} // namespace qln
