#include "cli/PromoCli.h"

#include "cli/CliVerb.h"
#include "common/ProcessState.h"
#include "shell/DesktopOptions.h"
#include "shell/Startup.h"
#include "store/ReadOnlyRun.h"

namespace qln {

namespace {

QList<CliVerb> verbs() { return {gfCliVerb_list(), gfCliVerb_explain(), gfCliVerb_import(), gfCliVerb_shift()}; }

const QCommandLineOption kHelp({QStringLiteral("h"), QStringLiteral("help")}, QString());
const QCommandLineOption kVersion(QStringLiteral("version"), QString());
const QCommandLineOption kDataPath(QStringLiteral("datapath"), QString(), QStringLiteral("DIR"));
const QCommandLineOption kStation(QStringLiteral("station"), QString(), QStringLiteral("N"));

QString programHelp()
{
    QString text = QStringLiteral(
        "Usage: quillon-promo [--datapath DIR] [--station N] VERB [options]\n"
        "\n"
        "The promo table of Quillon from the command line, on the data path and database the\n"
        "program itself opens.\n"
        "\n"
        "Verbs:\n");
    for (const CliVerb &verb : verbs())
        text += QStringLiteral("  %1  %2\n").arg(verb.name.leftJustified(9), verb.summary);
    text += QStringLiteral(
        "\n"
        "Options (before or after the verb):\n"
        "  --datapath DIR  the data path; without it, the station's, as the program finds it\n"
        "  --station N     the station number\n"
        "  -h, --help      this text; \"quillon-promo VERB --help\" tells of a verb\n"
        "  --version       the version\n"
        "\n"
        "Exit codes: 0 done, 1 input refused (an unknown item, a data path or database that\n"
        "does not open), 2 usage (an unknown verb or option, a malformed value).\n");
    return text;
}

// The suite's options, as the program reads them from its own command line.
QString suiteCommandLine(const QString &dataPath, const QString &station)
{
    QStringList options;
    if (!station.isEmpty())
        options << QStringLiteral("/STATION=") + station;
    if (!dataPath.isEmpty())
        options << QStringLiteral("/DATAPATH=") + dataPath; // last: it runs to the end of the line
    return options.join(QLatin1Char(' '));
}

int usage(QTextStream &err, const QString &where, const QString &text, const QString &helpCommand)
{
    err << where << QStringLiteral(": ") << text << QStringLiteral("\nTry '") << helpCommand << QStringLiteral("'.\n");
    err.flush();
    return kExitUsage;
}

} // namespace

int CliContext::fail(const QString &verb, const QString &text, int code)
{
    err << kPromoCliName << QLatin1Char(' ') << verb << QStringLiteral(": ") << text << QLatin1Char('\n');
    err.flush();
    return code;
}

int gfiPromoCli_run(const QStringList &arguments, QTextStream &out, QTextStream &err, std::FILE *errFile)
{
    const QString programHelpCommand = kPromoCliName + QStringLiteral(" --help");
    QCommandLineParser global;
    global.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    global.addOptions({kHelp, kVersion, kDataPath, kStation});
    if (!global.parse(QStringList{kPromoCliName} + arguments))
        return usage(err, kPromoCliName, global.errorText(), programHelpCommand);
    if (global.isSet(kVersion)) {
        out << kPromoCliName << QLatin1Char(' ') << kProgramVersion << QLatin1Char('\n');
        return kExitDone;
    }
    const QStringList rest = global.positionalArguments();
    if (global.isSet(kHelp)) {
        out << programHelp();
        return kExitDone;
    }
    if (rest.isEmpty())
        return usage(err, kPromoCliName, QStringLiteral("no verb given"), programHelpCommand);

    const QList<CliVerb> all = verbs();
    const auto verb = std::find_if(all.begin(), all.end(), [&](const CliVerb &v) { return v.name == rest.first(); });
    if (verb == all.end())
        return usage(err, kPromoCliName, QStringLiteral("unknown verb '%1'").arg(rest.first()), programHelpCommand);

    const QString where = kPromoCliName + QLatin1Char(' ') + verb->name;
    const QString verbHelpCommand = where + QStringLiteral(" --help");
    QCommandLineParser parser;
    parser.addOptions({kHelp, kDataPath, kStation});
    parser.addOptions(verb->options);
    if (!parser.parse(QStringList{where} + rest.mid(1)))
        return usage(err, where, parser.errorText(), verbHelpCommand);
    if (parser.isSet(kHelp)) {
        out << verb->help;
        return kExitDone;
    }
    const qsizetype positional = parser.positionalArguments().size();
    if (positional < verb->positionalMin)
        return usage(err, where, QStringLiteral("too few arguments"), verbHelpCommand);
    if (positional > verb->positionalMax)
        return usage(err, where, QStringLiteral("unexpected argument '%1'").arg(parser.positionalArguments().at(verb->positionalMax)),
                     verbHelpCommand);

    const QString dataPath = parser.isSet(kDataPath) ? parser.value(kDataPath) : global.value(kDataPath);
    const QString station = parser.isSet(kStation) ? parser.value(kStation) : global.value(kStation);
    CliContext context{out, err, errFile, {}};
    context.open = [&] {
        gpReadOnlyRun_set(verb->readOnly);
        if (gfbStartup_prepare(suiteCommandLine(dataPath, station)))
            return true;
        context.fail(verb->name, QStringLiteral("the data path or its database did not open; name the data path with --datapath DIR"), kExitRefused);
        return false;
    };
    const int code = verb->run(parser, context);
    out.flush();
    err.flush();
    return code;
}

} // namespace qln
