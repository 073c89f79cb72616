#include "cli/CliVerb.h"
#include "cli/TerminalProgress.h"
#include "common/Csv.h"
#include "promo/PromoColumns.h"
#include "promo/PromoImport.h"
#include "promo/PromoList.h"

#include <QFile>

namespace qln {

namespace {

const QCommandLineOption kDryRun(QStringLiteral("dry-run"), QString());
const QCommandLineOption kKind(QStringLiteral("kind"), QString(), QStringLiteral("KIND"));
const QCommandLineOption kFrom(QStringLiteral("from"), QString(), QStringLiteral("DATE"));
const QCommandLineOption kTo(QStringLiteral("to"), QString(), QStringLiteral("DATE"));
const QCommandLineOption kDays(QStringLiteral("days"), QString(), QStringLiteral("N"));

const QString kImportHelp = QStringLiteral(
    "Usage: quillon-promo import FILE.csv [--dry-run]\n"
    "\n"
    "Adds item, department and daily promos from a CSV file with the columns that\n"
    "\"list --format csv\" writes:\n"
    "  Kind,Store,SL,Dept,GroupID,StartDate,EndDate,ChangeType,PriceChange,PromoPrice,Poll,UniqueID\n"
    "Kind, SL (item), Dept (dept), StartDate, EndDate (yyyy-MM-dd), ChangeType (0 to, 1 by,\n"
    "2 by percent) and PriceChange (a dot, up to four decimals) are read; the others are\n"
    "assigned as the editors assign them: Store, Poll, UniqueID and a daily promo's GroupID.\n"
    "Group and matrix promos are refused: they are kept in their own windows.\n"
    "\n"
    "Every line is checked as the editors check it (dates; an item that exists, takes\n"
    "discounts, and whose promo price is above zero and not above its regular price; a\n"
    "department that exists; a daily percentage from 0 to 100) before anything is written.\n"
    "A dry run, or a file with any line in error, writes nothing and reports each line at\n"
    "fault and the promos already in the table that overlap a line. Otherwise all lines are\n"
    "written in one transaction: all or none.\n"
    "\n"
    "Options:\n"
    "  --dry-run   check and report only\n"
    "  --datapath DIR, --station N   as for every verb\n"
    "\n"
    "Examples:\n"
    "  quillon-promo import campaign.csv --dry-run\n"
    "  quillon-promo import campaign.csv\n"
    "\n"
    "Exit codes: 0 written (or a clean dry run), 1 a line refused or the write refused,\n"
    "2 usage.\n");

const QString kShiftHelp = QStringLiteral(
    "Usage: quillon-promo shift --kind KIND --from DATE --to DATE --days N [--dry-run]\n"
    "\n"
    "Copies the promos of one kind (item, dept or daily) that start from DATE to DATE to new\n"
    "dates N days later (earlier for a negative N): next week's campaign from this week's.\n"
    "The copies are checked, reported and written as import does, with new UniqueIDs; the\n"
    "promos copied stay as they are.\n"
    "\n"
    "Options:\n"
    "  --kind KIND   item, dept or daily\n"
    "  --from DATE   first starting date (yyyy-MM-dd)\n"
    "  --to DATE     last starting date (yyyy-MM-dd)\n"
    "  --days N      days to move the copies by, not 0\n"
    "  --dry-run     check and report only\n"
    "  --datapath DIR, --station N   as for every verb\n"
    "\n"
    "Example:\n"
    "  quillon-promo shift --kind item --from 2026-11-23 --to 2026-11-29 --days 7\n");

QString described(const PromoPriceRecord &row)
{
    const std::optional<PromoKind> kind = gfePromo_kind(row);
    QString named;
    switch (kind.value_or(PromoKind::Daily)) {
    case PromoKind::Item: named = QStringLiteral("item promo on ") + row.SL.trimmed(); break;
    case PromoKind::Dept: named = QStringLiteral("dept promo on ") + row.Dept.trimmed(); break;
    case PromoKind::Group: named = QStringLiteral("group %1 promo on %2").arg(row.GroupID).arg(row.SL.trimmed()); break;
    case PromoKind::Matrix: named = QStringLiteral("matrix %1 promo on %2").arg(row.GroupID).arg(row.SL.trimmed()); break;
    case PromoKind::Daily: named = QStringLiteral("daily promo %1").arg(row.GroupID); break;
    }
    return QStringLiteral("%1, %2 to %3, %4 %5 (UniqueID %6)")
        .arg(named, gfsPromoColumns_date(row.StartDate), gfsPromoColumns_date(row.EndDate), gfsPromo_type_text(row.ChangeType),
             gfsPromoColumns_money(row.PriceChange))
        .arg(row.UniqueID);
}

// Checks, reports and, unless told not to or refused, writes. The report goes to out: each
// refusal, each note, each overlap, and a last line that says what happened.
int finish(PromoAddition &addition, bool dryRun, CliContext &context, const QString &verb)
{
    if (!addition.check())
        return context.fail(verb, QStringLiteral("the items or departments could not be read (see PVSW.log in the data path)"),
                            kExitRefused);
    QList<PromoAddition::Overlap> overlaps;
    if (!addition.overlaps_find(overlaps))
        return context.fail(verb, QStringLiteral("the promo table could not be read (see PVSW.log in the data path)"), kExitRefused);
    QTextStream &out = context.out;
    qsizetype refusals = 0;
    for (const PromoAddNote &note : addition.notes()) {
        out << note.origin << (note.refused ? QStringLiteral(": refused: ") : QStringLiteral(": note: ")) << note.text << '\n';
        refusals += note.refused ? 1 : 0;
    }
    for (const PromoAddition::Overlap &overlap : std::as_const(overlaps))
        out << overlap.origin << QStringLiteral(": overlaps ") << described(overlap.existing) << '\n';
    const qsizetype count = addition.drafts().size();
    const QString overlapText = QStringLiteral("%1 overlap(s) with promos in the table").arg(overlaps.size());
    if (refusals > 0) {
        out << QStringLiteral("Nothing written: %1 refused, %2 fit; %3.\n").arg(refusals).arg(count).arg(overlapText);
        return kExitRefused;
    }
    if (dryRun) {
        out << QStringLiteral("Dry run, nothing written: %1 promo(s) fit; %2.\n").arg(count).arg(overlapText);
        return kExitDone;
    }
    out.flush();
    QString error;
    bool written = false;
    {
        TerminalProgress progress(QStringLiteral("Writing promos"), count, context.errFile);
        written = addition.write(error, [&](qsizetype done) { progress.set(done); });
    }
    if (!written) {
        out << QStringLiteral("Nothing written: ") << error << '\n';
        return kExitRefused;
    }
    out << QStringLiteral("%1 promo(s) written in one transaction; %2.\n").arg(count).arg(overlapText);
    return kExitDone;
}

int runImport(const QCommandLineParser &parser, CliContext &context)
{
    const QString verb = QStringLiteral("import");
    const QString path = parser.positionalArguments().first();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return context.fail(verb, QStringLiteral("'%1' cannot be read: %2").arg(path, file.errorString()), kExitRefused);
    const QByteArray bytes = file.readAll();
    file.close();
    if (!context.open())
        return kExitRefused;
    PromoAddition addition;
    addition.lines_take(gfCsv_read(bytes));
    return finish(addition, parser.isSet(kDryRun), context, verb);
}

int runShift(const QCommandLineParser &parser, CliContext &context)
{
    const QString verb = QStringLiteral("shift");
    for (const QCommandLineOption &needed : {kKind, kFrom, kTo, kDays})
        if (!parser.isSet(needed))
            return context.fail(verb, QStringLiteral("--%1 is needed").arg(needed.names().first()), kExitUsage);
    const std::optional<PromoKind> kind = gfePromoKind_parse(parser.value(kKind));
    if (!kind || *kind == PromoKind::Group || *kind == PromoKind::Matrix)
        return context.fail(verb,
                            QStringLiteral("kind '%1' cannot be shifted: item, dept or daily (group and matrix promos are kept "
                                           "in their own windows)")
                                .arg(parser.value(kKind)),
                            kExitUsage);
    const std::optional<QDate> from = gfdPromoColumns_date(parser.value(kFrom));
    const std::optional<QDate> to = gfdPromoColumns_date(parser.value(kTo));
    for (const auto &[date, option] : {std::pair{from, kFrom}, std::pair{to, kTo}})
        if (!date)
            return context.fail(verb, QStringLiteral("'%1' is not a date of the form yyyy-MM-dd").arg(parser.value(option)), kExitUsage);
    bool number = false;
    const int days = parser.value(kDays).toInt(&number);
    if (!number || days == 0 || std::abs(days) > 36500)
        return context.fail(verb, QStringLiteral("--days '%1' is not a whole number of days other than 0").arg(parser.value(kDays)),
                            kExitUsage);
    if (!context.open())
        return kExitRefused;
    PromoAddition addition;
    if (!gfbPromoShift_take(addition, *kind, *from, *to, days))
        return context.fail(verb, QStringLiteral("the promo table could not be read (see PVSW.log in the data path)"), kExitRefused);
    if (addition.drafts().isEmpty()) {
        context.out << QStringLiteral("No %1 promo starts from %2 to %3: nothing to shift.\n")
                           .arg(gfsPromoKind_name(*kind), parser.value(kFrom), parser.value(kTo));
        return kExitDone;
    }
    return finish(addition, parser.isSet(kDryRun), context, verb);
}

} // namespace

CliVerb gfCliVerb_import()
{
    return {QStringLiteral("import"), QStringLiteral("adds item, dept and daily promos from CSV, all or none"), kImportHelp,
            {kDryRun}, 1, 1, runImport};
}

CliVerb gfCliVerb_shift()
{
    return {QStringLiteral("shift"), QStringLiteral("copies the promos starting in a range to days later"), kShiftHelp,
            {kKind, kFrom, kTo, kDays, kDryRun}, 0, 0, runShift};
}

} // namespace qln
