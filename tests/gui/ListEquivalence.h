#pragma once
// What the lists that read their items in batches share in their tests: a small demo store
// whose items vary in what a grid shows of them, and the state one keyed read per row leaves
// behind, which the batched reads must leave alike.
#include "common/ProcessState.h"
#include "config/Country.h"
#include "platform/Clock.h"
#include "platform/Recordset.h"
#include "promo/PromoItems.h"
#include "promo/PromoPricing.h"
#include "shell/ProcessReset.h"
#include "store/Common.h"
#include "store/Database.h"
#include "store/Inventory.h"
#include "store/RecordOps.h"
#include "store/StatementLog.h"
#include "support/DemoStore.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace qln::test {

// Everything besides the grid that a fill leaves for the next routine or the user.
struct ReadsLeft {
    QStringList boxes;
    QString log;
    QString itemBuffer, promoBuffer;
    QStringList itemRow; // the item table's current record set: its statement's answer
};

class ListEquivalence : public ::testing::Test {
protected:
    static constexpr int kFirstItem = 11, kItems = 40; // demo items are numbered from 11
    inline static const QDate kToday{2025, 5, 14};

    void SetUp() override
    {
        ASSERT_TRUE(gfDemoStore_open(db, program.path(), QDateTime(kToday, QTime(10, 30)), kItems));
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

    // Items that vary in what a grid shows of them, some of them gone.
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
                          QStringLiteral(", SubDescription = ") + pick(descriptions) + QStringLiteral(", Price = ") +
                          pick(prices) + QStringLiteral(", PriceIncTax = ") + pick(prices) + where);
        }
    }

    // An item number: mostly present items, some gone or never there, some naming none.
    qint32 anyItem()
    {
        const int kind = random.bounded(10);
        return kind == 0 ? random.bounded(-1, 12) : kind == 1 ? 5000 + random.bounded(3) : kFirstItem + random.bounded(kItems);
    }

    // Where the buffer and the table's row stand before a fill: rows of missing items keep it.
    void readsReset()
    {
        QFile::remove(gfsDataPath_file(QStringLiteral("PVSW.log")));
        boxes.clear();
        gInventory = InventoryRecord();
        gInventory.Description = QStringLiteral("before");
        dbaRecordset[kInventoryTable] = std::make_unique<Recordset>();
        dbaRecordset[kInventoryTable]->open(dbConnection(), QStringLiteral("SELECT TOP 1 * FROM ") + dbuaTable[kInventoryTable].sSqlFile);
    }

    ReadsLeft readsLeft()
    {
        ReadsLeft seen;
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

    static void expectSame(const ReadsLeft &batched, const ReadsLeft &keyed, const std::string &what)
    {
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

} // namespace qln::test
