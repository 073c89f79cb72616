#include "cli/CliVerb.h"
#include "cli/TextTable.h"
#include "common/ItemNumber.h"
#include "platform/Clock.h"
#include "promo/PromoColumns.h"
#include "promo/PromoExplain.h"
#include "promo/PromoList.h"

namespace qln {

namespace {

const QCommandLineOption kOn(QStringLiteral("on"), QString(), QStringLiteral("DATE"));

const QString kHelp = QStringLiteral(
    "Usage: quillon-promo explain SL [--on DATE]\n"
    "\n"
    "Why an item rings up at its price on a day: every promo that reaches it (its own item\n"
    "promos, its department's, its groups', its matrix's and the daily ones), the price each\n"
    "gives by the program's own arithmetic from the item's regular price, and the lowest, the\n"
    "\"best deal\" the till applies. An item that takes no discount says so.\n"
    "\n"
    "Arguments and options:\n"
    "  SL         the item number, as shown (1234567.8) or as stored (12345678)\n"
    "  --on DATE  the day (yyyy-MM-dd); today without it\n"
    "  --datapath DIR, --station N   as for every verb\n"
    "\n"
    "Example:\n"
    "  quillon-promo explain 1019867.9 --on 2026-11-28\n");

// What the promo names besides the item itself.
QString through(const PromoPriceGiven &given)
{
    switch (given.kind) {
    case PromoKind::Item: return QStringLiteral("the item");
    case PromoKind::Dept: return QStringLiteral("department ") + given.promo.Dept.trimmed();
    case PromoKind::Group: return QStringLiteral("group %1").arg(given.promo.GroupID);
    case PromoKind::Matrix: return QStringLiteral("matrix %1").arg(given.promo.GroupID);
    case PromoKind::Daily: return QStringLiteral("daily promo %1").arg(given.promo.GroupID);
    }
    return QString();
}

void write(QTextStream &out, const PriceExplanation &e)
{
    const QString day = e.day.toString(QStringLiteral("yyyy-MM-dd"));
    const QString regular = e.regularPrice.toText(2);
    out << QStringLiteral("Item %1  %2\n").arg(gfsItemID_display(e.SL).trimmed(), e.description);
    out << QStringLiteral("Department %1, regular price %2\n").arg(e.dept.isEmpty() ? QStringLiteral("none") : e.dept, regular);
    if (e.promos.isEmpty()) {
        out << QStringLiteral("No promo reaches this item on %1: the regular price %2 applies.\n").arg(day, regular);
        return;
    }
    out << QStringLiteral("Promos on %1:\n").arg(day);
    using A = TextTable::Align;
    TextTable table({QStringLiteral("  Kind"), QStringLiteral("Through"), QStringLiteral("Starts"), QStringLiteral("Ends"),
                     QStringLiteral("Type"), QStringLiteral("Amount"), QStringLiteral("Price"), QStringLiteral("ID")},
                    {A::Left, A::Left, A::Left, A::Left, A::Left, A::Right, A::Right, A::Right});
    for (qsizetype i = 0; i < e.promos.size(); ++i) {
        const PromoPriceGiven &given = e.promos[i];
        table.add({(e.best == i ? QStringLiteral("* ") : QStringLiteral("  ")) + gfsPromoKind_name(given.kind), through(given),
                   gfsPromoColumns_date(given.promo.StartDate), gfsPromoColumns_date(given.promo.EndDate),
                   gfsPromo_type_text(given.promo.ChangeType), gfsPromo_amount_text(given.promo, true),
                   given.price ? given.price->toText(2) : QString(), QString::number(given.promo.UniqueID)});
    }
    out << table.text();
    if (!e.discountable) {
        out << QStringLiteral("This item takes no discount: the regular price %1 applies.\n").arg(regular);
        return;
    }
    if (!e.best) {
        out << QStringLiteral("No promo gives a price: the regular price %1 applies.\n").arg(regular);
        return;
    }
    const PromoPriceGiven &best = e.promos[*e.best];
    out << QStringLiteral("Best deal (*): %1, by the %2 promo with ID %3.\n")
               .arg(best.price->toText(2), gfsPromoKind_name(best.kind))
               .arg(best.promo.UniqueID);
}

int run(const QCommandLineParser &parser, CliContext &context)
{
    const QString verb = QStringLiteral("explain");
    const QString typed = parser.positionalArguments().constFirst();
    const std::optional<QString> sl = gfsExplain_SL_key(typed);
    if (!sl)
        return context.fail(verb, QStringLiteral("'%1' is not an item number").arg(typed), kExitUsage);
    QDate day = Clock::today();
    if (parser.isSet(kOn)) {
        const std::optional<QDate> on = gfdPromoColumns_date(parser.value(kOn));
        if (!on)
            return context.fail(verb, QStringLiteral("'%1' is not a date of the form yyyy-MM-dd").arg(parser.value(kOn)), kExitUsage);
        day = *on;
    }
    if (!context.open())
        return kExitRefused;
    PriceExplanation explanation;
    switch (gfePrice_explain(*sl, day, explanation)) {
    case ExplainEnd::UnknownItem: return context.fail(verb, QStringLiteral("no item %1").arg(typed), kExitRefused);
    case ExplainEnd::ReadRefused:
        return context.fail(verb, QStringLiteral("the tables could not be read (see PVSW.log in the data path)"), kExitRefused);
    case ExplainEnd::Explained: break;
    }
    write(context.out, explanation);
    return kExitDone;
}

} // namespace

CliVerb gfCliVerb_explain()
{
    return {QStringLiteral("explain"), QStringLiteral("the promos that reach an item on a day, and the price the till applies"),
            kHelp, {kOn}, 1, 1, run, true};
}

} // namespace qln
