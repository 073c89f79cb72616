// The All Items face reads the items of its promo rows in batches. On random tables it must
// show what one keyed read per row shows, and leave the buffers, the item table's current
// row, the log and the message boxes as those reads leave them.
#include "promo/frmMain.h"

#include "ListEquivalence.h"
#include "lookup/FlexGrid.h"

#include <QCheckBox>
#include <QPushButton>

using namespace qln;
using namespace qln::test;

namespace {

struct Outcome {
    QStringList grid;
    QStringList buttons;
    ReadsLeft left;
};

class AllItemsEquivalence : public ListEquivalence {
protected:
    // Promos on present, missing and pseudo items: ties on the same item and day, tombstones,
    // expired rows, rows ending today, nulls.
    void promosShuffle()
    {
        gfiDB_Execute(QStringLiteral("DELETE FROM PromoPrices"));
        auto date = [&](bool maybeNull) {
            if (maybeNull && random.bounded(8) == 0)
                return QStringLiteral("NULL");
            return QLatin1Char('\'') + kToday.addDays(random.bounded(-3, 4)).toString(QStringLiteral("yyyyMMdd")) +
                   QStringLiteral(" 00:00:00'");
        };
        const QStringList types = {QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("99"),
                                   QStringLiteral("NULL"), QStringLiteral("5")};
        const QStringList amounts = {QStringLiteral("NULL"), QStringLiteral("0.5"), QStringLiteral("1"), QStringLiteral("25"),
                                     QStringLiteral("120")};
        const int rows = random.bounded(0, 60);
        for (int r = 0; r < rows; ++r) {
            const int invuid = anyItem();
            gfiDB_Execute(QStringLiteral("INSERT INTO PromoPrices (Store, SL, Dept, StartDate, EndDate, ChangeDate, PriceChange, "
                                         "ChangeType, Poll, GroupID, Invuid, UniqueID) VALUES (1, 'x', '000.000.000', %1, %2, "
                                         "%3, %4, %5, 'Y', 0, %6, %7)")
                              .arg(date(false), date(true), date(true), pick(amounts), pick(types))
                              .arg(invuid)
                              // Rows without a number leave the buffer's in place.
                              .arg(random.bounded(5) == 0 ? QStringLiteral("NULL") : QString::number(r + 1)));
        }
    }

    Outcome viewAll(frmMain &form, int batch, bool expiredToo)
    {
        gpPromoItems_batch_set(batch);
        readsReset();
        form.findChild<QCheckBox *>(QStringLiteral("chkExpired"))->setChecked(expiredToo);
        form.findChild<QPushButton *>(QStringLiteral("CmdViewAll"))->click();

        Outcome seen;
        const FlexGrid &grid = *form.findChild<FlexGrid *>(QStringLiteral("fgrdItems"));
        for (int row = 0; row < grid.Rows(); ++row) {
            QStringList cells;
            for (int col = 0; col < grid.Cols(); ++col)
                cells << grid.TextMatrix(row, col);
            seen.grid << cells.join(QLatin1Char('|'));
        }
        for (const QPushButton *b : form.findChildren<QPushButton *>())
            seen.buttons << b->objectName() + (b->isEnabled() ? QStringLiteral(" on") : QStringLiteral(" off"));
        seen.left = readsLeft();
        return seen;
    }

    void expectSame(const Outcome &batched, const Outcome &keyed, const std::string &what)
    {
        EXPECT_EQ(batched.grid, keyed.grid) << what;
        EXPECT_EQ(batched.buttons, keyed.buttons) << what;
        ListEquivalence::expectSame(batched.left, keyed.left, what);
    }
};

} // namespace

TEST_F(AllItemsEquivalence, BatchedItemReadsShowWhatOneReadPerRowShows)
{
    frmMain form;
    form.show();
    int rowsShown = 0;
    for (int seed = 0; seed < 12; ++seed) {
        random.seed(quint32(20261123 + seed));
        itemsShuffle();
        promosShuffle();
        gbIncludeTax = random.bounded(2) == 1;
        for (const bool expiredToo : {false, true}) {
            const Outcome keyed = viewAll(form, 0, expiredToo);
            // Small batches, so that rows of one item and missing items fall on their edges.
            const int batch = random.bounded(1, 8);
            const Outcome batched = viewAll(form, batch, expiredToo);
            expectSame(batched, keyed, "seed " + std::to_string(seed) + ", batch " + std::to_string(batch) +
                                           (expiredToo ? ", expired too" : ""));
            rowsShown += int(keyed.grid.size()) - 1;
        }
    }
    EXPECT_GT(rowsShown, 150) << "the seeds must list rows, not only empty grids";
}

// Without the item table every read is refused: the batches step aside, and the keyed reads
// log their own statements as before.
TEST_F(AllItemsEquivalence, ARefusedBatchLeavesTheLogToTheKeyedReads)
{
    random.seed(7);
    promosShuffle();
    const QString &T = dbuaTable[kInventoryTable].sSqlFile;
    ASSERT_TRUE(dbConnection().execute(QStringLiteral("ALTER TABLE ") + T + QStringLiteral(" RENAME TO gone")));
    frmMain form;
    form.show();
    const Outcome keyed = viewAll(form, 0, true);
    const Outcome batched = viewAll(form, 3, true);
    EXPECT_FALSE(keyed.left.log.isEmpty());
    EXPECT_FALSE(batched.left.log.contains(QStringLiteral(" IN ("))) << "no text of the batches reaches the log";
    expectSame(batched, keyed, "refused");
}
