// The member grid of the group and matrix windows reads its members' items in batches. On
// random members it must show what one keyed read per member shows, and leave the buffers,
// the item table's current row and the log as those reads leave them.
#include "promo/GroupMembersGrid.h"

#include "ListEquivalence.h"
#include "lookup/FlexGrid.h"

using namespace qln;
using namespace qln::test;

namespace {

class GroupMembersEquivalence : public ListEquivalence {
protected:
    // Members of one group: repeated items, gone items, members named by no number, live,
    // expired and deleted rows.
    QList<PromoPriceRecord> members()
    {
        QList<PromoPriceRecord> rows;
        const int count = random.bounded(0, 40);
        for (int r = 0; r < count; ++r) {
            PromoPriceRecord row;
            row.Invuid = anyItem();
            row.GroupID = 7;
            row.StartDate = QDateTime(kToday.addDays(random.bounded(-3, 2)), QTime(0, 0));
            row.EndDate = QDateTime(kToday.addDays(random.bounded(-2, 4)), QTime(0, 0));
            row.ChangeType = qint16(QList<int>{1, 2, 3, 99, 5}[random.bounded(5)]);
            row.PriceChange = Money::fromWhole(random.bounded(1, 30));
            row.UniqueID = r + 1;
            rows << row;
        }
        return rows;
    }

    // As the matrix window fills it, or as the group window does.
    GroupMembersFill how()
    {
        GroupMembersFill fill;
        if (random.bounded(2) == 0)
            return fill;
        fill.bReuseEmptyLine = false;
        fill.hidden = [](const PromoPriceRecord &row) { return row.EndDate.date() < kToday || row.ChangeType == 99; };
        fill.description = [] { return gInventory.Description.trimmed() + QLatin1Char(' ') + gInventory.SubDescription.trimmed(); };
        fill.wording.bToAmount = false;
        fill.wording.sDeletedEnd = QStringLiteral("Deleted");
        fill.wording.bRegularFormatted = true;
        return fill;
    }

    QStringList fill(FlexGrid &grid, const QList<PromoPriceRecord> &rows, const GroupMembersFill &fill, int batch, ReadsLeft &left)
    {
        gpPromoItems_batch_set(batch);
        readsReset();
        gfbGroupMembers_fill(grid, rows, fill);
        QStringList lines;
        for (int row = 0; row < grid.Rows(); ++row) {
            QStringList cells;
            for (int col = 0; col < grid.Cols(); ++col)
                cells << grid.TextMatrix(row, col);
            lines << cells.join(QLatin1Char('|'));
        }
        left = readsLeft();
        return lines;
    }
};

} // namespace

TEST_F(GroupMembersEquivalence, BatchedItemReadsShowWhatOneReadPerMemberShows)
{
    FlexGrid grid;
    int linesShown = 0;
    for (int seed = 0; seed < 16; ++seed) {
        random.seed(quint32(4100 + seed));
        itemsShuffle();
        const QList<PromoPriceRecord> rows = members();
        const GroupMembersFill way = how();
        ReadsLeft keyedLeft, batchedLeft;
        const QStringList keyed = fill(grid, rows, way, 0, keyedLeft);
        // Small batches, so that repeated and missing items fall on their edges.
        const int batch = random.bounded(1, 6);
        const QStringList batched = fill(grid, rows, way, batch, batchedLeft);
        const std::string what = "seed " + std::to_string(seed) + ", batch " + std::to_string(batch);
        EXPECT_EQ(batched, keyed) << what;
        expectSame(batchedLeft, keyedLeft, what);
        linesShown += int(keyed.size()) - 1;
    }
    EXPECT_GT(linesShown, 100) << "the seeds must fill lines, not only empty grids";
}
