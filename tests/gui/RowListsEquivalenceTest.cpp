// The matrix choice list, the matrix picker and the tag-link list read their rows in sets.
// On random tables each must show what the keyed reads and walk steps show, one statement a
// row, and leave the buffers, the tables' current rows, the log and the boxes as they do.
#include "promo/FrmMatrixGroup.h"
#include "promo/MatrixPromos.h"
#include "promo/PromoWalk.h"
#include "promo/frmTags_Print.h"

#include "ListEquivalence.h"
#include "common/DateForms.h"
#include "platform/ModalRunner.h"
#include "store/MatrixGroups.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <map>

using namespace qln;
using namespace qln::test;

namespace {

struct Outcome {
    QStringList shown; // every line the user sees, with its state, and the buttons
    ReadsLeft left;
    QStringList promoRow, matrixRow; // buffer, then the table's current record set
    quint64 statements = 0;
};

QStringList tableRow(int iTable)
{
    QStringList row{gfsDB_table_values_get(iTable)};
    if (const Recordset *rs = gfrsDB_Current(iTable)) {
        row << rs->source() << QString::number(rs->recordCount());
        for (int i = 0; i < rs->fieldCount(); ++i)
            row << rs->value(i).toString();
    }
    return row;
}

QStringList listLines(const QListWidget &list)
{
    QStringList lines;
    for (int i = 0; i < list.count(); ++i)
        lines << list.item(i)->text() + (list.item(i)->isSelected() ? QStringLiteral(" [picked]") : QString());
    return lines;
}

void buttonsAdd(QWidget &form, QStringList &shown)
{
    for (const QPushButton *b : form.findChildren<QPushButton *>())
        shown << b->objectName() + (b->isEnabled() ? QStringLiteral(" on") : QStringLiteral(" off"));
}

class RowListsEquivalence : public ListEquivalence {
protected:
    void TearDown() override
    {
        gpListSets_set(true);
        ListEquivalence::TearDown();
    }

    // Promo rows whose walk keys tie, matrix and group promos, starts before the matrices'
    // starting date, times within a day, nulls in every part of the keys.
    void promosShuffle(int most)
    {
        gfiDB_Execute(QStringLiteral("DELETE FROM PromoPrices"));
        auto date = [&](bool maybeNull) {
            if (maybeNull && random.bounded(10) == 0)
                return QStringLiteral("NULL");
            const QDate day = random.bounded(12) == 0 ? QDate(2008, 12, 31) : kToday.addDays(random.bounded(-3, 4));
            return QLatin1Char('\'') + day.toString(QStringLiteral("yyyyMMdd")) +
                   (random.bounded(5) == 0 ? QStringLiteral(" 12:30:00'") : QStringLiteral(" 00:00:00'"));
        };
        const QStringList types = {QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("99"),
                                   QStringLiteral("NULL")};
        const QStringList amounts = {QStringLiteral("NULL"), QStringLiteral("0.5"), QStringLiteral("25"), QStringLiteral("120")};
        const QStringList groups = {QStringLiteral("0"),    QStringLiteral("7"),    QStringLiteral("1000"), QStringLiteral("1001"),
                                    QStringLiteral("1002"), QStringLiteral("1003"), QStringLiteral("1005"), QStringLiteral("NULL")};
        const int rows = random.bounded(0, most);
        for (int r = 0; r < rows; ++r) {
            const QString invuid = random.bounded(15) == 0 ? QStringLiteral("NULL") : QString::number(anyItem());
            gfiDB_Execute(QStringLiteral("INSERT INTO PromoPrices (Store, SL, Dept, StartDate, EndDate, ChangeDate, PriceChange, "
                                         "ChangeType, Poll, GroupID, Invuid, UniqueID) VALUES (1, 'x', '000.000.000', %1, %2, "
                                         "%3, %4, %5, 'Y', %6, %7, %8)")
                              .arg(date(true), date(true), date(true), pick(amounts), pick(types), pick(groups), invuid)
                              .arg(r + 1));
        }
    }

    // Matrices of any number, some with promos and some not, defined or built or neither.
    void matricesShuffle()
    {
        gfiDB_Execute(QStringLiteral("DELETE FROM ") + dbuaTable[kMatrixGroupsTable].sSqlFile);
        const QStringList names = {QStringLiteral("Shirts"), QStringLiteral("SHIRTS  "), QStringLiteral("O'Brien"), QString()};
        QList<qint32> numbers = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
        const int count = random.bounded(0, 10);
        for (int m = 0; m < count; ++m) {
            gMatrixGroups = MatrixGroupRecord();
            gMatrixGroups.GroupUID = numbers.takeAt(random.bounded(int(numbers.size())));
            gMatrixGroups.GroupName = (pick(names) + QString::number(m)).leftJustified(32);
            gMatrixGroups.InvUID = 5000 + m;
            gMatrixGroups.ItemID = QStringLiteral("MTX%1").arg(m).leftJustified(15);
            gMatrixGroups.MatrixExists = qint16(QList<int>{0, -1, 1}[random.bounded(3)]);
            gMatrixGroups.MatrixBuilt = qint16(QList<int>{0, -1, 2}[random.bounded(3)]);
            ASSERT_TRUE(gfbDB_RecordOp(kMatrixGroupsTable, kOpInsert));
        }
    }

    // The buffers and record sets the lists read into, set apart from anything they find.
    void buffersReset()
    {
        readsReset();
        gPromo = PromoPriceRecord();
        gPromo.SL = QStringLiteral("before");
        gMatrixGroups = MatrixGroupRecord();
        gMatrixGroups.GroupName = QStringLiteral("before");
        for (int table : {int(kPromoTable), int(kMatrixGroupsTable)}) {
            dbaRecordset[table] = std::make_unique<Recordset>();
            dbaRecordset[table]->open(dbConnection(), QStringLiteral("SELECT TOP 1 * FROM ") + dbuaTable[table].sSqlFile);
        }
    }

    void leftTake(Outcome &seen)
    {
        seen.left = readsLeft();
        seen.promoRow = tableRow(kPromoTable);
        seen.matrixRow = tableRow(kMatrixGroupsTable);
    }

    static void expectSame(const Outcome &sets, const Outcome &keyed, const std::string &what)
    {
        EXPECT_EQ(sets.shown, keyed.shown) << what;
        ListEquivalence::expectSame(sets.left, keyed.left, what);
        EXPECT_EQ(sets.promoRow, keyed.promoRow) << what;
        EXPECT_EQ(sets.matrixRow, keyed.matrixRow) << what;
    }

    // The matrix window opened (its choice list), then its picker (F3's button), left by Esc.
    std::pair<Outcome, Outcome> matrixWindow(bool sets)
    {
        gpListSets_set(sets);
        buffersReset();
        std::pair<Outcome, Outcome> seen;
        quint64 before = dbConnection().statementCount();
        FrmMatrixGroup form;
        seen.first.statements = dbConnection().statementCount() - before;
        form.show();
        const QComboBox &choices = *form.findChild<QComboBox *>(QStringLiteral("Combo1"));
        for (int i = 0; i < choices.count(); ++i)
            seen.first.shown << choices.itemText(i);
        buttonsAdd(form, seen.first.shown);
        leftTake(seen.first);

        buffersReset();
        ScopedModalScript picker([&](QDialog &window) {
            const QListWidget &list = *window.findChild<QListWidget *>(QStringLiteral("LstMatrix"));
            seen.second.statements = dbConnection().statementCount() - before;
            seen.second.shown = listLines(list);
            buttonsAdd(window, seen.second.shown);
            leftTake(seen.second);
            QTest::keyClick(&window, Qt::Key_Escape);
        });
        before = dbConnection().statementCount();
        form.findChild<QPushButton *>(QStringLiteral("CmdGroup(1)"))->click();
        return seen;
    }

    enum class TagAsk { AllDates, Dates, ActiveOnly };

    // The tag-link window asked for its list as a user asks: nothing typed, two dates and
    // Enter, or the check box.
    Outcome tagWindow(bool sets, TagAsk ask, const QDate &from, const QDate &to, int batch)
    {
        gpListSets_set(sets);
        gpPromoItems_batch_set(sets ? batch : 0);
        buffersReset();
        Outcome seen;
        frmTags_Print form;
        ScopedModalScript script([&](QDialog &window) {
            const quint64 before = dbConnection().statementCount();
            const auto box = [&](int i) { return window.findChild<QLineEdit *>(QStringLiteral("txtEdit(%1)").arg(i)); };
            if (ask == TagAsk::Dates) {
                for (int i = 0; i < 2; ++i) {
                    QTest::keyClicks(box(i), gfsDate_short(i == 0 ? from : to, gCommon.USEurope));
                    QTest::keyClick(box(i), Qt::Key_Return);
                }
            } else {
                if (ask == TagAsk::ActiveOnly)
                    window.findChild<QCheckBox *>(QStringLiteral("SSCheck1"))->click();
                window.findChild<QPushButton *>(QStringLiteral("cmdAccept"))->click();
            }
            seen.statements = dbConnection().statementCount() - before;
            seen.shown = listLines(*window.findChild<QListWidget *>(QStringLiteral("lstPromos")));
            buttonsAdd(window, seen.shown);
            leftTake(seen);
            QTest::keyClick(&window, Qt::Key_Escape);
        });
        gfiForm_show_modal(form);
        return seen;
    }
};

} // namespace

TEST_F(RowListsEquivalence, MatrixChoicesAndPickerShowWhatTheKeyedReadsShow)
{
    int choicesShown = 0, entriesShown = 0;
    for (int seed = 0; seed < 20; ++seed) {
        random.seed(quint32(1800 + seed));
        matricesShuffle();
        promosShuffle(50);
        const auto [keyedChoices, keyedPicker] = matrixWindow(false);
        const auto [setChoices, setPicker] = matrixWindow(true);
        const std::string what = "seed " + std::to_string(seed);
        expectSame(setChoices, keyedChoices, what + ", choices");
        expectSame(setPicker, keyedPicker, what + ", picker");
        choicesShown += int(keyedChoices.shown.filter(QStringLiteral("  ")).size());
        entriesShown += int(keyedPicker.shown.filter(QRegularExpression(QStringLiteral("^\\d"))).size());
    }
    EXPECT_GT(choicesShown, 15) << "the seeds must offer matrices, not only \"None existing\"";
    EXPECT_GT(entriesShown, 15);
}

TEST_F(RowListsEquivalence, TagLinkListShowsWhatTheWalkAndItemReadsShow)
{
    int linesShown = 0;
    for (int seed = 0; seed < 16; ++seed) {
        random.seed(quint32(2600 + seed));
        itemsShuffle();
        promosShuffle(160);
        const TagAsk ask = QList<TagAsk>{TagAsk::AllDates, TagAsk::Dates, TagAsk::ActiveOnly}[random.bounded(3)];
        const QDate from = kToday.addDays(random.bounded(-4, 2)), to = kToday.addDays(random.bounded(-2, 4));
        // Small item batches, so that repeated and missing items fall on their edges.
        const int batch = random.bounded(1, 6);
        const Outcome keyed = tagWindow(false, ask, from, to, batch);
        const Outcome sets = tagWindow(true, ask, from, to, batch);
        expectSame(sets, keyed, "seed " + std::to_string(seed) + ", batch " + std::to_string(batch));
        linesShown += int(keyed.shown.filter(QStringLiteral("[picked]")).size());
    }
    EXPECT_GT(linesShown, 100) << "the seeds must list promos, not only empty lists";
}

// A list's statements no longer follow its rows: four times the rows, the same count.
TEST_F(RowListsEquivalence, StatementsDoNotGrowWithTheRowsShown)
{
    auto fill = [&](int matrices, int itemsPerPromo) {
        gfiDB_Execute(QStringLiteral("DELETE FROM PromoPrices"));
        gfiDB_Execute(QStringLiteral("DELETE FROM ") + dbuaTable[kMatrixGroupsTable].sSqlFile);
        int unique = 0;
        for (int m = 1; m <= matrices; ++m) {
            gMatrixGroups = MatrixGroupRecord();
            gMatrixGroups.GroupUID = m, gMatrixGroups.GroupName = QStringLiteral("M%1").arg(m).leftJustified(32);
            gMatrixGroups.InvUID = 5000 + m, gMatrixGroups.ItemID = QStringLiteral("MTX%1").arg(m).leftJustified(15);
            gMatrixGroups.MatrixExists = -1, gMatrixGroups.MatrixBuilt = -1;
            ASSERT_TRUE(gfbDB_RecordOp(kMatrixGroupsTable, kOpInsert));
            // Every other matrix has a promo: the picker offers the rest.
            for (int i = 0; m % 2 == 0 && i < itemsPerPromo; ++i) {
                gpPromo_clear();
                gPromo.GroupID = kMatrixGroupBase + m, gPromo.Invuid = kFirstItem + (m + i) % kItems, gPromo.UniqueID = ++unique;
                gPromo.StartDate = QDateTime(kToday.addDays(-m), QTime(0, 0)), gPromo.EndDate = QDateTime(kToday.addDays(9), QTime(0, 0));
                ASSERT_TRUE(gfbDB_RecordOp(kPromoTable, kOpInsert));
            }
        }
    };
    std::vector<quint64> choices, picker, tags;
    for (const int matrices : {6, 24}) {
        fill(matrices, 4);
        const auto [c, p] = matrixWindow(true);
        choices.push_back(c.statements);
        picker.push_back(p.statements);
        const Outcome t = tagWindow(true, TagAsk::AllDates, kToday, kToday, PromoItems::kDefaultBatch);
        tags.push_back(t.statements);
        const QRegularExpression entry(QStringLiteral("^\\d+\\s+M"));
        EXPECT_EQ(int(c.shown.filter(entry).size()), matrices / 2);
        EXPECT_EQ(int(p.shown.filter(entry).size()), matrices / 2);
        EXPECT_GE(int(t.shown.filter(QStringLiteral("[picked]")).size()), matrices);
        const auto [keyedChoices, keyedPicker] = matrixWindow(false);
        EXPECT_GT(keyedChoices.statements, c.statements) << matrices;
        EXPECT_GT(keyedPicker.statements, p.statements) << matrices;
    }
    EXPECT_EQ(choices[0], choices[1]);
    EXPECT_EQ(picker[0], picker[1]);
    EXPECT_EQ(tags[0], tags[1]);
}

// Another station removes the row the last step would reach, or adds one beyond it, after
// the walk's rows were read: the walk meets what the steps meet and ends where they end.
TEST_F(RowListsEquivalence, ARowRemovedOrAddedWhileTheWalkIsPlayedEndsItWhereTheStepsDo)
{
    constexpr int kByInvuidStart = 8;
    const QStringList changes = {QStringLiteral("DELETE FROM PromoPrices WHERE Invuid = 15"),
                                 QStringLiteral("INSERT INTO PromoPrices (Store, SL, Dept, StartDate, EndDate, ChangeDate, PriceChange, "
                                                "ChangeType, Poll, GroupID, Invuid, UniqueID) VALUES (1, 'x', '000.000.000', "
                                                "'20250514 00:00:00', '20250520 00:00:00', NULL, 1, 0, 'Y', 0, 16, 16)")};
    for (const QString &change : changes) {
        std::map<bool, std::pair<QList<qint32>, QStringList>> seen;
        for (const bool sets : {false, true}) {
            gfiDB_Execute(QStringLiteral("DELETE FROM PromoPrices"));
            for (int invuid = 11; invuid <= 15; ++invuid)
                gfiDB_Execute(QStringLiteral("INSERT INTO PromoPrices (Store, SL, Dept, StartDate, EndDate, ChangeDate, PriceChange, "
                                             "ChangeType, Poll, GroupID, Invuid, UniqueID) VALUES (1, 'x', '000.000.000', "
                                             "'20250514 00:00:00', '20250520 00:00:00', NULL, 1, 0, 'Y', 0, %1, %1)")
                                  .arg(invuid));
            gpListSets_set(sets);
            buffersReset();
            PromoWalk walk(kByInvuidStart, WalkTies::WholeRow);
            bool found = walk.begin(kOpGetFirst);
            gfiDB_Execute(change);
            for (; found; found = walk.next())
                seen[sets].first << gPromo.Invuid;
            seen[sets].second = tableRow(kPromoTable);
        }
        EXPECT_EQ(seen[true], seen[false]) << change.toStdString();
        EXPECT_EQ(seen[true].first.size(), change.startsWith(QLatin1String("DELETE")) ? 4 : 6) << change.toStdString();
    }
}
