// The All Items face reads the items of its promo rows in batches. On random tables it must
// show what one keyed read per row shows, and leave the buffers, the item table's current
// row, the log and the message boxes as those reads leave them.
#include "promo/frmMain.h"

#include "DemoData.h"
#include "common/ProcessState.h"
#include "config/Country.h"
#include "lookup/FlexGrid.h"
#include "platform/Clock.h"
#include "platform/Recordset.h"
#include "promo/PromoItems.h"
#include "promo/PromoPricing.h"
#include "shell/ProcessReset.h"
#include "shell/Startup.h"
#include "store/Common.h"
#include "store/Inventory.h"
#include "store/RecordOps.h"
#include "store/StatementLog.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include <QCheckBox>
#include <QFile>
#include <QPushButton>
#include <QRandomGenerator>
#include <gtest/gtest.h>

using namespace qln;
using namespace qln::test;

namespace {

const QDate kToday(2025, 5, 14);
constexpr int kFirstItem = 11, kItems = 40; // demo items are numbered from 11

// Everything a fill leaves that a user or the next routine can meet.
struct Outcome {
    QStringList grid;
    QStringList buttons;
    QStringList boxes;
    QString log;
    QString itemBuffer, promoBuffer;
    QStringList itemRow; // the item table's current record set: its statement's answer
};

class AllItemsEquivalence : public ::testing::Test {
protected:
    void SetUp() override
    {
        gpProcess_reset();
        Clock::setFixed(QDateTime(kToday, QTime(10, 30)));
        gsAppPath = program.path();
        demo::DemoOptions o = demo::gfDemo_options(db.info(), db.dataPath(), kItems);
        o.promos = 0;
        demo::DemoReport report;
        QString error;
        ASSERT_TRUE(demo::gfbDemo_build(o, report, error)) << error.toStdString();
        gpProcess_reset();
        ASSERT_TRUE(gfbStartup_prepare(QStringLiteral("/DATAPATH=") + db.dataPath()));
        gCommon.MultiStore = QStringLiteral("N");
        gbItemMode = false;
    }
    void TearDown() override
    {
        gpPromoItems_batch_set(PromoItems::kDefaultBatch);
        gbIncludeTax = false;
        gpProcess_reset();
        Clock::setFixed(QDateTime());
    }

    QString pick(const QStringList &from) { return from[random.bounded(int(from.size()))]; }

    // Items that vary in what the grid shows of them, some of them gone.
    void itemsShuffle()
    {
        const QStringList descriptions = {QStringLiteral("'bread'"), QStringLiteral("'BREAD  '"), QStringLiteral("'O''Brien''s'"),
                                          QStringLiteral("NULL"), QStringLiteral("'  leading'"), QStringLiteral("''")};
        const QStringList prices = {QStringLiteral("NULL"), QStringLiteral("0.5"), QStringLiteral("10"), QStringLiteral("1234.5678"),
                                    QStringLiteral("0.005")};
        const QString &T = dbuaTable[kInventoryTable].sSqlFile;
        for (int n = kFirstItem; n < kFirstItem + kItems; ++n) {
            const QString where = QStringLiteral(" WHERE RecordNum = ") + QString::number(n);
            if (random.bounded(6) == 0) {
                gfiDB_Execute(QStringLiteral("DELETE FROM ") + T + where);
                continue;
            }
            gfiDB_Execute(QStringLiteral("UPDATE ") + T + QStringLiteral(" SET Description = ") + pick(descriptions) +
                          QStringLiteral(", Price = ") + pick(prices) + QStringLiteral(", PriceIncTax = ") + pick(prices) + where);
        }
    }

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
            const int kind = random.bounded(10);
            const int invuid = kind == 0 ? random.bounded(0, 12) : kind == 1 ? 5000 + random.bounded(3)
                                                                             : kFirstItem + random.bounded(kItems);
            gfiDB_Execute(QStringLiteral("INSERT INTO PromoPrices (Store, SL, Dept, StartDate, EndDate, ChangeDate, PriceChange, "
                                         "ChangeType, Poll, GroupID, Invuid, UniqueID) VALUES (1, 'x', '000.000.000', %1, %2, "
                                         "%3, %4, %5, 'Y', 0, %6, %7)")
                              .arg(date(false), date(true), date(true), pick(amounts), pick(types))
                              .arg(invuid)
                              .arg(r + 1));
        }
    }

    Outcome viewAll(frmMain &form, int batch, bool expiredToo)
    {
        gpPromoItems_batch_set(batch);
        QFile::remove(gfsDataPath_file(QStringLiteral("PVSW.log")));
        boxes.clear();
        // Where the buffer and the table's row stood before: rows of missing items keep it.
        gInventory = InventoryRecord();
        gInventory.Description = QStringLiteral("before");
        dbaRecordset[kInventoryTable] = std::make_unique<Recordset>();
        dbaRecordset[kInventoryTable]->open(dbConnection(), QStringLiteral("SELECT TOP 1 * FROM ") + dbuaTable[kInventoryTable].sSqlFile);
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
        seen.boxes = boxes.texts();
        QFile log(gfsDataPath_file(QStringLiteral("PVSW.log")));
        if (log.open(QIODevice::ReadOnly))
            seen.log = QString::fromUtf8(log.readAll());
        seen.itemBuffer = gfsInventory_values();
        seen.promoBuffer = gfsPromo_values_get();
        if (const Recordset *rs = gfrsDB_Current(kInventoryTable)) {
            seen.itemRow << rs->source() << QString::number(rs->recordCount());
            for (int i = 0; i < rs->fieldCount(); ++i)
                seen.itemRow << rs->value(i).toString();
        }
        return seen;
    }

    void expectSame(const Outcome &batched, const Outcome &keyed, const std::string &what)
    {
        EXPECT_EQ(batched.grid, keyed.grid) << what;
        EXPECT_EQ(batched.buttons, keyed.buttons) << what;
        EXPECT_EQ(batched.boxes, keyed.boxes) << what;
        EXPECT_EQ(batched.log, keyed.log) << what;
        EXPECT_EQ(batched.itemBuffer, keyed.itemBuffer) << what;
        EXPECT_EQ(batched.promoBuffer, keyed.promoBuffer) << what;
        EXPECT_EQ(batched.itemRow, keyed.itemRow) << what;
    }

    TestDatabase db;
    QTemporaryDir program;
    ScriptedMessages boxes;
    QRandomGenerator random{20261123};
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
    EXPECT_FALSE(keyed.log.isEmpty());
    EXPECT_FALSE(batched.log.contains(QStringLiteral(" IN ("))) << "no text of the batches reaches the log";
    expectSame(batched, keyed, "refused");
}
