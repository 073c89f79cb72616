// quillon-demo-data: writes a complete demo data path for the program, its tests and benchmarks.
#include "DemoData.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QRegularExpression>
#include <cstdio>
#include <sqlite3.h>

using namespace qln;

int main(int argc, char **argv)
{
    // Nobody reads SQLite's memory statistics here, and keeping them takes a lock for
    // every allocation of a million-row load.
    sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("quillon-demo-data"));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Writes a demo data set: ZOR.INI, Country.set, Groups.QLN and a database."));
    parser.addHelpOption();
    const QCommandLineOption path(QStringLiteral("path"), QStringLiteral("Data path to write."), QStringLiteral("dir"));
    const QCommandLineOption items(QStringLiteral("items"), QStringLiteral("Number of items (default 20000)."), QStringLiteral("n"), QStringLiteral("20000"));
    const QCommandLineOption promos(QStringLiteral("promos"), QStringLiteral("Item promo rows (default: items / 50)."), QStringLiteral("n"), QStringLiteral("-1"));
    const QCommandLineOption seed(QStringLiteral("seed"), QStringLiteral("Seed of the generator (default 1)."), QStringLiteral("n"), QStringLiteral("1"));
    const QCommandLineOption headOffice(QStringLiteral("head-office"), QStringLiteral("A head-office data set (MultiStore \"H\")."));
    const QCommandLineOption provider(QStringLiteral("provider"), QStringLiteral("sqlite (default) or postgres."), QStringLiteral("name"), QStringLiteral("sqlite"));
    const QCommandLineOption server(QStringLiteral("server"), QStringLiteral("PostgreSQL server as host\\port."), QStringLiteral("server"));
    const QCommandLineOption user(QStringLiteral("user"), QStringLiteral("PostgreSQL login."), QStringLiteral("name"));
    const QCommandLineOption password(QStringLiteral("password"), QStringLiteral("PostgreSQL password."), QStringLiteral("text"));
    const QCommandLineOption database(QStringLiteral("database"), QStringLiteral("Database name (default ZORDATA1)."), QStringLiteral("name"), QStringLiteral("ZORDATA1"));
    const QCommandLineOption save(QStringLiteral("save-settings"), QStringLiteral("Point this user's settings at the new data set."));
    parser.addOptions({path, items, promos, seed, headOffice, provider, server, user, password, database, save});
    parser.process(app);

    auto fail = [](const QString &text) {
        std::fprintf(stderr, "quillon-demo-data: %s\n", qPrintable(text));
        return 2;
    };
    demo::DemoOptions o;
    if (!parser.isSet(path))
        return fail(QStringLiteral("--path is required"));
    o.path = QDir(parser.value(path)).absolutePath();
    bool ok = false;
    o.items = parser.value(items).toInt(&ok);
    if (!ok || o.items < 0 || o.items > 9000000)
        return fail(QStringLiteral("--items takes a whole number from 0 to 9000000"));
    o.promos = parser.value(promos).toInt(&ok);
    if (!ok || o.promos < -1)
        return fail(QStringLiteral("--promos takes a whole number"));
    o.seed = parser.value(seed).toUInt(&ok);
    if (!ok)
        return fail(QStringLiteral("--seed takes a whole number"));
    const QString engine = parser.value(provider).toLower();
    if (engine != QLatin1String("sqlite") && engine != QLatin1String("postgres"))
        return fail(QStringLiteral("--provider is sqlite or postgres"));
    o.provider = providerFromName(engine);
    o.server = parser.value(server);
    if (o.provider == Provider::Postgres && o.server.isEmpty())
        return fail(QStringLiteral("--server is required with --provider postgres"));
    o.user = parser.value(user);
    o.password = parser.value(password);
    o.database = parser.value(database);
    static const QRegularExpression name(QStringLiteral("^[A-Za-z_][A-Za-z0-9_]{0,62}$"));
    if (!name.match(o.database).hasMatch())
        return fail(QStringLiteral("--database takes letters, digits and underscores"));
    o.headOffice = parser.isSet(headOffice);
    o.saveSettings = parser.isSet(save);

    demo::DemoReport report;
    QString error;
    QElapsedTimer clock;
    clock.start();
    const bool built = demo::gfbDemo_build(o, report, error, [&clock](const QString &step) {
        std::fprintf(stderr, "  %6.1f s  %s\n", clock.elapsed() / 1000.0, qPrintable(step));
    });
    if (!built)
        return fail(error);
    std::printf("%s: %d items, %d UPCs, %d departments, %d matrices, %d promos in %.1f s\n", qPrintable(o.path), report.items,
                report.upcs, report.departments, report.matrices, report.promos, report.seconds);
    return 0;
}
