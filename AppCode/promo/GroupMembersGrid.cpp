#include "promo/GroupMembersGrid.h"

#include "lookup/FGrid.h"
#include "lookup/FlexGrid.h"
#include "promo/PromoItems.h"
#include "store/Inventory.h"

#include <QScopeGuard>

namespace qln {

namespace {

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
    // A member named by no number, or left out, has no item to read.
    const auto read = [&](const PromoPriceRecord &row) { return row.Invuid >= 1 && !(how.hidden && how.hidden(row)); };
    std::vector<qint32> invuids;
    for (const PromoPriceRecord &row : rows)
        if (read(row))
            invuids.push_back(row.Invuid);
    PromoItems items(std::move(invuids));
    QString promoPrice;
    int line = 1;
    for (qsizetype i = 0; i < rows.size(); ++i) {
        if (i > 0 && !(how.bReuseEmptyLine && mfbLine_empty(grid, line))) {
            grid.setRows(grid.Rows() + 1);
            line = grid.Rows() - 1;
        }
        const PromoPriceRecord &row = rows[i];
        if (!read(row) || !items.next())
            continue;
        const QString description = how.description ? how.description() : gInventory.Description;
        const QStringList cells = gfGroupMember_cells(row, gInventory, description, promoPrice, how.wording);
        for (int col = 0; col < cells.size(); ++col)
            grid.setTextMatrix(line, col, cells[col]);
    }
    return true;
}

} // namespace qln
