#include "cli/CliVerb.h"
#include "cli/TerminalProgress.h"
#include "cli/TextTable.h"
#include "common/Csv.h"
#include "common/ItemNumber.h"
#include "promo/PromoColumns.h"
#include "promo/PromoList.h"
#include "promo/PromoListing.h"

#include <optional>
#include <unistd.h>

namespace qln {

namespace {

const QCommandLineOption kKind(QStringLiteral("kind"), QString(), QStringLiteral("KIND"));
const QCommandLineOption kOn(QStringLiteral("on"), QString(), QStringLiteral("DATE"));
const QCommandLineOption kExpired(QStringLiteral("expired"), QString());
const QCommandLineOption kFormat(QStringLiteral("format"), QString(), QStringLiteral("FORMAT"));

const QString kHelp = QStringLiteral(
    "Usage: quillon-promo list [--kind KIND] [--on DATE] [--expired] [--format FORMAT]\n"
    "\n"
    "Every promo of the table: its kind, the item, department or group it names, its dates,\n"
    "type and amount, the promo price where one applies, and whether it waits to be polled.\n"
    "Rows deleted and waiting to reach the stores are not listed.\n"
    "\n"
    "Options:\n"
    "  --kind KIND      item, dept, group, matrix or daily only\n"
    "  --on DATE        the promos running on DATE (yyyy-MM-dd), ended or not\n"
    "  --expired        promos that have ended too (without it, those ending today or later)\n"
    "  --format FORMAT  table (the default, for a terminal), csv or json\n"
    "  --datapath DIR, --station N   as for every verb\n"
    "\n"
    "CSV: UTF-8, a header line, quoted as spreadsheets do, lines ending in CR LF; its columns\n"
    "are those import reads:\n"
    "  Kind,Store,SL,Dept,GroupID,StartDate,EndDate,ChangeType,PriceChange,PromoPrice,Poll,UniqueID\n"
    "JSON: an array of objects with the same keys; amounts are strings, to keep them exact.\n"
    "\n"
    "Examples:\n"
    "  quillon-promo list --on 2026-12-24\n"
    "  quillon-promo list --kind dept --expired --format csv > dept-promos.csv\n");

enum class Format { Table, Csv, Json };

std::optional<Format> formatOf(const QString &text)
{
    if (text.isEmpty() || text == QLatin1String("table"))
        return Format::Table;
    if (text == QLatin1String("csv"))
        return Format::Csv;
    if (text == QLatin1String("json"))
        return Format::Json;
    return std::nullopt;
}

// The item, department or group a row names, as a person reads it.
QString namedBy(const PromoListRow &row)
{
    switch (row.kind) {
    case PromoKind::Item: return gfsItemID_display(row.promo.SL).trimmed();
    case PromoKind::Dept: return row.promo.Dept.trimmed();
    case PromoKind::Group:
    case PromoKind::Matrix:
        return QStringLiteral("%1 (%2)").arg(gfsItemID_display(row.promo.SL).trimmed()).arg(row.promo.GroupID);
    case PromoKind::Daily: return QStringLiteral("all items (%1)").arg(row.promo.GroupID);
    }
    return QString();
}

TextTable promoTable()
{
    using A = TextTable::Align;
    return TextTable({QStringLiteral("Kind"), QStringLiteral("Names"), QStringLiteral("Starts"), QStringLiteral("Ends"),
                      QStringLiteral("Type"), QStringLiteral("Amount"), QStringLiteral("Promo price"), QStringLiteral("Poll"),
                      QStringLiteral("ID")},
                     {A::Left, A::Left, A::Left, A::Left, A::Left, A::Right, A::Right, A::Left, A::Right});
}

QStringList tableCells(const PromoListRow &row)
{
    return {gfsPromoKind_name(row.kind), namedBy(row), gfsPromoColumns_date(row.promo.StartDate),
            gfsPromoColumns_date(row.promo.EndDate), gfsPromo_type_text(row.promo.ChangeType),
            gfsPromo_amount_text(row.promo, true), row.promoPrice ? row.promoPrice->toText(2) : QString(),
            row.promo.Poll.trimmed(), QString::number(row.promo.UniqueID)};
}

// Each row as it comes: CSV and JSON go out line by line. A table's widths depend on every
// cell, so it keeps its cells (not the rows) and writes its lines at the end.
class ListWriter {
public:
    ListWriter(QTextStream &out, Format format) : m_out(out), m_format(format), m_table(promoTable()) {}

    void row(const PromoListRow &row)
    {
        switch (m_format) {
        case Format::Table: m_table.add(tableCells(row)); break;
        case Format::Csv:
            if (m_rows == 0)
                m_out << gfsCsv_line(gfPromoColumns_names());
            m_out << gfsCsv_line(gfPromoColumns_cells(row.promo, row.kind, row.promoPrice));
            break;
        case Format::Json:
            m_out << (m_rows > 0 ? QStringLiteral(",\n ") : QStringLiteral("[\n "))
                  << gfsPromoColumns_json_object(gfPromoColumns_cells(row.promo, row.kind, row.promoPrice));
            break;
        }
        ++m_rows;
    }

    void finish()
    {
        switch (m_format) {
        case Format::Table:
            m_table.write(m_out);
            m_out << (m_rows == 1 ? QStringLiteral("1 promo\n") : QStringLiteral("%1 promos\n").arg(m_rows));
            break;
        case Format::Csv:
            if (m_rows == 0)
                m_out << gfsCsv_line(gfPromoColumns_names());
            break;
        case Format::Json: m_out << (m_rows == 0 ? QStringLiteral("[]\n") : QStringLiteral("\n]\n")); break;
        }
    }

private:
    QTextStream &m_out;
    Format m_format;
    TextTable m_table;
    qsizetype m_rows = 0;
};

int run(const QCommandLineParser &parser, CliContext &context)
{
    const QString verb = QStringLiteral("list");
    PromoListFilter filter;
    if (parser.isSet(kKind)) {
        filter.kind = gfePromoKind_parse(parser.value(kKind));
        if (!filter.kind)
            return context.fail(verb, QStringLiteral("unknown kind '%1': item, dept, group, matrix or daily").arg(parser.value(kKind)),
                                kExitUsage);
    }
    if (parser.isSet(kOn)) {
        filter.on = gfdPromoColumns_date(parser.value(kOn));
        if (!filter.on)
            return context.fail(verb, QStringLiteral("'%1' is not a date of the form yyyy-MM-dd").arg(parser.value(kOn)), kExitUsage);
    }
    filter.expired = parser.isSet(kExpired);
    const std::optional<Format> format = formatOf(parser.value(kFormat));
    if (!format)
        return context.fail(verb, QStringLiteral("unknown format '%1': table, csv or json").arg(parser.value(kFormat)), kExitUsage);
    if (!context.open())
        return kExitRefused;

    std::optional<TerminalProgress> progress;
    ListWriter writer(context.out, *format);
    // Rows that go out while the bar runs must not share its terminal.
    const bool barShown = isatty(fileno(context.errFile)) && (*format == Format::Table || !isatty(fileno(stdout)));
    const bool read = gfbPromoListing_each(filter, [&](const PromoListRow &row) { writer.row(row); }, [&](qsizetype done, qsizetype total) {
        if (!progress)
            progress.emplace(QStringLiteral("Reading promos"), total, context.errFile, barShown);
        progress->set(done);
    });
    progress.reset();
    if (!read)
        return context.fail(verb, QStringLiteral("the promo table could not be read (see PVSW.log in the data path)"),
                            kExitRefused);
    writer.finish();
    return kExitDone;
}

} // namespace

CliVerb gfCliVerb_list()
{
    return {QStringLiteral("list"), QStringLiteral("every promo of the five kinds, as a table, CSV or JSON"), kHelp,
            {kKind, kOn, kExpired, kFormat}, 0, 0, run, true};
}

} // namespace qln
