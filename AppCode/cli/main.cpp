#include "cli/CliVerb.h"
#include "cli/PromoCli.h"
#include "common/ProcessState.h"
#include "platform/Clock.h"
#include "platform/ProgramEnd.h"
#include "platform/StreamMessages.h"

#include <QCoreApplication>
#include <QFile>

int main(int argc, char **argv)
{
    qln::gpLocalTime_pin();
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(qln::kPromoCliName);
    qln::gsAppPath = QCoreApplication::applicationDirPath();
    // Boxes the shared start-up shows go to stderr and take their default answer.
    static qln::StreamMessages messages(stderr);
    qln::installMessages(&messages);
    QFile outFile, errFile;
    outFile.open(stdout, QIODevice::WriteOnly);
    errFile.open(stderr, QIODevice::WriteOnly);
    QTextStream out(&outFile), err(&errFile);
    QStringList arguments = QCoreApplication::arguments();
    arguments.removeFirst();
    try {
        return qln::gfiPromoCli_run(arguments, out, err, stderr);
    } catch (const qln::ProgramEnd &) {
        // The shared start-up ends the run where it cannot go on, at times without a word.
        out.flush();
        err << qln::kPromoCliName << QStringLiteral(": the start-up ended the run\n");
        err.flush();
        return qln::kExitRefused;
    } catch (const std::exception &error) {
        out.flush();
        err << qln::kPromoCliName << QStringLiteral(": unexpected error: ") << QString::fromLocal8Bit(error.what()) << '\n';
        err.flush();
        return qln::kExitRefused;
    }
}
