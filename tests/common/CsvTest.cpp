#include "common/Csv.h"

#include <gtest/gtest.h>

using namespace qln;

namespace {

QStringList fields(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *t : texts)
        list << QString::fromUtf8(t);
    return list;
}

} // namespace

TEST(Csv, SpreadsheetFormsReadAlike)
{
    // A mark at the start, CR LF, LF and a last line without an end all give the same records.
    for (const QByteArray &text : {QByteArray("\xEF\xBB\xBF" "a,b\r\n1,2\r\n"), QByteArray("a,b\n1,2\n"), QByteArray("a,b\r\n1,2")}) {
        const CsvText csv = gfCsv_read(text);
        ASSERT_EQ(csv.records.size(), 2) << text.toStdString();
        EXPECT_EQ(csv.records[0].fields, fields({"a", "b"}));
        EXPECT_EQ(csv.records[1].fields, fields({"1", "2"}));
        EXPECT_EQ(csv.records[1].line, 2);
        EXPECT_TRUE(csv.problems.isEmpty());
    }
}

TEST(Csv, QuotedFieldsKeepCommasQuotesAndLineBreaksAndLinesStayCounted)
{
    const CsvText csv = gfCsv_read("k,v\r\n\"a,b\",\"say \"\"hi\"\"\"\r\n\"two\r\nlines\",x\r\n\r\n,\r\nlast,\"Café Zürich\"\r\n");
    ASSERT_TRUE(csv.problems.isEmpty());
    ASSERT_EQ(csv.records.size(), 5);
    EXPECT_EQ(csv.records[1].fields, fields({"a,b", "say \"hi\""}));
    EXPECT_EQ(csv.records[2].fields, fields({"two\r\nlines", "x"}));
    EXPECT_EQ(csv.records[2].line, 3);
    // The quoted line break and the blank line both count: the blank record starts on line 6.
    EXPECT_EQ(csv.records[3].line, 6);
    EXPECT_EQ(csv.records[3].fields, fields({"", ""}));
    EXPECT_EQ(csv.records[4].line, 7);
    EXPECT_EQ(csv.records[4].fields, fields({"last", "Café Zürich"}));
}

TEST(Csv, EachBadLineIsNamedAndTheRestStillReads)
{
    const CsvText csv = gfCsv_read("h\r\nab\"c,1\r\nok\r\n\"x\"y,2\r\nbad \xFF\xFE,3\r\nalso ok\r\n\"never\r\nends,4\r\n");
    ASSERT_EQ(csv.problems.size(), 4);
    EXPECT_EQ(csv.problems[0].line, 2);
    EXPECT_EQ(csv.problems[0].text, QStringLiteral("field 1 holds a quote but is not in quotes"));
    EXPECT_EQ(csv.problems[1].line, 4);
    EXPECT_EQ(csv.problems[1].text, QStringLiteral("text follows the closing quote of a field"));
    EXPECT_EQ(csv.problems[2].line, 5);
    EXPECT_EQ(csv.problems[2].text, QStringLiteral("field 1 is not UTF-8 text"));
    EXPECT_EQ(csv.problems[3].line, 7);
    EXPECT_EQ(csv.problems[3].text, QStringLiteral("a quoted field opened on line 7 never closes"));
    ASSERT_EQ(csv.records.size(), 3);
    EXPECT_EQ(csv.records[1].line, 3);
    EXPECT_EQ(csv.records[2].line, 6);
}

TEST(Csv, ATenMegabyteLineReadsWhole)
{
    const QByteArray big(10 * 1024 * 1024, 'x');
    const CsvText csv = gfCsv_read("a,b\r\n" + big + ",\"" + big + "\"\r\nnext,1\r\n");
    ASSERT_EQ(csv.records.size(), 3);
    EXPECT_EQ(csv.records[1].fields[0].size(), big.size());
    EXPECT_EQ(csv.records[1].fields[1].size(), big.size());
    EXPECT_EQ(csv.records[2].line, 3);
}

TEST(Csv, WrittenLinesReadBackToTheSameFields)
{
    const QStringList tricky = fields({"plain", "a,b", "say \"hi\"", "two\r\nlines", " padded ", "", "Ærø ñ 日本"});
    const QByteArray line = gfsCsv_line(tricky).toUtf8();
    EXPECT_TRUE(line.endsWith("\r\n"));
    EXPECT_TRUE(line.startsWith("plain,\"a,b\",\"say \"\"hi\"\"\","));
    const CsvText csv = gfCsv_read(line + gfsCsv_line({QStringLiteral("after")}).toUtf8());
    ASSERT_EQ(csv.records.size(), 2);
    EXPECT_EQ(csv.records[0].fields, tricky);
    EXPECT_EQ(csv.records[1].line, 3);
}
