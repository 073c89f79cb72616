// The columns list writes and import reads: the forms both sides must agree on.
#include "common/Csv.h"
#include "promo/PromoColumns.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

using namespace qln;

TEST(PromoColumns, DatesAndAmountsReadOnlyInTheirOneForm)
{
    EXPECT_EQ(gfdPromoColumns_date(QStringLiteral("2026-02-28")), QDate(2026, 2, 28));
    EXPECT_EQ(gfdPromoColumns_date(QStringLiteral("2028-02-29")), QDate(2028, 2, 29));
    for (const char *bad : {"2026-02-31", "2026-02-29", "31/02/2026", "2026-2-3", "2026-02-03 ", "20260203", "", "2026-13-01"})
        EXPECT_EQ(gfdPromoColumns_date(QString::fromLatin1(bad)), std::nullopt) << bad;
    EXPECT_EQ(gfsPromoColumns_date(QDateTime(QDate(2026, 1, 5), QTime(0, 0))), QStringLiteral("2026-01-05"));

    EXPECT_EQ(gfcPromoColumns_money(QStringLiteral("8.4915")), Money::fromUnits(84915));
    EXPECT_EQ(gfcPromoColumns_money(QStringLiteral("-0.5")), Money::fromUnits(-5000));
    EXPECT_EQ(gfcPromoColumns_money(QStringLiteral("25")), Money::fromWhole(25));
    for (const char *bad : {"8.49151", "8,49", "1,000.00", "1e3", ".5", "5.", "", " 5", "+5", "abc"})
        EXPECT_EQ(gfcPromoColumns_money(QString::fromLatin1(bad)), std::nullopt) << bad;
    for (qint64 units : {0LL, 1LL, 84915LL, -5000LL, 250000LL, 123456789012LL})
        EXPECT_EQ(gfcPromoColumns_money(gfsPromoColumns_money(Money::fromUnits(units))), Money::fromUnits(units)) << units;
}

TEST(PromoColumns, CsvQuotesOnlyWhatNeedsItAndEndsLinesInCrLf)
{
    EXPECT_EQ(gfsCsv_line({QStringLiteral("a"), QString(), QStringLiteral("Crème brûlée")}),
              QStringLiteral("a,,Crème brûlée\r\n"));
    EXPECT_EQ(gfsCsv_line({QStringLiteral("1,5"), QStringLiteral("say \"hi\""), QStringLiteral("two\r\nlines")}),
              QStringLiteral("\"1,5\",\"say \"\"hi\"\"\",\"two\r\nlines\"\r\n"));
    EXPECT_EQ(gfsCsv_line(gfPromoColumns_names()),
              QStringLiteral("Kind,Store,SL,Dept,GroupID,StartDate,EndDate,ChangeType,PriceChange,PromoPrice,Poll,UniqueID\r\n"));
}

TEST(PromoColumns, ARowInCsvCellsAndJson)
{
    PromoPriceRecord p;
    p.Store = 3, p.SL = QStringLiteral("10000007"), p.Dept = QStringLiteral("           "), p.GroupID = 12;
    p.StartDate = QDateTime(QDate(2026, 5, 10), QTime(0, 0)), p.EndDate = QDateTime(QDate(2026, 5, 20), QTime(0, 0));
    p.ChangeType = kChangeByPercent, p.PriceChange = Money::fromWhole(15), p.Poll = QStringLiteral(" "), p.UniqueID = 41;
    const QStringList cells = gfPromoColumns_cells(p, PromoKind::Group, Money::fromUnits(84915));
    EXPECT_EQ(cells.join(QLatin1Char('|')), QStringLiteral("group|3|10000007||12|2026-05-10|2026-05-20|2|15|8.4915||41"));

    const QJsonObject object = QJsonDocument::fromJson(gfsPromoColumns_json_object(cells).toUtf8()).object();
    EXPECT_EQ(object.keys().size(), kPromoColumnCount);
    EXPECT_EQ(object.value(QStringLiteral("PriceChange")), QJsonValue(QStringLiteral("15")));
    EXPECT_EQ(object.value(QStringLiteral("PromoPrice")), QJsonValue(QStringLiteral("8.4915")));
    EXPECT_EQ(object.value(QStringLiteral("GroupID")), QJsonValue(12));
    EXPECT_EQ(object.value(QStringLiteral("SL")), QJsonValue(QStringLiteral("10000007")));

    QStringList odd = gfPromoColumns_cells(p, PromoKind::Group, std::nullopt);
    odd[2] = QStringLiteral("\"\\\n\x01ü");
    const QByteArray json = gfsPromoColumns_json_object(odd).toUtf8();
    QJsonParseError error;
    const QJsonObject back = QJsonDocument::fromJson(json, &error).object();
    ASSERT_EQ(error.error, QJsonParseError::NoError) << json.constData();
    EXPECT_EQ(back.value(QStringLiteral("SL")).toString(), odd[2]);
    EXPECT_TRUE(back.value(QStringLiteral("PromoPrice")).isNull());
}
