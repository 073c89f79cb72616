// The window-free half of list printing: header and footer joins, the table text made from a
// grid, its pages, find, and the CSV file.
#include "output/PrintPages.h"
#include "output/PrintState.h"
#include "output/PrintTable.h"

#include "support/QtPrinters.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace qln;

namespace {

// A grid as plain data: row 0 is the header.
class Table final : public PrintGridSource {
public:
    Table(std::vector<QStringList> cells, std::vector<int> widths, std::vector<int> aligns = {}, int fixedCols = 0)
        : m_cells(std::move(cells)), m_widths(std::move(widths)), m_aligns(std::move(aligns)), m_fixedCols(fixedCols)
    {
    }
    int rows() const override { return int(m_cells.size()); }
    int cols() const override { return int(m_widths.size()); }
    int fixedRows() const override { return 1; }
    int fixedCols() const override { return m_fixedCols; }
    QString text(int row, int col) const override { return m_cells[size_t(row)].value(col); }
    int colWidth(int col) const override { return m_widths[size_t(col)]; }
    int colAlignment(int col) const override { return m_aligns.empty() ? 9 : m_aligns[size_t(col)]; }

private:
    std::vector<QStringList> m_cells;
    std::vector<int> m_widths;
    std::vector<int> m_aligns;
    int m_fixedCols;
};

void setParts(const char *left, const char *title, const char *date)
{
    sPrintHeadLeft = QString::fromUtf8(left), sPrintTitle = QString::fromUtf8(title), sPrintHeadRight = QString::fromUtf8(date);
}
void setFoot(const char *left, const char *centre, const char *right)
{
    sPrintFootLeft = QString::fromUtf8(left), sPrintFootCentre = QString::fromUtf8(centre), sPrintFootRight = QString::fromUtf8(right);
}

TEST(PrintHeadFoot, PartsJoinAsKeptWithThePageGluedToTheCentre)
{
    setParts("Corner Shop", "Promos", "11/22/2026");
    EXPECT_EQ(gfsPrint_Header(), QStringLiteral("Corner Shop|Promos|11/22/2026"));
    setParts("Corner Shop", "  ", "11/22/2026");
    EXPECT_EQ(gfsPrint_Header(), QStringLiteral("Corner Shop||11/22/2026"));
    setParts("Corner Shop", "Promos", " ");
    EXPECT_EQ(gfsPrint_Header(), QStringLiteral("Corner Shop|Promos"));

    setFoot("", "Store #1", "");
    EXPECT_EQ(gfsPrint_Footer(), QStringLiteral("|Store #1Page %d"));
    setFoot("x", "Store #1", "Right");
    EXPECT_EQ(gfsPrint_Footer(), QStringLiteral("x|Store #1|Right"));
    setFoot("", "", "");
    EXPECT_EQ(gfsPrint_Footer(), QStringLiteral("|Page %d"));
}

TEST(PrintHeadFoot, AHeadReplacesEveryPartOfTheLastPrint)
{
    setFoot("old", "old", "old");
    bPrintSplitColumns = true;
    gpPrint_head_set({QStringLiteral("Promos"), QStringLiteral("All Dates"), QStringLiteral("Corner Shop"), QStringLiteral("Store #4")});
    EXPECT_EQ(sPrintHeadLeft, QStringLiteral("Corner Shop"));
    EXPECT_EQ(sPrintTitle, QStringLiteral("Promos"));
    EXPECT_FALSE(sPrintHeadRight.isEmpty());
    EXPECT_EQ(gfsPrint_Footer(), QStringLiteral("|Store #4Page %d"));
    EXPECT_EQ(gsaPrint_HeadLines, QStringList{QStringLiteral("All Dates")});
    EXPECT_FALSE(bPrintSplitColumns);
    gpPrint_head_set({QStringLiteral("Internal Use Codes"), QString(), QString(), QString()});
    EXPECT_TRUE(gsaPrint_HeadLines.isEmpty());
}

TEST(PrintTableText, HiddenColumnsDropOutAndWidthsFillThePage)
{
    const Table grid({strings({"S/L", "Key", " Description ", "Price"}), strings({"1000000.7", "20250101", " Milk ", "1.25"}),
                      strings({"1000001.5", "20250102", "Bread", "2.50"})},
                     {1000, 0, 2000, 1000}, {1, 1, 4, 7});
    const std::vector<int> columns = gfPrint_PageColumns(grid, 0, 3);
    EXPECT_EQ(columns, (std::vector<int>{0, 2, 3}));
    EXPECT_EQ(gfsPrint_ColumnFormat(grid, columns, -1, 8000), QStringLiteral("<2000|^4000|>2000\n"));
    EXPECT_EQ(gfsPrint_ColumnFormat(grid, columns, 0, 8000), QStringLiteral("<1000|^4000|>2000\n"));
    EXPECT_EQ(gfsPrint_HeadRow(grid, columns), QStringLiteral("S/L|Description|Price\n"));
    // Trimmed cells, no gap where the key was, and no row end after the last row.
    EXPECT_EQ(gfsPrint_Body(grid, columns), QStringLiteral("1000000.7|Milk|1.25\n1000001.5|Bread|2.50"));
}

TEST(PrintTableText, SplitPagesRepeatTheFixedColumns)
{
    const Table grid({strings({"S/L", "A", "B", "C"}), strings({"1", "a", "b", "c"})}, {1000, 3000, 3000, 3000}, {}, 1);
    EXPECT_EQ(gfiPrint_FixedWidth(grid), 1000);
    EXPECT_EQ(gfiPrint_TotalWidth(grid), 10000);
    const int last = gfiGrid_LastColumnOnPage(grid, 1, 7500);
    EXPECT_EQ(last, 2);
    EXPECT_EQ(gfPrint_PageColumns(grid, 1, last), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(gfiGrid_LastColumnOnPage(grid, 3, 7500), 3);
    EXPECT_EQ(gfsPrint_Body(grid, gfPrint_PageColumns(grid, 3, 3)), QStringLiteral("1|c"));
    // A single column wider than the page still gets a page of its own.
    EXPECT_EQ(gfiGrid_LastColumnOnPage(grid, 1, 2000), 1);
}

TEST(PrintTableText, BarsAndLineFeedsInCellsSplitAsTheTableTextSays)
{
    const PrintTable table(QStringLiteral("<1000|<1000\n"), QStringLiteral("A|B\n"), QStringLiteral("a|b|extra\nc\nd|e"));
    ASSERT_EQ(table.rowCount(), 3);
    EXPECT_EQ(table.row(0).mid(0, 2), strings({"a", "b"}));
    EXPECT_EQ(table.row(1), strings({"c", ""}));
    EXPECT_EQ(table.row(2), strings({"d", "e"}));
    EXPECT_EQ(table.head(), strings({"A", "B"}));
    EXPECT_EQ(table.width(), 2000);
    EXPECT_EQ(PrintTable(QStringLiteral("<1000\n"), QStringLiteral("A\n"), QString()).rowCount(), 0);
    const PrintTable lines = PrintTable::lines(strings({"12 Milk | 2.00", "13 Bread"}), 9000);
    EXPECT_EQ(lines.row(0), strings({"12 Milk | 2.00"}));
}

PrintTable numbered(int rows, const char *prefix)
{
    QStringList body;
    for (int i = 0; i < rows; ++i)
        body << QStringLiteral("%1%2|x").arg(QString::fromLatin1(prefix)).arg(i);
    return PrintTable(QStringLiteral("<1000|<1000\n"), QStringLiteral("N|X\n"), body.join(QLatin1Char('\n')));
}

TEST(PrintPagesAndFind, PagesFollowRowsAndFindMovesThroughThem)
{
    // 10 rows of height 100 under a head row fit on a page of 1100.
    std::vector<PrintTable> tables{numbered(25, "r"), numbered(0, "none"), numbered(3, "s")};
    const std::vector<PrintRowHeights> heights(3, {100, 100});
    const std::vector<PrintPage> pages = gfPrint_Pages(tables, heights, 1100, 0);
    ASSERT_EQ(pages.size(), 5u);
    EXPECT_EQ(pages[2].firstRow, 20);
    EXPECT_EQ(pages[2].rowCount, 5);
    EXPECT_EQ(pages[3].table, 1); // an empty table still has its page
    EXPECT_EQ(pages[3].rowCount, 0);
    EXPECT_EQ(pages[4].table, 2);
    // Head lines take room from every page.
    EXPECT_EQ(gfPrint_Pages(tables, heights, 1100, 500).size(), 7u);
    // So does a header row that wraps.
    EXPECT_EQ(gfPrint_Pages(tables, std::vector<PrintRowHeights>(3, {100, 600}), 1100, 0).size(), 7u);

    std::optional<PrintHit> hit = gfPrint_Find(tables, pages, QStringLiteral("R1"), 0, std::nullopt);
    ASSERT_TRUE(hit);
    EXPECT_EQ(hit->row, 1);
    EXPECT_EQ(hit->page, 0);
    for (int expectedRow : {10, 11, 12}) {
        hit = gfPrint_Find(tables, pages, QStringLiteral("r1"), 0, hit);
        ASSERT_TRUE(hit);
        EXPECT_EQ(hit->row, expectedRow);
        EXPECT_EQ(hit->page, 1);
    }
    // From a later page the search starts there and runs on into the next table.
    hit = gfPrint_Find(tables, pages, QStringLiteral("s2"), 2, std::nullopt);
    ASSERT_TRUE(hit);
    EXPECT_EQ(hit->page, 4);
    EXPECT_EQ(hit->cell, 0);
    hit = gfPrint_Find(tables, pages, QStringLiteral("x"), 0, std::nullopt);
    ASSERT_TRUE(hit);
    EXPECT_EQ(hit->cell, 1);
    EXPECT_EQ(hit->at, 0);
    // Text across two cells is no hit, nor is text before the page searched from.
    EXPECT_FALSE(gfPrint_Find(tables, pages, QStringLiteral("0|x"), 0, std::nullopt));
    EXPECT_FALSE(gfPrint_Find(tables, pages, QStringLiteral("r3"), 4, std::nullopt));
    EXPECT_FALSE(gfPrint_Find(tables, pages, QStringLiteral("zz"), 0, std::nullopt));
}

// The fields of a CSV file, quoted fields unquoted.
std::vector<QStringList> readCsv(const QByteArray &bytes)
{
    std::vector<QStringList> rows(1);
    const QString text = QString::fromUtf8(bytes);
    QString field;
    bool quoted = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (quoted) {
            if (c == QLatin1Char('"') && i + 1 < text.size() && text[i + 1] == QLatin1Char('"'))
                field += c, ++i;
            else if (c == QLatin1Char('"'))
                quoted = false;
            else
                field += c;
        } else if (c == QLatin1Char('"')) {
            quoted = true;
        } else if (c == QLatin1Char(',')) {
            rows.back() << field, field.clear();
        } else if (c == QLatin1Char('\r')) {
            rows.back() << field, field.clear();
            rows.emplace_back();
            ++i;
        } else {
            field += c;
        }
    }
    rows.pop_back();
    return rows;
}

TEST(PrintCsv, HoldsExactlyTheCellsAndRoundTripsQuotesCommasAndLetters)
{
    QTemporaryDir dir;
    const PrintTable table(QStringLiteral("<1|<1|<1\n"), QStringLiteral("S/L|Description|Price\n"),
                           QStringLiteral("1|Crème \"Brûlée\", large|2.50\n2||3"));
    const QString file = dir.filePath(QStringLiteral("list.csv"));
    ASSERT_FALSE(gfsPrint_Csv_write(file, {&table, &table}));
    QFile in(file);
    ASSERT_TRUE(in.open(QIODevice::ReadOnly));
    const QByteArray bytes = in.readAll();
    ASSERT_TRUE(bytes.startsWith("\xEF\xBB\xBF"));
    const std::vector<QStringList> rows = readCsv(bytes.mid(3));
    ASSERT_EQ(rows.size(), 6u);
    EXPECT_EQ(rows[0], strings({"S/L", "Description", "Price"}));
    EXPECT_EQ(rows[1], strings({"1", "Crème \"Brûlée\", large", "2.50"}));
    EXPECT_EQ(rows[2], strings({"2", "", "3"}));
    EXPECT_EQ(rows[3], rows[0]);
}

TEST(PrintCsv, AFolderThatCantBeWrittenGivesTheErrorAndNoFile)
{
    QTemporaryDir dir;
    const QString plainFile = dir.filePath(QStringLiteral("plain"));
    QFile(plainFile).open(QIODevice::WriteOnly);
    const PrintTable table(QStringLiteral("<1\n"), QString(), QStringLiteral("a"));
    for (const QString &file : {dir.filePath(QStringLiteral("missing/x.csv")), plainFile + QStringLiteral("/x.csv")}) {
        const std::optional<QString> error = gfsPrint_Csv_write(file, {&table});
        ASSERT_TRUE(error) << file.toStdString();
        EXPECT_FALSE(error->isEmpty());
    }
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot), strings({"plain"}));
}

} // namespace
