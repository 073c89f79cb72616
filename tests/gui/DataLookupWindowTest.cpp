#include "lookup/frmDataLookup.h"

#include "DemoData.h"
#include "common/ItemNumber.h"
#include "common/ProcessState.h"
#include "lookup/DataGridState.h"
#include "lookup/FlexGrid.h"
#include "shell/ProcessReset.h"
#include "shell/Startup.h"
#include "store/Departments.h"
#include "store/Inventory.h"
#include "store/RecordOps.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

using namespace qln;
using namespace qln::test;

namespace {

// A store's demo set, opened as start-up opens it.
class DataLookupWindow : public ::testing::Test {
protected:
    void SetUp() override
    {
        gpProcess_reset();
        gsAppPath = program.path();
        demo::DemoOptions o = demo::gfDemo_options(db.info(), db.dataPath(), 300);
        o.promos = 0;
        QString error;
        ASSERT_TRUE(demo::gfbDemo_build(o, report, error)) << error.toStdString();
        gpProcess_reset();
        ASSERT_TRUE(gfbStartup_prepare(QStringLiteral("/DATAPATH=") + db.dataPath()));
        gaLookupEntries.clear();
        boxes.clear();
    }
    void TearDown() override
    {
        gaLookupEntries.clear();
        gpProcess_reset();
    }

    static FlexGrid *grid(QWidget &form) { return form.findChild<FlexGrid *>(QStringLiteral("fgrdItems")); }
    static QLineEdit *edit(QWidget &form, const char *name) { return form.findChild<QLineEdit *>(QString::fromLatin1(name)); }
    static QWidget *list(QWidget &form) { return grid(form)->view(); }
    static void headerClick(QWidget &form, int col)
    {
        QHeaderView *header = grid(form)->view()->horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          QPoint(header->sectionViewportPosition(col) + 5, header->height() / 2));
    }
    static int columnOf(FlexGrid &g, const char *header)
    {
        for (int col = 0; col < g.Cols(); ++col) {
            if (g.TextMatrix(0, col) == QLatin1String(header))
                return col;
        }
        return -1;
    }
    // The quantity typed over the current row's cell, then Enter.
    static void quantityType(QWidget &form, const QString &qty)
    {
        QTest::keyClick(list(form), Qt::Key_Return);
        QLineEdit *cell = edit(form, "txtText");
        ASSERT_TRUE(cell->isVisible());
        cell->clear();
        QTest::keyClicks(cell, qty);
        QTest::keyClick(cell, Qt::Key_Return);
    }

    TestDatabase db;
    QTemporaryDir program;
    demo::DemoReport report;
    ScriptedMessages boxes;
};

} // namespace

TEST_F(DataLookupWindow, TypingFindsTheFirstRowOfTheSortColumnAndAHeaderSortsByIt)
{
    frmDataLookup form(5, QStringLiteral("OPEN"));
    form.show();
    FlexGrid &g = *grid(form);
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Data Lookup"));
    ASSERT_GT(g.Rows(), 200) << "every item that may be sold, matrix roots left out";
    EXPECT_EQ(columnOf(g, "Vendor"), 8);

    // Sorted by description: the typed start of one lands on the first row that has it.
    const QString wanted = g.TextMatrix(g.Rows() / 2, 1).left(6);
    QTest::keyClicks(edit(form, "Text1"), wanted.toLower());
    const int row = g.Row();
    EXPECT_TRUE(g.TextMatrix(row, 1).startsWith(wanted));
    EXPECT_FALSE(g.TextMatrix(row - 1, 1).startsWith(wanted, Qt::CaseInsensitive));

    // Quotes and "%" are plain text here: no row, no box.
    edit(form, "Text1")->clear();
    QTest::keyClicks(edit(form, "Text1"), QStringLiteral("%'B"));
    EXPECT_EQ(g.Row(), row);

    const int qoh = columnOf(g, "QOH");
    headerClick(form, qoh);
    for (int r = 2; r < g.Rows(); ++r)
        ASSERT_LE(g.TextMatrix(r - 1, qoh).toDouble(), g.TextMatrix(r, qoh).toDouble()) << r;

    // On SL, "=" asks for the item number itself.
    const int sl = columnOf(g, "SL");
    headerClick(form, sl);
    const QString target = g.TextMatrix(g.Rows() - 3, sl).trimmed();
    edit(form, "Text1")->clear();
    QTest::keyClicks(edit(form, "Text1"), QLatin1Char('=') + target);
    EXPECT_EQ(g.TextMatrix(g.Row(), sl).trimmed(), target);
    EXPECT_TRUE(boxes.shown().isEmpty()) << boxes.texts().join(QLatin1Char('\n')).toStdString();
}

TEST_F(DataLookupWindow, QuantitiesEnteredOverTheCellAreHandedBackOnAccept)
{
    frmDataLookup form(5, QStringLiteral("OPEN"));
    form.show();
    FlexGrid &g = *grid(form);
    const int sl = columnOf(g, "SL");
    g.setRow(3);
    quantityType(form, QStringLiteral("4"));
    EXPECT_EQ(g.TextMatrix(3, 0), QStringLiteral("4"));
    EXPECT_FALSE(edit(form, "txtText")->isVisible());

    g.setRow(7);
    QTest::keyClick(list(form), Qt::Key_2); // a digit opens the cell with it
    QTest::keyClick(edit(form, "txtText"), Qt::Key_Return);
    EXPECT_EQ(g.TextMatrix(7, 0), QStringLiteral("2"));

    // Not a number: told, and the cell stays open; "0" then clears the row's quantity.
    g.setRow(9);
    quantityType(form, QStringLiteral("4"));
    QTest::keyClick(list(form), Qt::Key_Return);
    QLineEdit *cell = edit(form, "txtText");
    cell->clear();
    QTest::keyClicks(cell, QStringLiteral("two"));
    QTest::keyClick(cell, Qt::Key_Return);
    EXPECT_EQ(boxes.texts(), strings({"Please insert a quantity number in this field or leave blank."}));
    EXPECT_TRUE(cell->isVisible());
    cell->clear();
    QTest::keyClicks(cell, QStringLiteral("0"));
    QTest::keyClick(cell, Qt::Key_Return);
    EXPECT_TRUE(g.TextMatrix(9, 0).isEmpty());

    QTest::keyClick(list(form), Qt::Key_F10);
    EXPECT_EQ(form.result(), QDialog::Accepted);
    ASSERT_EQ(gaLookupEntries.size(), 2);
    EXPECT_EQ(gaLookupEntries[0].sSL, gfsItemID_key(g.TextMatrix(3, sl)));
    EXPECT_EQ(gaLookupEntries[0].sQty, QStringLiteral("4"));
    EXPECT_EQ(gaLookupEntries[1].sSL, gfsItemID_key(g.TextMatrix(7, sl)));
}

TEST_F(DataLookupWindow, CancelHandsBackNothingAndAnUnknownVendorIsTold)
{
    {
        frmDataLookup form(5, QStringLiteral("OPEN"));
        form.show();
        grid(form)->setRow(2);
        quantityType(form, QStringLiteral("1"));
        QTest::keyClick(list(form), Qt::Key_Escape);
        EXPECT_EQ(form.result(), QDialog::Rejected);
        EXPECT_TRUE(gaLookupEntries.isEmpty());
    }
    frmDataLookup form(5, QStringLiteral("NO'SUCH"));
    form.show();
    EXPECT_EQ(grid(form)->Rows(), 1);
    EXPECT_EQ(columnOf(*grid(form), "Vendor"), -1);
    EXPECT_EQ(boxes.texts(), strings({"No matching Items found"}));
    QTest::keyClick(list(form), Qt::Key_F10);
    EXPECT_TRUE(gaLookupEntries.isEmpty());
}

TEST_F(DataLookupWindow, ModeZeroListsTheDepartmentsAndHandsBackTheChosenCode)
{
    frmDataLookup form(0);
    form.show();
    FlexGrid &g = *grid(form);
    EXPECT_EQ(g.TextMatrix(0, 0), QStringLiteral("Dept. Code"));
    EXPECT_EQ(g.TextMatrix(0, 1), QStringLiteral("Department"));
    EXPECT_EQ(g.Rows() - 1, gfiDB_RecordCount(kDeptTable));
    const QString code = g.TextMatrix(g.Rows() - 1, 0);
    QTest::keyClicks(edit(form, "Text1"), code);
    EXPECT_EQ(g.TextMatrix(g.Row(), 0), code);
    QTest::keyClick(list(form), Qt::Key_Return);
    EXPECT_EQ(form.result(), QDialog::Accepted);
    EXPECT_EQ(form.sLookupResult, code);
    EXPECT_TRUE(boxes.shown().isEmpty());
}

TEST_F(DataLookupWindow, VendorModesTellAMissingTableAndOtherwiseListAndHandBack)
{
    {
        frmDataLookup form(3);
        form.show();
        EXPECT_EQ(grid(form)->Rows(), 1);
        ASSERT_EQ(boxes.shown().size(), 1);
        EXPECT_TRUE(boxes.texts()[0].contains(QStringLiteral("VENDORS"))) << boxes.texts()[0].toStdString();
        QTest::keyClick(list(form), Qt::Key_F10);
        EXPECT_TRUE(form.sLookupResult.isEmpty());
    }
    boxes.clear();
    ASSERT_TRUE(dbConnection().execute(QStringLiteral("CREATE TABLE VENDORS (VendorCode CHAR (15), APCode CHAR (10), Business CHAR (30), "
                                           "LastName CHAR (20))")));
    ASSERT_TRUE(dbConnection().execute(QStringLiteral("CREATE TABLE ITEMVENDORS (Recordnum INTEGER, VendorCode CHAR (15), APCode CHAR (10), "
                                           "VendorItemID CHAR (25), Cost DECIMAL (18,4))")));
    gfiDB_Execute(QStringLiteral("INSERT INTO VENDORS VALUES ('ACME','AP1','Acme Tools','Smith')"));
    gfiDB_Execute(QStringLiteral("INSERT INTO VENDORS VALUES ('ZED','AP3','Zed Bolts','Zed')"));
    ASSERT_EQ(gfiDB_Execute(QStringLiteral("INSERT INTO ITEMVENDORS SELECT RecordNum,'ZED','AP3',ItemID,Cost FROM %1 WHERE "
                                           "RecordNum IN (SELECT MIN(RecordNum) FROM %1 UNION SELECT MAX(RecordNum) FROM %1 "
                                           "UNION SELECT MAX(RecordNum) - 1 FROM %1)")
                                 .arg(dbuaTable[kInventoryTable].sSqlFile)),
              3);
    {
        frmDataLookup form(3);
        form.show();
        FlexGrid &g = *grid(form);
        EXPECT_EQ(g.TextMatrix(0, 2), QStringLiteral("Vendor Name"));
        ASSERT_EQ(g.Rows(), 3);
        QTest::keyClicks(edit(form, "Text1"), QStringLiteral("ze"));
        QTest::keyClick(list(form), Qt::Key_Return);
        EXPECT_EQ(form.sLookupResult, QStringLiteral("ZED"));
    }
    frmDataLookup form(2, QStringLiteral("AP3"));
    form.show();
    FlexGrid &g = *grid(form);
    ASSERT_EQ(g.Rows(), 4);
    g.setRow(2);
    quantityType(form, QStringLiteral("6"));
    QTest::keyClick(list(form), Qt::Key_F10);
    ASSERT_EQ(gaLookupEntries.size(), 1);
    EXPECT_EQ(gaLookupEntries[0].sSL, gfsItemID_key(g.TextMatrix(2, columnOf(g, "SL"))));
    EXPECT_EQ(gaLookupEntries[0].sQty, QStringLiteral("6"));
    EXPECT_TRUE(boxes.shown().isEmpty()) << boxes.texts().join(QLatin1Char('|')).toStdString();
}
