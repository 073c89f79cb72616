#pragma once
#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QList>
#include <QString>
#include <QTextStream>
#include <cstdio>
#include <functional>

// A verb of quillon-promo: its options, its help, and what it does.
namespace qln {

enum CliExit : int { kExitDone = 0, kExitRefused = 1, kExitUsage = 2 };

struct CliContext {
    QTextStream &out;
    QTextStream &err;
    std::FILE *errFile; // where a progress bar draws
    // The program's own start-up on the data path and database; false, after telling why on
    // err, when they do not open. A verb calls it once its arguments are known to be good.
    std::function<bool()> open;

    // "quillon-promo VERB: text" on err; the exit code passes through.
    int fail(const QString &verb, const QString &text, int code);
};

struct CliVerb {
    QString name;
    QString summary; // one line of the program's help
    QString help;    // the verb's own help, from its usage line on
    QList<QCommandLineOption> options;
    int positionalMin = 0;
    int positionalMax = 0;
    std::function<int(const QCommandLineParser &, CliContext &)> run;
    bool readOnly = false; // its start-up leaves the program's files as they are
};

// The verbs of the program in the order its help lists them.
CliVerb gfCliVerb_list();
CliVerb gfCliVerb_explain();
CliVerb gfCliVerb_import();
CliVerb gfCliVerb_shift();

} // namespace qln
