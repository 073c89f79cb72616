// The list of promo groups and its small editor, driven as a user drives them.
#include "promo/frmEditGroups.h"

#include "lookup/FlexGrid.h"
#include "platform/ModalRunner.h"
#include "promo/PromoList.h"
#include "promo/PromoPricing.h"
#include "store/StoreFixture.h"

#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace qln;
using namespace qln::test;

namespace {

QByteArray fileBytes(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

class GroupList : public ConnectedStore {
protected:
    void SetUp() override
    {
        ConnectedStore::SetUp();
        gpPromo_table_register(kPromoTable, gsDataPath);
        ASSERT_TRUE(gfbDB_TableOpen(kPromoTable));
    }
    QString groupsFile() const { return db.file(QStringLiteral("Groups.QLN")); }
    static QPushButton *cmd(QWidget &form, const QString &name) { return form.findChild<QPushButton *>(name); }
    static FlexGrid &grid(QWidget &form) { return *form.findChild<FlexGrid *>(QStringLiteral("fgrdItems")); }
    static QStringList rows(QWidget &form)
    {
        QStringList shown;
        for (int row = 1; row < grid(form).Rows(); ++row)
            shown << grid(form).TextMatrix(row, 0) + QLatin1Char('|') + grid(form).TextMatrix(row, 1);
        return shown;
    }
    // Plays the code dialog: what it proposed, then the user's code and description.
    void withCodeDialog(const QString &code, const QString &label, const std::function<void()> &press, bool accept = true)
    {
        ScopedModalScript script([&](QDialog &dialog) {
            EXPECT_EQ(dialog.objectName(), QStringLiteral("frmCode_Edit"));
            dialogTitle = dialog.windowTitle();
            QLineEdit *codeBox = dialog.findChild<QLineEdit *>(QStringLiteral("txtEdit(0)"));
            QLineEdit *labelBox = dialog.findChild<QLineEdit *>(QStringLiteral("txtEdit(1)"));
            proposed = codeBox->text();
            EXPECT_FALSE(cmd(dialog, QStringLiteral("cmdAcceptCancel(0)"))->isEnabled()) << "nothing typed yet";
            codeBox->selectAll();
            QTest::keyClicks(codeBox, code);
            labelBox->selectAll();
            QTest::keyClicks(labelBox, label);
            QTest::keyClick(accept ? labelBox : static_cast<QWidget *>(&dialog), accept ? Qt::Key_Return : Qt::Key_Escape);
        });
        press();
    }
    static void addRow(int groupId, const char *sl, int uniqueId)
    {
        gpPromo_clear();
        gPromo.GroupID = groupId, gPromo.SL = QString::fromLatin1(sl), gPromo.UniqueID = uniqueId, gPromo.Invuid = uniqueId;
        gPromo.StartDate = gPromo.EndDate = QDateTime(QDate(2025, 5, 1), QTime(0, 0));
        ASSERT_TRUE(gfbDB_RecordOp(kPromoTable, kOpInsert));
    }
    static int promoRows()
    {
        QList<PromoPriceRecord> all;
        EXPECT_TRUE(gfbPromo_rows_read(QStringLiteral("SELECT * FROM PromoPrices"), all));
        return int(all.size());
    }

    QString dialogTitle, proposed;
};

} // namespace

TEST_F(GroupList, WithoutAFileTheFirstAddMakesItAndTheListStaysInNumberOrder)
{
    frmEditGroups form;
    form.show();
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Promp Price  Groups"));
    EXPECT_TRUE(cmd(form, QStringLiteral("cmdEdit(0)"))->isEnabled());
    EXPECT_FALSE(cmd(form, QStringLiteral("cmdEdit(1)"))->isEnabled());
    EXPECT_FALSE(cmd(form, QStringLiteral("cmdEdit(2)"))->isEnabled());

    withCodeDialog(QStringLiteral("12"), QStringLiteral("Summer Sale"), [&] { QTest::keyClick(&form, Qt::Key_A); });
    EXPECT_EQ(dialogTitle, QStringLiteral("Add New Group"));
    EXPECT_EQ(proposed, QStringLiteral("1"));
    EXPECT_EQ(fileBytes(groupsFile()), QByteArray("[CODE]12 [LABEL]Summer Sale\n"));

    withCodeDialog(QStringLiteral("3"), QStringLiteral("Spring"), [&] { QTest::keyClick(&form, Qt::Key_A); });
    EXPECT_EQ(proposed, QStringLiteral("13")) << "the highest code and one";
    withCodeDialog(QStringLiteral("100"), QStringLiteral("Autumn"), [&] { cmd(form, QStringLiteral("cmdEdit(0)"))->click(); });
    EXPECT_EQ(rows(form), strings({"3|Spring", "12|Summer Sale", "100|Autumn"})) << "numbers, not texts";
    EXPECT_EQ(fileBytes(groupsFile()), QByteArray("[CODE]3 [LABEL]Spring\n[CODE]12 [LABEL]Summer Sale\n[CODE]100 [LABEL]Autumn\n"));

    withCodeDialog(QStringLiteral("9"), QStringLiteral("Nothing"), [&] { QTest::keyClick(&form, Qt::Key_A); }, false);
    EXPECT_EQ(rows(form).size(), 3) << "a cancelled add changes nothing";

    // A rename that also renumbers moves the row; the file follows.
    emit grid(form).cellClicked(1, 0);
    withCodeDialog(QStringLiteral("50"), QStringLiteral("Spring Fair"), [&] { emit grid(form).cellDoubleClicked(1, 1); });
    EXPECT_EQ(dialogTitle, QStringLiteral("Change Group Name Code"));
    EXPECT_EQ(proposed, QStringLiteral("3"));
    EXPECT_EQ(rows(form), strings({"12|Summer Sale", "50|Spring Fair", "100|Autumn"}));
    EXPECT_TRUE(fileBytes(groupsFile()).startsWith("[CODE]12 [LABEL]Summer Sale\n[CODE]50 [LABEL]Spring Fair\n"));
    EXPECT_TRUE(boxes.shown().isEmpty());

    frmEditGroups again;
    EXPECT_EQ(rows(again), rows(form)) << "read back in the same order";
}

TEST_F(GroupList, DeletingAGroupRemovesItsPromoRowsAndTheLastLeavesAnEmptyRow)
{
    QFile f(groupsFile());
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("[CODE]12 [LABEL]Summer Sale\r\n[CODE]A1 [LABEL]Lettered\r\n");
    f.close();
    addRow(12, "10000001", 1);
    addRow(12, "10000002", 2);
    addRow(0, "10000003", 3);

    frmEditGroups form;
    form.show();
    ASSERT_EQ(rows(form), strings({"A1|Lettered", "12|Summer Sale"})) << "A1 counts as 0";
    emit grid(form).cellClicked(2, 0);
    boxes.answer(MsgAnswer::No);
    QTest::keyClick(&form, Qt::Key_D);
    EXPECT_EQ(promoRows(), 3) << "anything but Yes stops";
    EXPECT_EQ(boxes.texts().value(0), QStringLiteral("Ready To Delete \r'12 - Summer Sale'\r\rAre you sure you want to delete records in this group?"));

    boxes.clear();
    boxes.answer(MsgAnswer::Yes);
    QTest::keyClick(&form, Qt::Key_D);
    EXPECT_EQ(promoRows(), 1);
    ASSERT_EQ(boxes.shown().size(), 2);
    EXPECT_EQ(boxes.shown()[1].text, QStringLiteral("2 records deleted"));
    EXPECT_EQ(boxes.shown()[1].title, QStringLiteral("Promo Price Group Summer Sale"));
    EXPECT_EQ(rows(form), strings({"A1|Lettered"}));

    boxes.clear();
    boxes.answer(MsgAnswer::Yes);
    emit grid(form).cellClicked(1, 0);
    cmd(form, QStringLiteral("cmdEdit(2)"))->click();
    EXPECT_EQ(boxes.shown().value(1).text, QStringLiteral("No records found")) << "a code that is no number removes nothing";
    EXPECT_EQ(promoRows(), 1);
    EXPECT_EQ(rows(form), strings({"|"}));
    EXPECT_EQ(fileBytes(groupsFile()), QByteArray("[CODE] [LABEL]\n"));
    EXPECT_TRUE(cmd(form, QStringLiteral("cmdEdit(1)"))->isEnabled()) << "the list still counts as having groups";

    withCodeDialog(QStringLiteral("7"), QStringLiteral("Seven"), [&] { QTest::keyClick(&form, Qt::Key_A); });
    EXPECT_EQ(proposed, QStringLiteral("1"));
    EXPECT_EQ(rows(form), strings({"|", "7|Seven"})) << "the empty row is kept";
    EXPECT_EQ(fileBytes(groupsFile()), QByteArray("[CODE] [LABEL]\n[CODE]7 [LABEL]Seven\n"));
}

TEST_F(GroupList, NineHundredNinetyNineGroupsRefuseTheNext)
{
    QList<PromoGroup> many;
    for (int i = 1; i <= kGroupCodesMax; ++i)
        many << PromoGroup{QString::number(i), QStringLiteral("G%1").arg(i)};
    ASSERT_TRUE(gfbGroups_write(groupsFile(), many));
    frmEditGroups form;
    form.show();
    ScopedModalScript noDialog([](QDialog &dialog) { ADD_FAILURE() << dialog.objectName().toStdString(); });
    QTest::keyClick(&form, Qt::Key_A);
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_EQ(boxes.shown()[0].text, QStringLiteral("The maximum number of 999 codes has been reached\rYou cannot add any more codes"));
    EXPECT_EQ(boxes.shown()[0].icon, MsgIcon::Information);
    EXPECT_EQ(rows(form).size(), kGroupCodesMax);
}
