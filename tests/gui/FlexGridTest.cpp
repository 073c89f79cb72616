#include "lookup/FGrid.h"

#include "common/FormLook.h"
#include "lookup/FlexGrid.h"

#include "support/QtPrinters.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>
#include <cmath>
#include <gtest/gtest.h>

using namespace qln;

namespace {

QString s(const char *text) { return QString::fromUtf8(text); }

// A grid of one column per text, one row per entry, under a header row "H0", "H1", ...
void fill(FlexGrid &grid, const QList<QStringList> &rows)
{
    grid.setCols(int(rows.first().size()));
    grid.setRows(1);
    for (int c = 0; c < grid.Cols(); ++c)
        grid.setTextMatrix(0, c, QStringLiteral("H%1").arg(c));
    for (const QStringList &row : rows)
        grid.AddItem(row.join(QLatin1Char('\t')));
}

QStringList column(const FlexGrid &grid, int col)
{
    QStringList out;
    for (int r = 0; r < grid.Rows(); ++r)
        out << grid.TextMatrix(r, col);
    return out;
}

QStringList sorted(const QStringList &cells, int code)
{
    FlexGrid grid;
    QList<QStringList> rows;
    for (int i = 0; i < cells.size(); ++i)
        rows << QStringList{cells[i], QString::number(i)};
    fill(grid, rows);
    gpGrid_SortColumn(grid, 0, code);
    return column(grid, 0).mid(1);
}

QRect cellRect(const FlexGrid &grid, int row, int col)
{
    return grid.view()->visualRect(grid.view()->model()->index(row - grid.FixedRows(), col));
}

class ShownGrid : public ::testing::Test {
protected:
    void SetUp() override
    {
        grid.resize(600, 300);
        grid.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&grid));
    }
    FlexGrid grid;
    QAbstractItemModelTester tester{grid.view()->model(), QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace

TEST(FlexGridSort, NumericTextAndCaseInsensitiveOrders)
{
    const QStringList numbers{s("10"), s("9"), s("100"), s("-1.5"), s("abc"), s("2x")};
    EXPECT_EQ(sorted(numbers, flexSortNumericAscending),
              (QStringList{s("-1.5"), s("abc"), s("2x"), s("9"), s("10"), s("100")}));
    EXPECT_EQ(sorted(numbers, flexSortNumericDescending),
              (QStringList{s("100"), s("10"), s("9"), s("2x"), s("abc"), s("-1.5")}));
    EXPECT_EQ(sorted(numbers, flexSortGenericAscending),
              (QStringList{s("-1.5"), s("9"), s("10"), s("100"), s("2x"), s("abc")}));

    const QStringList names{s("banana"), s("Apple"), s("cherry"), s("apple"), s("Banana")};
    EXPECT_EQ(sorted(names, flexSortStringNoCaseAscending),
              (QStringList{s("Apple"), s("apple"), s("banana"), s("Banana"), s("cherry")}));
    EXPECT_EQ(sorted(names, flexSortStringNoCaseDescending),
              (QStringList{s("cherry"), s("banana"), s("Banana"), s("Apple"), s("apple")}));
    EXPECT_EQ(sorted(names, flexSortStringAscending),
              (QStringList{s("Apple"), s("Banana"), s("apple"), s("banana"), s("cherry")}));
    EXPECT_EQ(sorted(names, flexSortStringDescending),
              (QStringList{s("cherry"), s("banana"), s("apple"), s("Banana"), s("Apple")}));
}

TEST(FlexGridSort, RowsMoveWholeOnAHiddenKeyAndTheHeaderStays)
{
    FlexGrid grid;
    fill(grid, {{s("12/01/2026"), s("B"), s("20261201")},
                {s("01/15/2027"), s("C"), s("20270115")},
                {s("11/30/2026"), s("A"), s("20261130")}});
    grid.setColWidth(2, 0);
    grid.setRow(1);
    grid.setCellBackColor(0x00FF00);
    gpGrid_SortColumn(grid, 2, flexSortGenericAscending);
    EXPECT_EQ(column(grid, 0), (QStringList{s("H0"), s("11/30/2026"), s("12/01/2026"), s("01/15/2027")}));
    EXPECT_EQ(column(grid, 1), (QStringList{s("H1"), s("A"), s("B"), s("C")}));
    grid.setRow(2);
    grid.setCol(0);
    EXPECT_EQ(grid.CellBackColor(), 0x00FF00u);

    // A selection that reaches into the header sorts only the rows below it.
    grid.setRow(0);
    grid.setRowSel(3);
    grid.setCol(1);
    grid.setSort(flexSortStringDescending);
    EXPECT_EQ(column(grid, 1), (QStringList{s("H1"), s("C"), s("B"), s("A")}));
}

TEST_F(ShownGrid, HiddenColumnsKeepTheirWidthOfZeroThroughReshaping)
{
    fill(grid, {{s("a"), s("b"), s("c")}});
    grid.setColWidth(0, 900);
    grid.setColWidth(1, 0);
    EXPECT_TRUE(grid.view()->isColumnHidden(1));
    EXPECT_EQ(grid.view()->columnWidth(0), gfiTwips_toPixels(900, &grid));
    grid.setCols(4);
    EXPECT_TRUE(grid.view()->isColumnHidden(1));
    EXPECT_EQ(grid.ColWidth(1), 0);
    EXPECT_EQ(grid.view()->columnWidth(0), gfiTwips_toPixels(900, &grid));
    grid.setColWidth(1, 450);
    EXPECT_FALSE(grid.view()->isColumnHidden(1));
    EXPECT_EQ(grid.view()->columnWidth(1), gfiTwips_toPixels(450, &grid));
    EXPECT_EQ(grid.view()->model()->headerData(2, Qt::Horizontal).toString(), s("H2"));
}

TEST(FlexGridLayout, FitColumnsScalesToTheWidthLessTheChrome)
{
    QWidget window;
    FlexGrid grid(&window);
    grid.setCols(3);
    grid.resize(400, 100);
    const int width = grid.Width();
    grid.setColWidth(0, 2000);
    grid.setColWidth(1, width - 2300);
    grid.setColWidth(2, 0);
    gpGrid_FitColumns(grid);
    EXPECT_EQ(gfiGrid_TotalWidth(grid), width - 300);

    grid.setColWidth(0, 1000);
    grid.setColWidth(1, 2000);
    gpGrid_FitColumns(grid);
    EXPECT_EQ(grid.ColWidth(0), int(std::nearbyint(1000.0 * width / 3300)));
    EXPECT_EQ(grid.ColWidth(1), int(std::nearbyint(2000.0 * width / 3300)));
    EXPECT_EQ(grid.ColWidth(2), 0);

    // Halves go to the even neighbour, as the platform's conversion rounds: a quarter of
    // 6 and of 234 twips.
    grid.resize(10, 100);
    ASSERT_EQ(grid.Width(), 135);
    grid.setColWidth(0, 6);
    grid.setColWidth(1, 234);
    gpGrid_FitColumns(grid);
    EXPECT_EQ(grid.ColWidth(0), 2);
    EXPECT_EQ(grid.ColWidth(1), 58);
}

TEST(FlexGridLayout, LastColumnOnPageRepeatsColumnZeroAndAlwaysTakesOne)
{
    FlexGrid grid;
    grid.setCols(7);
    const int widths[] = {800, 2200, 825, 935, 1000, 0, 900};
    for (int c = 0; c < 7; ++c)
        grid.setColWidth(c, widths[c]);
    EXPECT_EQ(gfiGrid_LastColumnOnPage(grid, 4000, 0), 2);
    EXPECT_EQ(gfiGrid_LastColumnOnPage(grid, 2735, 3), 5);
    EXPECT_EQ(gfiGrid_LastColumnOnPage(grid, 10000, 3), 6);
    EXPECT_EQ(gfiGrid_LastColumnOnPage(grid, 1000, 1), 1);
}

TEST_F(ShownGrid, AddRowReusesTheBlankRowAndRedrawOffDefersTheView)
{
    grid.setCols(3);
    int count = 0;
    gpGrid_AddRow(grid, count);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(grid.Rows(), 2);
    gpGrid_AddRow(grid, count);
    EXPECT_EQ(grid.Rows(), 3);

    QAbstractItemModel *model = grid.view()->model();
    QSignalSpy resets(model, &QAbstractItemModel::modelReset);
    QSignalSpy inserts(model, &QAbstractItemModel::rowsInserted);
    QSignalSpy changes(model, &QAbstractItemModel::dataChanged);
    grid.setRedraw(false);
    for (int i = 0; i < 5; ++i) {
        gpGrid_AddRow(grid, count);
        grid.setTextMatrix(grid.Rows() - 1, 0, QString::number(i));
    }
    EXPECT_EQ(model->rowCount(), 2);
    EXPECT_EQ(resets.count() + inserts.count() + changes.count(), 0);
    grid.setRedraw(true);
    EXPECT_EQ(resets.count(), 1);
    EXPECT_EQ(model->rowCount(), 7);
    EXPECT_EQ(model->index(6, 0).data().toString(), s("4"));

    grid.AddItem(s("x\ty"));
    EXPECT_EQ(inserts.count(), 1);
    EXPECT_EQ(resets.count(), 1);
    EXPECT_EQ(model->index(7, 1).data().toString(), s("y"));
}

TEST_F(ShownGrid, AClickOnADataRowSelectsTheWholeRow)
{
    fill(grid, {{s("1"), s("a"), s("x")}, {s("2"), s("b"), s("y")}, {s("3"), s("c"), s("z")}});
    grid.setColWidth(0, 0);
    QSignalSpy clicks(&grid, &FlexGrid::cellClicked);
    QTest::mouseClick(grid.view()->viewport(), Qt::LeftButton, {}, cellRect(grid, 2, 1).center());
    EXPECT_EQ(grid.Row(), 2);
    EXPECT_EQ(grid.RowSel(), 2);
    EXPECT_EQ(grid.Col(), 0);
    EXPECT_EQ(grid.ColSel(), 2);
    ASSERT_EQ(clicks.count(), 1);
    EXPECT_EQ(clicks[0], (QList<QVariant>{2, 1}));
    EXPECT_TRUE(grid.view()->model()->index(1, 2).data(Qt::BackgroundRole).isValid());
    EXPECT_FALSE(grid.view()->model()->index(0, 2).data(Qt::BackgroundRole).isValid());

    QTest::keyClick(grid.view(), Qt::Key_Down);
    EXPECT_EQ(grid.Row(), 3);
    QTest::keyClick(grid.view(), Qt::Key_Down);
    EXPECT_EQ(grid.Row(), 3);

    QHeaderView *header = grid.view()->horizontalHeader();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      QPoint(header->sectionViewportPosition(2) + 5, header->height() / 2));
    EXPECT_EQ(clicks.last(), (QList<QVariant>{0, 2}));
    EXPECT_EQ(grid.Row(), 3);

    gpGrid_SelectRow(grid, 1);
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_EQ(grid.ColSel(), 2);
}

TEST_F(ShownGrid, GoTopAndShowRowScrollOnlyWhenThereAreRows)
{
    grid.setCols(3);
    grid.setRows(1);
    grid.setRow(0);
    gpGrid_GoTop(grid, 2);
    gpGrid_ShowRow(grid, 2);
    EXPECT_EQ(grid.Row(), 0);
    EXPECT_EQ(grid.HighLight(), 1);

    grid.setRows(201);
    gpGrid_GoTop(grid, 2);
    EXPECT_EQ(grid.TopRow(), 1);
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_EQ(grid.ColSel(), 2);
    EXPECT_EQ(grid.HighLight(), 0);

    grid.setRow(150);
    EXPECT_FALSE(grid.RowIsVisible(150));
    gpGrid_ShowRow(grid, 2);
    EXPECT_EQ(grid.TopRow(), 150);
    EXPECT_EQ(grid.Col(), 1);
    EXPECT_EQ(grid.ColSel(), 2);
    EXPECT_EQ(grid.HighLight(), 0);
    grid.setRow(152);
    gpGrid_ShowRow(grid, 2);
    EXPECT_EQ(grid.TopRow(), 150);
}

TEST_F(ShownGrid, HeaderTurnsBoldAndTheSortColumnStandsOut)
{
    fill(grid, {{s("1"), s("a"), s("x")}, {s("2"), s("b"), s("y")}});
    grid.setFillStyle(0);
    gpGrid_BoldHeader(grid);
    QAbstractItemModel *model = grid.view()->model();
    for (int c = 0; c < 3; ++c)
        EXPECT_TRUE(model->headerData(c, Qt::Horizontal, Qt::FontRole).value<QFont>().bold()) << c;
    EXPECT_FALSE(model->index(0, 0).data(Qt::FontRole).isValid());
    EXPECT_EQ(grid.FillStyle(), 0);
    EXPECT_FALSE(grid.AllowBigSelection());
    EXPECT_EQ(grid.Row(), 1);

    gpGrid_HeaderHighlight(grid, 1);
    EXPECT_EQ(grid.Row(), 1);
    grid.setRow(0);
    grid.setCol(1);
    EXPECT_EQ(grid.CellBackColor(), 0x80000003u);
    EXPECT_EQ(grid.CellForeColor(), 0xFFFFFFu);
    EXPECT_EQ(grid.CellFontSize(), 8.0);
    grid.setCol(2);
    EXPECT_EQ(grid.CellBackColor(), 0x8000000Au);
    EXPECT_EQ(grid.CellFontSize(), 10.0);
    EXPECT_EQ(model->headerData(1, Qt::Horizontal, Qt::BackgroundRole).value<QBrush>().color(),
              grid.view()->palette().color(QPalette::Highlight));
}

TEST(FlexGridVolume, HoldsAHundredThousandRowsOfTenColumns)
{
    FlexGrid grid;
    grid.resize(800, 600);
    grid.show();
    grid.setCols(10);
    grid.setRedraw(false);
    int count = 0;
    for (int r = 1; r <= 100000; ++r) {
        gpGrid_AddRow(grid, count);
        for (int c = 0; c < 10; ++c)
            grid.setTextMatrix(r, c, QString::number((r * 7919 + c) % 100003));
    }
    grid.setRedraw(true);
    EXPECT_EQ(grid.Rows(), 100001);
    EXPECT_EQ(grid.view()->model()->rowCount(), 100000);
    gpGrid_SortColumn(grid, 3, flexSortNumericAscending);
    int unordered = 0;
    for (int r = 2; r < grid.Rows(); ++r)
        unordered += grid.TextMatrix(r - 1, 3).toInt() > grid.TextMatrix(r, 3).toInt();
    EXPECT_EQ(unordered, 0);
    EXPECT_EQ(grid.TextMatrix(50000, 4).toInt(), grid.TextMatrix(50000, 3).toInt() + 1);
    grid.setTopRow(99990);
    EXPECT_TRUE(grid.RowIsVisible(99995));
}
