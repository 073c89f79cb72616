// The group promos window with its group list, editor and the lookup that adds members,
// driven as a user drives them.
#include "promo/frmGroup.h"

#include "DemoData.h"
#include "common/DateForms.h"
#include "common/ItemNumber.h"
#include "common/NumberFormat.h"
#include "common/ProcessState.h"
#include "lookup/DataGridState.h"
#include "lookup/FGrid.h"
#include "lookup/FlexGrid.h"
#include "lookup/GridSetUpBackOffice.h"
#include "platform/Clock.h"
#include "platform/ModalRunner.h"
#include "promo/PromoGroups.h"
#include "promo/PromoList.h"
#include "shell/ProcessReset.h"
#include "shell/Startup.h"
#include "store/Common.h"
#include "store/Inventory.h"
#include "store/RecordOps.h"
#include "support/DemoStore.h"
#include "support/FormFinder.h"
#include "support/QtPrinters.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <gtest/gtest.h>

using namespace qln;
using namespace qln::test;

namespace {

const QDate kToday(2025, 6, 2);

QString shortDate(const QDate &date) { return gfsDate_short(date, QStringLiteral("N")); }
QDateTime day(const QDate &date) { return QDateTime(date, QTime(0, 0)); }

FlexGrid &grid(QWidget &f) { return *child<FlexGrid>(f, QStringLiteral("fgrdItems")); }

class GroupPromos : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(gfDemoStore_open(db, program.path(), QDateTime(kToday, QTime(9, 0)), 20));
        QFile::remove(gfsGroups_file()); // each test writes the groups it needs
        gCommon.MultiStore = QStringLiteral(" ");
        gGroupPromo = PromoPriceRecord();
    }
    void TearDown() override
    {
        gpProcess_reset();
        Clock::setFixed(QDateTime());
    }

    static QList<PromoPriceRecord> promos()
    {
        QList<PromoPriceRecord> rows;
        EXPECT_TRUE(gfbPromo_rows_read(QStringLiteral("SELECT * FROM PromoPrices ORDER BY UniqueID"), rows));
        return rows;
    }
    static void writeGroups(const QList<PromoGroup> &groups) { ASSERT_TRUE(gfbGroups_write(gfsGroups_file(), groups)); }
    // The n-th item of the inventory in SL order.
    static InventoryRecord item(int n)
    {
        EXPECT_TRUE(gfbDB_RecordOp(kInventoryTable, kOpGetFirst, 1));
        for (int i = 0; i < n; ++i)
            EXPECT_TRUE(gfbDB_RecordOp(kInventoryTable, kOpGetNext, 1));
        return gInventory;
    }
    static void addRow(int group, qint32 invuid, const QString &sl, QDate start, QDate end, int type, Money change, qint32 uniqueId,
                       const QString &poll = QStringLiteral(" "))
    {
        gpPromo_clear();
        gPromo.Store = 1, gPromo.GroupID = group, gPromo.Invuid = invuid, gPromo.SL = sl, gPromo.UniqueID = uniqueId;
        gPromo.StartDate = day(start), gPromo.EndDate = day(end), gPromo.ChangeDate = day(kToday);
        gPromo.ChangeType = qint16(type), gPromo.PriceChange = change, gPromo.Poll = poll;
        ASSERT_TRUE(gfbDB_RecordOp(kPromoTable, kOpInsert));
    }

    // Plays every window the group window opens: the group list and its code dialog, the
    // editor, the lookup. Each is answered from the fields below.
    void play(const std::function<void()> &press)
    {
        ScopedModalScript script([&](QDialog &form) {
            const QString name = form.objectName();
            shownForms << name;
            if (name == QLatin1String("frmEditGroups")) {
                cmd(form, QStringLiteral("cmdEdit(0)"))->click();
                QTest::keyClick(&form, Qt::Key_Escape);
            } else if (name == QLatin1String("frmCode_Edit")) {
                typeInto(child<QLineEdit>(form, QStringLiteral("txtEdit(0)")), newCode);
                typeInto(child<QLineEdit>(form, QStringLiteral("txtEdit(1)")), newLabel);
                QTest::keyClick(&form, Qt::Key_F10);
            } else if (name == QLatin1String("FrmEdit_GroupPromo")) {
                editorGroup = child<QLabel>(form, QStringLiteral("lblEdit(1)"))->text();
                if (!editorAccepts) {
                    QTest::keyClick(&form, Qt::Key_Escape);
                    return;
                }
                child<QRadioButton>(form, QStringLiteral("Option1(2)"))->click();
                typeInto(child<QLineEdit>(form, QStringLiteral("txtEdit(5)")), percent);
                if (!start.isNull())
                    typeInto(child<QLineEdit>(form, QStringLiteral("txtEdit(1)")), shortDate(start));
                if (!end.isNull())
                    typeInto(child<QLineEdit>(form, QStringLiteral("txtEdit(2)")), shortDate(end));
                QTest::keyClick(&form, Qt::Key_F10);
            } else if (name == QLatin1String("frm_Lookup")) {
                FlexGrid &g = grid(form);
                QLineEdit *qty = child<QLineEdit>(form, QStringLiteral("TxtText"));
                picked.clear();
                for (int row : pickRows) {
                    picked << gfsItemID_key(gaGridText[row].value(gfiDataGrid_ColumnOf(0, 4)).trimmed());
                    emit g.cellClicked(row, 1);
                    QTest::keyClicks(qty, QStringLiteral("1"));
                    QTest::keyClick(qty, Qt::Key_Return);
                }
                QTest::keyClick(&form, Qt::Key_F10);
            } else {
                ADD_FAILURE() << "unexpected window " << name.toStdString();
            }
        });
        press();
    }

    TestDatabase db;
    QTemporaryDir program;
    ScriptedMessages boxes;
    QString newCode, newLabel, percent = QStringLiteral("15"), editorGroup;
    QDate start, end;
    bool editorAccepts = true;
    QList<int> pickRows;
    QStringList picked, shownForms;
};

} // namespace

TEST_F(GroupPromos, ARoadFromANewGroupThroughItsPromoToChangedAndRemovedMembers)
{
    newCode = QStringLiteral("12"), newLabel = QStringLiteral("Summer Sale");
    start = kToday, end = kToday.addDays(30);
    pickRows = {1, 2, 3};
    boxes.answer(MsgAnswer::Yes); // "No items in this Group. Add Items?"
    frmGroup form;
    play([&] { form.show(); }); // no groups file: the group list opens by itself
    EXPECT_EQ(shownForms, strings({"frmEditGroups", "frmCode_Edit", "FrmEdit_GroupPromo", "frm_Lookup"}));
    EXPECT_EQ(boxes.texts(), strings({"No items in this Group. Add Items?"}));
    EXPECT_EQ(boxes.shown().value(0).title, QStringLiteral("Promo Group  Summer Sale")) << "the name from the fourth character on";
    EXPECT_EQ(child<QComboBox>(form, QStringLiteral("Combo1"))->currentText(), QStringLiteral("12  Summer Sale"));
    EXPECT_EQ(child<QLabel>(form, QStringLiteral("lblEditData"))->text(), QStringLiteral(" Summer Sale"));
    EXPECT_EQ(editorGroup, QStringLiteral(" Summer Sale"));

    QList<PromoPriceRecord> rows = promos();
    ASSERT_EQ(rows.size(), 3);
    QStringList sls;
    for (const PromoPriceRecord &p : rows) {
        sls << p.SL.trimmed();
        EXPECT_EQ(p.GroupID, 12);
        EXPECT_EQ(p.ChangeType, kChangeByPercent);
        EXPECT_EQ(p.PriceChange, Money::fromWhole(15));
        EXPECT_EQ(p.StartDate, day(kToday));
        EXPECT_EQ(p.EndDate, day(kToday.addDays(30)));
        EXPECT_EQ(p.ChangeDate, day(kToday));
        EXPECT_TRUE(p.Dept.trimmed().isEmpty());
        EXPECT_TRUE(p.Poll.trimmed().isEmpty()) << "adding sets no poll flag";
        ASSERT_EQ(gfiInventory_BySL(p.SL, false), -1);
        EXPECT_EQ(p.Invuid, gInventory.RecordNum);
    }
    EXPECT_EQ(sls, picked);
    FlexGrid &g = grid(form);
    ASSERT_EQ(g.Rows(), 4);
    EXPECT_EQ(g.TextMatrix(0, 3), QStringLiteral("Promo Price"));
    EXPECT_EQ(g.TextMatrix(1, 6), QStringLiteral("By Percent"));
    EXPECT_EQ(g.TextMatrix(1, 7), QStringLiteral("15.00%"));
    EXPECT_EQ(g.TextMatrix(1, 5), shortDate(kToday.addDays(30)));
    EXPECT_TRUE(cmd(form, QStringLiteral("cmdEdit(1)"))->isEnabled());

    // The same item again with the same end date is refused.
    pickRows = {1};
    boxes.clear();
    play([&] { cmd(form, QStringLiteral("CmdAddItem"))->click(); });
    EXPECT_EQ(boxes.texts(), QStringList{QStringLiteral("Item with SL ") + picked.value(0) + QStringLiteral("already exists in this Group.")});
    EXPECT_EQ(boxes.shown().value(0).title, QStringLiteral("Not Inserted"));
    EXPECT_EQ(promos().size(), 3);
    EXPECT_EQ(g.Rows(), 4);

    // Change by key 8: every member follows. A group chosen while empty offers today's dates
    // in the editor until it is chosen again, so the user types them again.
    percent = QStringLiteral("20");
    boxes.clear();
    play([&] { QTest::keyClick(&form, Qt::Key_C); });
    for (const PromoPriceRecord &p : promos()) {
        EXPECT_EQ(p.PriceChange, Money::fromWhole(20));
        EXPECT_EQ(p.EndDate.toString(Qt::ISODate), day(kToday.addDays(30)).toString(Qt::ISODate));
        EXPECT_TRUE(p.Poll.trimmed().isEmpty()) << "a change sets no poll flag either";
    }
    EXPECT_EQ(g.TextMatrix(3, 7), QStringLiteral("20.00%"));
    EXPECT_TRUE(boxes.shown().isEmpty()) << boxes.texts().join(QLatin1Char('|')).toStdString();

    // A single store removes the member at once; the line stays until the group is read again.
    gpGrid_SelectRow(g, 2);
    boxes.answer(MsgAnswer::Yes);
    cmd(form, QStringLiteral("cmdEdit(2)"))->click();
    EXPECT_EQ(boxes.texts(), QStringList{QStringLiteral("Are you sure you want to delete ") + g.TextMatrix(2, 0).trimmed() + QStringLiteral("?\r\rReady To Delete")});
    rows = promos();
    ASSERT_EQ(rows.size(), 2);
    EXPECT_FALSE(sls.mid(1, 1).contains(rows[0].SL.trimmed()) || sls.mid(1, 1).contains(rows[1].SL.trimmed()));
    EXPECT_EQ(g.TextMatrix(2, 0).trimmed(), sls[1]);

    // A head office keeps a tombstone for the stores and hides the line.
    gCommon.MultiStore = QStringLiteral("H");
    gpGrid_SelectRow(g, 3);
    boxes.clear();
    boxes.answer(MsgAnswer::Yes);
    cmd(form, QStringLiteral("cmdEdit(2)"))->click();
    rows = promos();
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[1].SL.trimmed(), sls[2]);
    EXPECT_EQ(rows[1].ChangeType, kChangeDeleted);
    EXPECT_EQ(rows[1].Poll, QStringLiteral("Y"));
    EXPECT_EQ(rows[0].ChangeType, kChangeByPercent);
    EXPECT_EQ(g.RowHeight(3), 0);
    EXPECT_EQ(boxes.texts().size(), 1) << boxes.texts().join(QLatin1Char('|')).toStdString();
}

TEST_F(GroupPromos, MembersWhoseItemsAreGoneLeaveNoLineAndTombstonesShowNoChange)
{
    writeGroups({{QStringLiteral("5"), QStringLiteral("Five")}});
    const InventoryRecord a = item(2), b = item(5), c = item(7);
    const QDate end = kToday.addDays(10);
    addRow(5, c.RecordNum, c.SL, kToday, end, kChangeTo, Money::parse(QStringLiteral("1.25")).value(), 1);
    addRow(5, 0, QStringLiteral("0"), kToday, end, kChangeTo, Money::fromWhole(1), 2);        // names no item
    addRow(5, 999999, QStringLiteral("00"), kToday, end, kChangeTo, Money::fromWhole(1), 3);   // item gone
    addRow(5, a.RecordNum, a.SL, kToday, end, kChangeBy, Money::fromWhole(1), 4);
    addRow(5, b.RecordNum, b.SL, kToday, end, kChangeDeleted, Money::fromWhole(3), 5, QStringLiteral("Y"));
    addRow(6, b.RecordNum, b.SL, kToday.addDays(1), end, kChangeTo, Money::fromWhole(2), 6);             // another group

    frmGroup form;
    form.show();
    FlexGrid &g = grid(form);
    // By SL: "0" and "00" (no lines), then the three items.
    ASSERT_EQ(g.Rows(), 4) << "the lines of missing items are taken by the next member";
    EXPECT_EQ(g.TextMatrix(1, 0), a.SL);
    EXPECT_EQ(g.TextMatrix(1, 1), a.Description);
    EXPECT_EQ(g.TextMatrix(1, 2), a.Price.toPlainText());
    EXPECT_EQ(g.TextMatrix(1, 3), gfsNumber_format(a.Price - Money::fromWhole(1), QStringLiteral("#.00")));
    EXPECT_EQ(g.TextMatrix(1, 6), QStringLiteral("By"));
    EXPECT_EQ(g.TextMatrix(2, 0), b.SL);
    EXPECT_EQ(g.TextMatrix(2, 3), g.TextMatrix(1, 3)) << "a tombstone repeats the promo price above it";
    EXPECT_TRUE(g.TextMatrix(2, 6).isEmpty());
    EXPECT_TRUE(g.TextMatrix(2, 7).isEmpty());
    EXPECT_EQ(g.TextMatrix(2, 5), shortDate(end));
    EXPECT_EQ(g.TextMatrix(3, 0), c.SL);
    EXPECT_EQ(g.TextMatrix(3, 3), QStringLiteral("1.25"));
    EXPECT_EQ(g.TextMatrix(3, 6), QStringLiteral("To"));
    EXPECT_EQ(g.TextMatrix(3, 7), QStringLiteral("1.25"));
    EXPECT_EQ(gGroupPromo.ChangeType, kChangeTo) << "the group's values come from its first row, shown or not";
    EXPECT_EQ(gGroupPromo.PriceChange, Money::fromWhole(1));
    EXPECT_TRUE(boxes.shown().isEmpty()) << boxes.texts().join(QLatin1Char('|')).toStdString();

    // The Description header sorts on it, the others leave the order.
    QStringList descriptions = {g.TextMatrix(1, 1), g.TextMatrix(2, 1), g.TextMatrix(3, 1)};
    const QStringList before = descriptions;
    std::sort(descriptions.begin(), descriptions.end(), [](const QString &x, const QString &y) { return x.compare(y, Qt::CaseInsensitive) < 0; });
    emit g.cellClicked(0, 5);
    EXPECT_EQ((QStringList{g.TextMatrix(1, 1), g.TextMatrix(2, 1), g.TextMatrix(3, 1)}), before);
    emit g.cellClicked(0, 1);
    EXPECT_EQ((QStringList{g.TextMatrix(1, 1), g.TextMatrix(2, 1), g.TextMatrix(3, 1)}), descriptions);
    emit g.cellClicked(0, 0);
    EXPECT_EQ(g.TextMatrix(1, 0), a.SL);

    // Change finds each row by its item and start date and leaves the rows of other groups.
    percent = QStringLiteral("10");
    play([&] { cmd(form, QStringLiteral("cmdEdit(1)"))->click(); });
    for (const PromoPriceRecord &p : promos()) {
        if (p.GroupID == 5)
            EXPECT_EQ(p.PriceChange, Money::fromWhole(10)) << p.SL.toStdString();
        else
            EXPECT_NE(p.PriceChange, Money::fromWhole(10)) << p.SL.toStdString();
    }
}

TEST_F(GroupPromos, AnsweringNoStillAsksForThePromoAndACancelWritesNothing)
{
    writeGroups({{QStringLiteral("7"), QStringLiteral("Bond")}});
    gGroupPromo.PriceChange = Money::fromWhole(99), gGroupPromo.ChangeType = kChangeBy;
    boxes.answer(MsgAnswer::No);
    editorAccepts = false;
    frmGroup form;
    play([&] { form.show(); });
    EXPECT_EQ(shownForms, strings({"FrmEdit_GroupPromo"}));
    EXPECT_EQ(editorGroup, QStringLiteral("Bond"));
    EXPECT_EQ(gGroupPromo.GroupID, 7);
    EXPECT_EQ(gGroupPromo.PriceChange, Money()) << "No starts the promo from nothing";
    EXPECT_EQ(gGroupPromo.StartDate, day(kToday));
    EXPECT_TRUE(promos().isEmpty());
    EXPECT_FALSE(cmd(form, QStringLiteral("CmdAddItem"))->isEnabled()) << "only Yes offers Add Item";
    EXPECT_FALSE(cmd(form, QStringLiteral("cmdEdit(1)"))->isEnabled());
}

TEST_F(GroupPromos, ThePurgeSendsTheStatementTheServerRefusesAndKeepsEveryRow)
{
    writeGroups({{QStringLiteral("12"), QStringLiteral("Summer Sale")}});
    const InventoryRecord a = item(1), b = item(2);
    addRow(12, a.RecordNum, a.SL, kToday.addDays(-20), kToday.addDays(-10), kChangeTo, Money::fromWhole(1), 1);
    addRow(12, b.RecordNum, b.SL, kToday.addDays(-20), kToday.addDays(-5), kChangeTo, Money::fromWhole(1), 2);
    frmGroup form;
    form.show();
    boxes.answer(MsgAnswer::Yes);
    QTest::keyClick(&form, Qt::Key_F6);
    EXPECT_EQ(boxes.texts(), strings({"Do you want to purge?\r\rThis operation purges any expired promos for the current group."}));
    EXPECT_TRUE(db.readFile(QStringLiteral("PVSW.log")).contains(QStringLiteral("DELETE FROM COMMON WHERE groupid =12")));
    const QList<PromoPriceRecord> rows = promos();
    ASSERT_EQ(rows.size(), 2) << "no promo row goes";
    EXPECT_EQ(rows[0].ChangeType, kChangeTo);
    EXPECT_EQ(rows[1].ChangeType, kChangeTo);
    EXPECT_EQ(grid(form).Rows(), 3);

    // Said no to, the purge sends nothing.
    QFile::remove(db.file(QStringLiteral("PVSW.log")));
    boxes.answer(MsgAnswer::No);
    cmd(form, QStringLiteral("cmdPurge"))->click();
    EXPECT_FALSE(QFile::exists(db.file(QStringLiteral("PVSW.log"))));
}

TEST_F(GroupPromos, ACodeThatIsNoGroupNumberIsRefusedBeforeAnyRowIsReadOrWritten)
{
    writeGroups({{QStringLiteral("1234"), QStringLiteral("Too long")},
                 {QStringLiteral("A1"), QStringLiteral("Letters")},
                 {QStringLiteral("0"), QStringLiteral("Zero")},
                 {QStringLiteral("3"), QString::fromUtf8("Caf\xc3\xa9 'quoted'")}});
    const InventoryRecord a = item(1);
    addRow(123, a.RecordNum, a.SL, kToday, kToday.addDays(3), kChangeTo, Money::fromWhole(1), 1);
    frmGroup form;
    form.show();
    auto *combo = child<QComboBox>(form, QStringLiteral("Combo1"));
    ASSERT_EQ(combo->count(), 4);
    for (int i = 0; i < 3; ++i) {
        boxes.clear();
        combo->setCurrentIndex(i);
        emit combo->activated(i);
        ASSERT_EQ(boxes.texts().size(), 1) << i;
        EXPECT_TRUE(boxes.texts()[0].contains(QStringLiteral("is not a number from 1 to 999"))) << boxes.texts()[0].toStdString();
        EXPECT_TRUE(grid(form).TextMatrix(1, 0).isEmpty()) << "group 123 is not shown for code 1234";
        EXPECT_FALSE(cmd(form, QStringLiteral("CmdAddItem"))->isEnabled());
    }
    EXPECT_EQ(promos().size(), 1);

    // A name with a quote and an accent is only text.
    boxes.clear();
    boxes.answer(MsgAnswer::Yes);
    editorAccepts = false;
    combo->setCurrentIndex(3);
    play([&] { emit combo->activated(3); });
    EXPECT_EQ(editorGroup, QString::fromUtf8("Caf\xc3\xa9 'quoted'"));
    EXPECT_EQ(promos().size(), 1);
}
