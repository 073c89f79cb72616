#include "promo/GroupMembersGrid.h"

#include "lookup/FGrid.h"
#include "lookup/FlexGrid.h"
#include "store/Inventory.h"
#include "store/RecordOps.h"

#include <QScopeGuard>

namespace qln {

namespace {

bool mfbItem_read(qint32 invuid)
{
    if (invuid < 1)
        return false;
    gInventory.RecordNum = invuid;
    return gfbDB_RecordOp(kInventoryTable, kOpEqual, 0);
}

bool mfbLine_empty(const FlexGrid &grid, int row)
{
    for (int col = 0; col < grid.Cols(); ++col)
        if (!grid.TextMatrix(row, col).trimmed().isEmpty())
            return false;
    return true;
}

} // namespace

void gpGroupMembers_layout(FlexGrid &grid)
{
    grid.Clear();
    grid.setCols(int(std::size(kGroupMemberColumns)));
    grid.setRows(2);
    gpPromoGrid_columns_set(grid, kGroupMemberColumns);
}

bool gfbGroupMembers_fill(FlexGrid &grid, const QList<PromoPriceRecord> &rows, const GroupMembersFill &how)
{
    gpGroupMembers_layout(grid);
    if (rows.isEmpty())
        return false;
    grid.setRedraw(false);
    const auto drawn = qScopeGuard([&] { grid.setRedraw(true); });
    QString promoPrice;
    int line = 1;
    for (qsizetype i = 0; i < rows.size(); ++i) {
        if (i > 0 && !(how.bReuseEmptyLine && mfbLine_empty(grid, line))) {
            grid.setRows(grid.Rows() + 1);
            line = grid.Rows() - 1;
        }
        const PromoPriceRecord &row = rows[i];
        if ((how.hidden && how.hidden(row)) || !mfbItem_read(row.Invuid))
            continue;
        const QString description = how.description ? how.description() : gInventory.Description;
        const QStringList cells = gfGroupMember_cells(row, gInventory, description, promoPrice, how.wording);
        for (int col = 0; col < cells.size(); ++col)
            grid.setTextMatrix(line, col, cells[col]);
    }
    return true;
}

} // namespace qln
