// The lookup's page and keystroke actions read by windows; every action must leave what the
// record-by-record walk leaves: the cells, the selection, the flags, the messages, the log,
// the buffers and the tables' current records.
#include "LookupFixture.h"

#include "lookup/WalkWindow.h"
#include "platform/Recordset.h"
#include "store/ServerCheck.h"
#include "store/StatementLog.h"
#include "store/TableLayout.h"
#include "support/TestDatabase.h"

#include <QFile>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSqlQuery>

using namespace qln;
using namespace qln::test;

namespace {

class TextSink final : public RowSink {
public:
    QStringList values;
    void text(const QString &value) override { values << value; }
    void integer(qint32 value) override { values << QString::number(value); }
    void real(double value) override { values << QString::number(value); }
    void money(Money value) override { values << value.toPlainText(4); }
};

QString currentRow(int table)
{
    const Recordset *rs = gfrsDB_Current(table);
    if (!rs)
        return QStringLiteral("<none>");
    if (rs->eof())
        return QStringLiteral("<eof>");
    QStringList values;
    for (int i = 0; i < rs->fieldCount(); ++i)
        values << (rs->value(i).isNull() ? QStringLiteral("<null>") : rs->value(i).toString());
    return values.join(QLatin1Char('|'));
}

// The log's lines without their times, which differ between two runs of the same actions.
QString logText()
{
    QFile log(gsDataPath + QStringLiteral("/PVSW.log"));
    QString text = log.open(QIODevice::ReadOnly) ? QString::fromUtf8(log.readAll()) : QString();
    static const QRegularExpression times(QStringLiteral("\\d+[:/.-]\\d+[:/.-]\\d+"));
    return text.replace(times, QStringLiteral("#"));
}

// What a user and the next read could tell apart after an action.
QString snapshot(const RecordingView &view, const ScriptedMessages &boxes)
{
    TextSink item;
    gpInventory_row_put(item);
    QStringList out;
    for (int row = 1; row < iGridRows; ++row)
        out << gaGridText.value(row).join(QLatin1Char('|'));
    out << QStringLiteral("row %1 %2 top %3 bottom %4 at %5").arg(view.current).arg(gfiDataGrid_Row()).arg(bAtTop).arg(bAtBottom).arg(sPosition);
    out << boxes.texts().join(QLatin1Char('/')) << item.values.join(QLatin1Char('|'));
    out << QStringList{gUpc.SL, gUpc.UPC, gUpc.LABEL, gUpc.POLL, QString::number(gUpc.InvUID)}.join(QLatin1Char('|'));
    out << currentRow(kInventoryTable) << currentRow(kUpcTable) << logText();
    out << QStringLiteral("unread %1 %2").arg(gfbDB_Set_unread(kInventoryTable)).arg(gfbDB_Set_unread(kUpcTable));
    return out.join(QLatin1Char('\n'));
}

// Texts that sort close together and apart only by case, blanks or a quote.
const QStringList kWords = {QStringLiteral("apple"),  QStringLiteral("Apple"),  QStringLiteral("APPLE "), QStringLiteral(" apple"),
                            QStringLiteral("bean"),   QStringLiteral("Bean's"), QStringLiteral("cane"),   QStringLiteral("cane  x"),
                            QStringLiteral("cane x"), QStringLiteral("dill"),   QStringLiteral("Dill"),   QStringLiteral("e"),
                            QStringLiteral("zest"),   QStringLiteral("Zest ")};

class LookupWindows : public LookupStore {
protected:
    void SetUp() override
    {
        LookupStore::SetUp();
        iGridRowCount = iGridRows = 6;
    }
    void TearDown() override
    {
        gpWalk_window_set(64);
        if (TestDatabase::onPostgres())
            QSqlQuery(dbConnection().database()).exec(QStringLiteral("RESET plan_cache_mode"));
        LookupStore::TearDown();
    }

    QString pick(QRandomGenerator &random) { return kWords[random.bounded(int(kWords.size()))]; }

    // Items with shared and near-shared keys, deleted ones and matrix roots, several codes,
    // codes that stand for no item, and nulls where a key would be.
    void fill(QRandomGenerator &random, int count)
    {
        for (int n = 1; n <= count; ++n) {
            InventoryRecord r = item(n, pick(random) + (random.bounded(3) == 0 ? QString() : QString::number(random.bounded(4))),
                                     random.bounded(3) == 0 ? "ZED" : "ACME", random.bounded(8) == 0 ? "D" : " ");
            r.ItemID = (random.bounded(4) == 0 ? QStringLiteral(" ") : QString()) + pick(random).trimmed() + QString::number(n);
            r.SubDescription = pick(random);
            r.DeptCode = QStringLiteral("00%1.000.000").arg(random.bounded(3));
            if (random.bounded(10) == 0)
                r.FlgMatrix = QStringLiteral("Y");
            add(r);
            for (int c = random.bounded(4); c > 0; --c) {
                const char *lead = random.bounded(5) == 0 ? "D" : random.bounded(9) == 0 ? "I" : "0";
                const QByteArray code = QStringLiteral("%1%2%3").arg(QString::fromLatin1(lead)).arg(n, 4, 10, QLatin1Char('0')).arg(c).toLatin1();
                addUpc(n, code.constData());
                if (random.bounded(6) == 0) // a code that names another item's record
                    gfiDB_Execute(QStringLiteral("UPDATE %1 SET InvUID = %2 WHERE UPC = '%3'")
                                      .arg(dbuaTable[kUpcTable].sSqlFile).arg(n + 1).arg(QString::fromLatin1(code)));
            }
        }
        const QString T = dbuaTable[kInventoryTable].sSqlFile;
        for (const char *column : {"Description", "SubDescription", "ItemID", "SL"})
            gfiDB_Execute(QStringLiteral("UPDATE %1 SET %2 = NULL WHERE RecordNum = %3").arg(T, QString::fromLatin1(column)).arg(random.bounded(count) + 1));
        settlePlans({T, dbuaTable[kUpcTable].sSqlFile});
    }

    // Among rows that tie on a statement's order the server returns the one its plan meets
    // first. The plan of one text changes with the table's statistics (a background analyze)
    // and from the first executions of a prepared statement to the later ones, so the step
    // by step run and the windows' could see two picks for the same step.
    static void settlePlans(const QStringList &tables)
    {
        if (!TestDatabase::onPostgres())
            return;
        QSqlQuery q(dbConnection().database());
        for (const QString &table : tables) {
            ASSERT_TRUE(q.exec(QStringLiteral("ALTER TABLE %1 SET (autovacuum_enabled = false)").arg(table)));
            ASSERT_TRUE(q.exec(QStringLiteral("ANALYZE %1").arg(table)));
        }
        ASSERT_TRUE(q.exec(QStringLiteral("SET plan_cache_mode = force_generic_plan")));
    }

    // The same actions from the same state, by windows of at most `window` rows (0: step by step).
    QStringList run(int window, int key, bool vendor, const QList<std::pair<int, QString>> &script)
    {
        gpWalk_window_set(window);
        gpLookupState_reset(false);
        iGridRowCount = iGridRows = 6;
        QFile::remove(gsDataPath + QStringLiteral("/PVSW.log"));
        gInventory = InventoryRecord();
        gUpc = UpcRecord();
        EXPECT_TRUE(gfbDB_TableOpen(kInventoryTable) && gfbDB_TableOpen(kUpcTable));
        boxes.clear();
        gfbGridSetUp_Inventory();
        iLookupKey = key;
        if (vendor) {
            sVendorFilter = QStringLiteral("acme");
            iVendorMode = 2;
        }
        RecordingView view;
        QStringList shots;
        gfbDataGrid_Reload(view);
        shots << snapshot(view, boxes);
        for (const auto &[action, text] : script) {
            if (action < 0) {
                sSearchText = text;
                gfvDataGrid_Find(view, false);
            } else {
                gpDataGrid_Move(view, action);
            }
            shots << snapshot(view, boxes);
        }
        return shots;
    }

    static QList<std::pair<int, QString>> script(QRandomGenerator &random)
    {
        QList<std::pair<int, QString>> actions;
        for (int i = 0; i < 14; ++i) {
            const int pickAction = random.bounded(10);
            if (pickAction < 3)
                actions.append({-1, kWords[random.bounded(int(kWords.size()))].left(random.bounded(1, 5))});
            else if (pickAction < 6)
                actions.append({kPageDown, QString()});
            else if (pickAction < 8)
                actions.append({kPageUp, QString()});
            else
                actions.append({random.bounded(2) ? kLineDown : kLineUp, QString()});
        }
        return actions;
    }
};

// Every key the lookup sorts by, with and without the vendor filter, over random tables: the
// windows of 64, 3 and 2 rows (the last two force a page to take several windows) against
// the record-by-record walk.
TEST_F(LookupWindows, EveryActionShowsAndLeavesWhatTheWalkDoes)
{
    QRandomGenerator random(20261123);
    fill(random, 70);
    int compared = 0;
    for (int key = 1; key <= 8; ++key) {
        for (bool vendor : {false, true}) {
            if (vendor && (key < 5 || key > 7))
                continue;
            for (int round = 0; round < 3; ++round) {
                const auto actions = script(random);
                const QStringList walked = run(0, key, vendor, actions);
                for (int window : {64, 3, 2}) {
                    const QStringList read = run(window, key, vendor, actions);
                    ASSERT_EQ(read.size(), walked.size());
                    for (int i = 0; i < read.size(); ++i) {
                        const QString action = i > 0 ? QStringLiteral("%1 '%2'").arg(actions[i - 1].first).arg(actions[i - 1].second) : QString();
                        ASSERT_EQ(read[i], walked[i]) << "key " << key << " vendor " << vendor << " window " << window << " after action "
                                                      << i << " " << action.toStdString();
                        ++compared;
                    }
                }
            }
        }
    }
    EXPECT_GT(compared, 500);
}

// The point of the windows: a page of the default lookup costs a few statements, not a
// statement per row; a keystroke too.
TEST_F(LookupWindows, APageAndAKeystrokeTakeAtMostThreeStatements)
{
    iGridRowCount = iGridRows = 14;
    for (int n = 1; n <= 60; ++n) {
        add(item(n, QStringLiteral("Item %1").arg(n, 3, 10, QLatin1Char('0'))));
        addUpc(n, QStringLiteral("0%1").arg(n, 11, 10, QLatin1Char('0')).toLatin1().constData());
    }
    gfbGridSetUp_Inventory();
    RecordingView view;
    ASSERT_TRUE(gfbDataGrid_Reload(view));
    quint64 before = statements();
    sSearchText = QStringLiteral("Item 03");
    ASSERT_TRUE(gfvDataGrid_Find(view, false));
    EXPECT_LE(statements() - before, 3u);
    EXPECT_EQ(gaGridText[1].join(QString()).contains(QStringLiteral("Item 030")), true);
    for (int direction : {kPageDown, kPageUp, kPageDown}) {
        before = statements();
        gpDataGrid_Move(view, direction);
        EXPECT_LE(statements() - before, 3u) << direction;
    }
}

} // namespace
