// The names lookup as a caller shows it: the user types, pages and picks a name.
#include "lookup/FlexGrid.h"
#include "lookup/LookupFixture.h"
#include "lookup/NamePick.h"
#include "lookup/frm_Lookup.h"
#include "platform/ModalRunner.h"
#include "shell/Startup.h"
#include "support/FormFinder.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace qln;
using namespace qln::test;

namespace {

FlexGrid &grid(QWidget &form) { return *form.findChild<FlexGrid *>(QStringLiteral("fgrdItems")); }
QLineEdit *search(QWidget &form) { return child<QLineEdit>(form, QStringLiteral("txtEditValue")); }
// The A/R code of the selected row.
QString selectedCode(QWidget &form) { return grid(form).TextMatrix(grid(form).Row(), 1).trimmed(); }

class NameLookup : public NamesStore {
protected:
    void SetUp() override
    {
        NamesStore::SetUp();
        gpLookupState_reset(false);
    }
    // Picks a name as a caller would, the script playing the user.
    QString pick(const std::function<void(QDialog &)> &user)
    {
        ScopedModalScript script([&](QDialog &form) {
            EXPECT_EQ(form.objectName(), QStringLiteral("frm_Lookup"));
            user(form);
        });
        return gfsName_Pick();
    }
};

} // namespace

TEST_F(NameLookup, TheSitesWordsHeadTheListAndEnterReturnsTheChosenCode)
{
    addNames();
    const QString code = pick([](QDialog &form) {
        FlexGrid &g = grid(form);
        EXPECT_EQ(form.windowTitle(), QStringLiteral("Find Customer Name"));
        EXPECT_EQ(g.TextMatrix(0, 0), QStringLiteral(" F7\nCompany"));
        EXPECT_EQ(g.TextMatrix(0, 3), QStringLiteral(" F4\nSurname"));
        EXPECT_EQ(g.TextMatrix(0, 4), QStringLiteral(" F5\nFirst Name"));
        EXPECT_EQ(child<QLabel>(form, QStringLiteral("lblSearchField"))->text(), QStringLiteral("--A/R Code"));
        EXPECT_EQ(g.TextMatrix(1, 1).trimmed(), QStringLiteral("N01")) << "the list opens in code order";
        EXPECT_EQ(g.TextMatrix(10, 1).trimmed(), QString()) << "deleted names are not listed";

        QTest::keyClick(search(form), Qt::Key_F4);
        EXPECT_EQ(child<QLabel>(form, QStringLiteral("lblSearchField"))->text(), QStringLiteral("--Last Name"));
        EXPECT_EQ(g.TextMatrix(1, 1).trimmed(), QStringLiteral("N03")) << "a blank last name comes first";
        QTest::keyClicks(search(form), QStringLiteral("SMI"));
        EXPECT_EQ(selectedCode(form), QStringLiteral("N07"));
        QTest::keyClick(search(form), Qt::Key_Down);
        EXPECT_EQ(selectedCode(form), QStringLiteral("N05"));
        QTest::keyClick(search(form), Qt::Key_Return);
    });
    EXPECT_EQ(code, QStringLiteral("N05"));
    EXPECT_EQ(iLookupFile, 1) << "the item lookups find their own file again";
    EXPECT_TRUE(boxes.shown().isEmpty()) << boxes.texts().join(QLatin1Char('\n')).toStdString();
}

TEST_F(NameLookup, PagingKeysWalkALongListAndAQuestionMarkDoesNotSearch)
{
    addNames();
    for (int i = 10; i < 40; ++i)
        addName(QByteArray("W").append(QByteArray::number(i)).constData(), "Walker", QByteArray("Kid ").append(QByteArray::number(i)).constData());
    const QString code = pick([](QDialog &form) {
        FlexGrid &g = grid(form);
        QTest::keyClick(search(form), Qt::Key_F4);
        const int rows = iGridRows - 1;
        ASSERT_GE(rows, 5);
        QTest::keyClick(search(form), Qt::Key_PageDown);
        EXPECT_EQ(g.TextMatrix(1, 3).trimmed(), QStringLiteral("Walker")) << "the second page begins past the first";
        QTest::keyClick(search(form), Qt::Key_PageUp);
        EXPECT_EQ(g.TextMatrix(1, 1).trimmed(), QStringLiteral("N03"));

        QTest::keyClicks(search(form), QStringLiteral("you"));
        EXPECT_EQ(selectedCode(form), QStringLiteral("N10"));
        const quint64 sent = dbConnection().statementCount();
        QTest::keyClicks(search(form), QStringLiteral("?"));
        EXPECT_EQ(dbConnection().statementCount(), sent) << "a text ending in '?' is not looked for";
        EXPECT_EQ(sSearchText, QStringLiteral("you"));
        QTest::keyClick(&form, Qt::Key_F10);
    });
    EXPECT_EQ(code, QStringLiteral("N10"));
}

TEST_F(NameLookup, PhoneStandsForTheCodeUnderF6AndEscapeChoosesNothing)
{
    addNames();
    // As the site sets it: the window reads its settings from ZOR.INI.
    QFile ini(QDir(gsDataPath).filePath(QStringLiteral("ZOR.INI")));
    ASSERT_TRUE(ini.open(QIODevice::WriteOnly));
    ini.write("[LOOKUP]\r\nPhone Lookup=Y\r\n");
    ini.close();
    ASSERT_TRUE(gZorIni.FileOpen(ini.fileName()));
    EXPECT_TRUE(pick([](QDialog &form) {
                    QTest::keyClick(search(form), Qt::Key_F6);
                    EXPECT_EQ(iLookupKey, 9);
                    EXPECT_EQ(grid(form).TextMatrix(0, 2), QStringLiteral(" F6\n Phone"));
                    QTest::keyClicks(search(form), QStringLiteral("555-N09"));
                    EXPECT_EQ(selectedCode(form), QStringLiteral("N09"));
                    QTest::keyClick(search(form), Qt::Key_Escape);
                }).isEmpty());
}

TEST_F(NameLookup, AnEmptyNamesTableChoosesNothing)
{
    EXPECT_TRUE(pick([](QDialog &form) {
                    EXPECT_TRUE(grid(form).TextMatrix(1, 1).trimmed().isEmpty());
                    QTest::keyClick(search(form), Qt::Key_Return);
                    EXPECT_TRUE(form.isVisible()) << "nothing to choose: the window stays";
                    QTest::keyClick(search(form), Qt::Key_PageDown);
                    QTest::keyClick(search(form), Qt::Key_Escape);
                }).isEmpty());
    EXPECT_EQ(boxes.texts(), strings({"No matching data found"}));
}
