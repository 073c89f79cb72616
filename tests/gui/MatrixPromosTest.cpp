// The matrix promos window, its picker and the group editor over it, driven as a user
// drives them, on the demo matrices of twelve items.
#include "promo/FrmMatrixGroup.h"

#include "DemoData.h"
#include "common/DateForms.h"
#include "common/NumberFormat.h"
#include "common/ProcessState.h"
#include "lookup/FlexGrid.h"
#include "platform/Clock.h"
#include "platform/ModalRunner.h"
#include "promo/PromoList.h"
#include "shell/ProcessReset.h"
#include "shell/Startup.h"
#include "store/Common.h"
#include "store/Inventory.h"
#include "store/MatrixGroups.h"
#include "store/MtxItem.h"
#include "store/RecordOps.h"
#include "support/DemoStore.h"
#include "support/FormFinder.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <gtest/gtest.h>

using namespace qln;
using namespace qln::test;

namespace {

const QDate kToday(2025, 5, 14);

QString shortDate(const QDate &date) { return gfsDate_short(date, QStringLiteral("N")); }


class MatrixWindow : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(gfDemoStore_open(db, program.path(), QDateTime(kToday, QTime(10, 30)), 300)); // three matrices of 12
        gCommon.MultiStore = QStringLiteral(" ");
    }
    void TearDown() override
    {
        gpProcess_reset();
        Clock::setFixed(QDateTime());
    }

    static QList<PromoPriceRecord> rows(const QString &where)
    {
        QList<PromoPriceRecord> found;
        EXPECT_TRUE(gfbPromo_rows_read(QStringLiteral("SELECT * FROM PromoPrices WHERE ") + where + QStringLiteral(" ORDER BY Invuid"), found));
        return found;
    }
    static InventoryRecord item(qint32 recordNum)
    {
        EXPECT_TRUE(gfbInventory_ByRecordNum(recordNum));
        return gInventory;
    }
    static void addMember(qint32 invuid, qint32 uid, int pos)
    {
        gMtxItem = MtxItemRecord();
        gMtxItem.InvUID = invuid, gMtxItem.MatrixGroupUID = uid, gMtxItem.xpos = qint16(pos);
        gMtxItem.xAxisValue = QStringLiteral("V%1").arg(pos);
        ASSERT_TRUE(gfbDB_RecordOp(kMtxItemTable, kOpInsert));
    }
    static void addMatrix(qint32 uid, const QString &name)
    {
        gMatrixGroups = MatrixGroupRecord();
        gMatrixGroups.GroupUID = uid, gMatrixGroups.GroupName = name.leftJustified(32);
        gMatrixGroups.InvUID = 5000 + uid, gMatrixGroups.ItemID = QStringLiteral("MTX%1").arg(uid).leftJustified(15);
        gMatrixGroups.MatrixExists = -1, gMatrixGroups.MatrixBuilt = -1;
        ASSERT_TRUE(gfbDB_RecordOp(kMatrixGroupsTable, kOpInsert));
    }
    static void addPromo(qint32 groupID, qint32 invuid, QDate end, int type, qint32 uniqueID)
    {
        gpPromo_clear();
        gPromo.GroupID = groupID, gPromo.Invuid = invuid, gPromo.SL = item(invuid).SL, gPromo.UniqueID = uniqueID;
        gPromo.StartDate = QDateTime(kToday.addDays(-20), QTime(0, 0)), gPromo.EndDate = QDateTime(end, QTime(0, 0));
        gPromo.ChangeType = qint16(type), gPromo.PriceChange = Money::fromWhole(1);
        ASSERT_TRUE(gfbDB_RecordOp(kPromoTable, kOpInsert));
    }

    static FlexGrid &grid(QWidget &form) { return *child<FlexGrid>(form, QStringLiteral("fgrdItems")); }
    static QComboBox &combo(QWidget &form) { return *child<QComboBox>(form, QStringLiteral("Combo1")); }
    static QStringList entries(QComboBox &box)
    {
        QStringList texts;
        for (int i = 0; i < box.count(); ++i)
            texts << box.itemText(i).trimmed();
        return texts;
    }
    // The selector played by keyboard, from its first entry down to `index`.
    static void choose(QWidget &form, int index)
    {
        QComboBox &box = combo(form);
        box.setFocus();
        while (box.currentIndex() > 0)
            QTest::keyClick(&box, Qt::Key_Up);
        for (int i = box.currentIndex(); i < index; ++i)
            QTest::keyClick(&box, Qt::Key_Down);
    }

    // Plays the picker (the entry that starts with `matrix`, then F10; Esc when empty) and
    // the editor (option, amount, dates, F10) as they open.
    ScopedModalScript play(const QString &matrix, int option, const QString &amount, QDate start, QDate end)
    {
        return ScopedModalScript([=, this](QDialog &window) {
            if (window.objectName() == QLatin1String("FrmMatrixList")) {
                QListWidget &list = *child<QListWidget>(window, QStringLiteral("LstMatrix"));
                offered.clear();
                for (int i = 0; i < list.count(); ++i) {
                    offered << list.item(i)->text().trimmed();
                    if (!matrix.isEmpty() && list.item(i)->text().startsWith(matrix))
                        list.setCurrentRow(i);
                }
                QTest::keyClick(&window, Qt::Key_F10);
                return;
            }
            ++editors;
            editorLabel = child<QLabel>(window, QStringLiteral("lblEdit(1)"))->text();
            editorStart = child<QLineEdit>(window, QStringLiteral("txtEdit(1)"))->text();
            child<QRadioButton>(window, QStringLiteral("Option1(%1)").arg(option))->click();
            typeInto(child<QLineEdit>(window, QStringLiteral("txtEdit(%1)").arg(3 + option)), amount);
            typeInto(child<QLineEdit>(window, QStringLiteral("txtEdit(1)")), shortDate(start));
            typeInto(child<QLineEdit>(window, QStringLiteral("txtEdit(2)")), shortDate(end));
            QTest::keyClick(&window, Qt::Key_F10);
        });
    }

    TestDatabase db;
    QTemporaryDir program;
    ScriptedMessages boxes;
    QStringList offered;
    QString editorLabel, editorStart;
    int editors = 0;
};

} // namespace

TEST_F(MatrixWindow, TheRoadOfAPromoOnAMatrixOfTwelveItems)
{
    FrmMatrixGroup form;
    form.show();
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Matrix Promo Prices"));
    const QList<std::pair<const char *, const char *>> captions = {
        {"CmdGroup(1)", "F3  Add New Matrix Promo"}, {"cmdEdit(0)", "&Add "},        {"cmdEdit(1)", "&Change"},
        {"cmdEdit(3)", "&Delete"},                   {"cmdPrintTags", "F5  Print Tags"}, {"cmdPrint", "F9  Print List"},
        {"cmdQuit", "Esc Cancel"},                   {"cmdHelp", "F1 &Help"}};
    for (const auto &[name, caption] : captions)
        EXPECT_EQ(cmd(form, QString::fromLatin1(name))->text(), QString::fromLatin1(caption));
    EXPECT_EQ(child<QGroupBox>(form, QStringLiteral("Frame1"))->title(), QStringLiteral("Matrix Group Promo Pricing"));
    EXPECT_EQ(child<QCheckBox>(form, QStringLiteral("chkExpired"))->text(), QStringLiteral("Show Expired promos on Grid"));
    EXPECT_EQ(child<QLabel>(form, QStringLiteral("lblEdit"))->text(), QStringLiteral("Select Existing Matrix Promo"));
    EXPECT_EQ(entries(combo(form)), QStringList{QStringLiteral("None existing")});
    choose(form, 0);
    EXPECT_EQ(editors, 0) << "\"None existing \" leads nowhere";
    EXPECT_EQ(grid(form).TextMatrix(0, 7), QStringLiteral("Amount"));

    // F3's button, the picker, the editor: twelve rows.
    {
        auto script = play(QStringLiteral("1001"), 1, QStringLiteral("1.50"), kToday, kToday.addDays(6));
        QTest::keyClick(&form, Qt::Key_F3);
        EXPECT_TRUE(offered.isEmpty()) << "the key of the caption is not bound";
        cmd(form, QStringLiteral("CmdGroup(1)"))->click();
    }
    ASSERT_EQ(offered.size(), 3);
    EXPECT_EQ(editors, 1);
    EXPECT_EQ(editorStart, shortDate(kToday)) << "a new promo starts today";
    EXPECT_TRUE(editorLabel.startsWith(QStringLiteral("1001"))) << editorLabel.toStdString();
    EXPECT_EQ(child<QLabel>(form, QStringLiteral("lblEditData"))->text(), editorLabel);
    const QList<PromoPriceRecord> written = rows(QStringLiteral("GroupID = 1001"));
    ASSERT_EQ(written.size(), 12);
    for (int m = 0; m < 12; ++m) {
        const PromoPriceRecord &row = written[m];
        EXPECT_EQ(row.Invuid, 12 + m) << "the members of the first matrix";
        EXPECT_EQ(row.SL, item(row.Invuid).SL);
        EXPECT_EQ(row.ChangeType, kChangeBy);
        EXPECT_EQ(row.PriceChange, Money::parse(QStringLiteral("1.50")).value());
        EXPECT_EQ(row.StartDate, QDateTime(kToday, QTime(0, 0)));
        EXPECT_EQ(row.EndDate, QDateTime(kToday.addDays(6), QTime(0, 0)));
        EXPECT_EQ(row.ChangeDate, QDateTime(kToday, QTime(0, 0)));
        EXPECT_EQ(row.Store, gsStore.toInt());
    }
    FlexGrid &g = grid(form);
    ASSERT_EQ(g.Rows(), 13);
    const InventoryRecord first = item(12);
    EXPECT_EQ(g.TextMatrix(1, 0), first.SL);
    EXPECT_EQ(g.TextMatrix(1, 1), first.Description.trimmed() + QLatin1Char(' ') + first.SubDescription.trimmed());
    EXPECT_EQ(g.TextMatrix(1, 2), gfsNumber_format(first.Price, QStringLiteral("#.00")));
    EXPECT_EQ(g.TextMatrix(1, 3), gfsNumber_format(*gfcPromo_price_get(first.Price, Money::parse(QStringLiteral("1.50")).value(), kChangeBy),
                                                   QStringLiteral("#.00")));
    EXPECT_EQ(g.TextMatrix(1, 5), shortDate(kToday.addDays(6)));
    EXPECT_EQ(g.TextMatrix(1, 6), QStringLiteral("By"));
    EXPECT_EQ(g.TextMatrix(1, 7), QStringLiteral("1.50"));
    ASSERT_EQ(entries(combo(form)).size(), 2);
    EXPECT_TRUE(entries(combo(form))[1].startsWith(QStringLiteral("1001  Crew Tee #1")));
    EXPECT_TRUE(boxes.shown().isEmpty()) << boxes.texts().join(QLatin1Char('|')).toStdString();

    // The matrix has left the picker; an item that joins it now is not covered.
    {
        auto script = play(QString(), 0, QString(), kToday, kToday);
        cmd(form, QStringLiteral("CmdGroup(1)"))->click();
    }
    EXPECT_EQ(offered.size(), 2);
    for (const QString &entry : std::as_const(offered))
        EXPECT_FALSE(entry.startsWith(QStringLiteral("1001")));
    EXPECT_EQ(editors, 1) << "Accept with no entry chosen leads nowhere";
    addMember(200, 1, 40);
    choose(form, 1);
    EXPECT_EQ(g.Rows(), 13);

    // Change: every row of the promo, not the late item.
    {
        auto script = play(QString(), 2, QStringLiteral("20"), kToday.addDays(1), kToday.addDays(10));
        cmd(form, QStringLiteral("cmdEdit(1)"))->click();
    }
    const QList<PromoPriceRecord> changed = rows(QStringLiteral("GroupID = 1001"));
    ASSERT_EQ(changed.size(), 12);
    for (const PromoPriceRecord &row : changed) {
        EXPECT_EQ(row.ChangeType, kChangeByPercent);
        EXPECT_EQ(row.PriceChange, Money::fromWhole(20));
        EXPECT_EQ(row.StartDate.date(), kToday.addDays(1));
        EXPECT_NE(row.Invuid, 200);
    }
    EXPECT_EQ(g.TextMatrix(1, 7), QStringLiteral("20.00%"));

    // Delete works on the values the picker left behind: it cleared them, so nothing is found.
    g.setRow(1);
    boxes.answer(MsgAnswer::Yes);
    cmd(form, QStringLiteral("cmdEdit(3)"))->click();
    ASSERT_EQ(boxes.shown().size(), 2);
    EXPECT_EQ(boxes.shown()[0].text, QStringLiteral("Ready To Delete \r") + editorLabel.trimmed() +
                                          QStringLiteral(":\r\rAre you sure you want to delete the promo on this matrix?"));
    EXPECT_EQ(boxes.shown()[1].text, QStringLiteral("No records found"));
    EXPECT_EQ(boxes.shown()[1].title, QStringLiteral("Promo Price Group ") + g.TextMatrix(1, 1));
    EXPECT_EQ(rows(QStringLiteral("GroupID = 1001")).size(), 12);

    // Right after an add, at a head office: all twelve go and no tombstone stays.
    {
        auto script = play(QStringLiteral("1002"), 0, QStringLiteral("9.99"), kToday, kToday.addDays(2));
        cmd(form, QStringLiteral("CmdGroup(1)"))->click();
    }
    ASSERT_EQ(rows(QStringLiteral("GroupID = 1002")).size(), 12);
    EXPECT_EQ(g.TextMatrix(1, 3), QStringLiteral("9.99"));
    EXPECT_TRUE(g.TextMatrix(1, 7).isEmpty()) << "no amount beside a price set \"To\"";
    gCommon.MultiStore = QStringLiteral("H");
    boxes.clear();
    boxes.answer(MsgAnswer::Yes);
    cmd(form, QStringLiteral("cmdEdit(3)"))->click();
    ASSERT_EQ(boxes.shown().size(), 2);
    EXPECT_EQ(boxes.shown()[1].text, QStringLiteral("12 records deleted"));
    EXPECT_TRUE(rows(QStringLiteral("GroupID = 1002")).isEmpty());
    EXPECT_EQ(rows(QStringLiteral("GroupID = 1001")).size(), 12);
    EXPECT_EQ(g.Rows(), 13) << "the grid is not refreshed";
}

TEST_F(MatrixWindow, ExpiredRowsAndTombstonesLeaveEmptyLinesUntilTheyAreAskedFor)
{
    addPromo(1002, 25, kToday.addDays(-1), kChangeBy, 1);
    addPromo(1002, 26, kToday.addDays(5), kChangeBy, 2);
    addPromo(1002, 27, kToday.addDays(5), kChangeDeleted, 3);
    FrmMatrixGroup form;
    form.show();
    ASSERT_EQ(entries(combo(form)).size(), 2);
    choose(form, 1);
    FlexGrid &g = grid(form);
    ASSERT_EQ(g.Rows(), 4) << "one line for each row";
    QStringList shown;
    for (int row = 1; row < 4; ++row)
        shown << g.TextMatrix(row, 0);
    EXPECT_EQ(shown.count(QString()), 2) << "the expired row and the tombstone leave their lines empty";
    EXPECT_TRUE(shown.contains(item(26).SL));

    child<QCheckBox>(form, QStringLiteral("chkExpired"))->click();
    EXPECT_EQ(g.TextMatrix(1, 0) + g.TextMatrix(2, 0) + g.TextMatrix(3, 0), shown.join(QString())) << "a click alone fills nothing";
    choose(form, 1);
    int deleted = 0;
    for (int row = 1; row < 4; ++row) {
        EXPECT_FALSE(g.TextMatrix(row, 0).isEmpty());
        if (g.TextMatrix(row, 5) == QLatin1String("Deleted")) {
            ++deleted;
            EXPECT_TRUE(g.TextMatrix(row, 6).isEmpty());
        }
    }
    EXPECT_EQ(deleted, 1);
}

TEST_F(MatrixWindow, AQuotedNameMissingItemsAndAnEmptyMatrixAreToldNotHalfWritten)
{
    addMatrix(6, QStringLiteral("Kids' Socks"));
    addMember(60, 6, 1);
    addMember(61, 6, 2);
    addMember(99999, 6, 3); // gone from the item file
    addMatrix(7, QStringLiteral("Empty"));
    gfiDB_Execute(QStringLiteral("DELETE FROM MtxItem WHERE MatrixGroupUID = 2"));
    FrmMatrixGroup form;
    form.show();
    {
        auto script = play(QStringLiteral("1006"), 0, QStringLiteral("4.99"), kToday, kToday.addDays(3));
        cmd(form, QStringLiteral("CmdGroup(1)"))->click();
    }
    EXPECT_EQ(editorLabel.trimmed(), QStringLiteral("1006\tKids' Socks"));
    const QList<PromoPriceRecord> written = rows(QStringLiteral("GroupID = 1006"));
    ASSERT_EQ(written.size(), 2);
    EXPECT_EQ(written[0].Invuid, 60);
    EXPECT_EQ(written[1].Invuid, 61);
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_EQ(boxes.shown()[0].text,
              QStringLiteral("1 item(s) of this matrix are not in the inventory and have no promo (record numbers 99999)."));
    EXPECT_EQ(grid(form).Rows(), 3);

    for (const char *empty : {"1007", "1002"}) {
        boxes.clear();
        auto script = play(QString::fromLatin1(empty), 0, QStringLiteral("1"), kToday, kToday);
        cmd(form, QStringLiteral("CmdGroup(1)"))->click();
        ASSERT_EQ(boxes.shown().size(), 1) << empty;
        EXPECT_EQ(boxes.shown()[0].text, QStringLiteral("No items were found for this matrix, so no promo was added."));
    }
    EXPECT_TRUE(rows(QStringLiteral("GroupID = 1007 OR GroupID = 1002")).isEmpty());

    // No matrices at all: the picker is empty and its Accept leads nowhere.
    gfiDB_Execute(QStringLiteral("DELETE FROM MTXGRPS"));
    const int before = editors;
    auto script = play(QString(), 0, QString(), kToday, kToday);
    cmd(form, QStringLiteral("CmdGroup(1)"))->click();
    EXPECT_TRUE(offered.isEmpty());
    EXPECT_EQ(editors, before);
}
