// The program and the database's collation as other programs meet them: from a shell,
// without a display, and from the sqlite3 shell.
#include "shell/DesktopOptions.h"

#include <QProcess>
#include <QDir>
#include <QProcessEnvironment>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

struct Outcome {
    int code = -1;
    QString out, err;
};

Outcome run(const QString &program, const QStringList &arguments, const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment())
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    Outcome r;
    if (!process.waitForFinished(30000))
        return r;
    r.code = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    r.out = QString::fromLocal8Bit(process.readAllStandardOutput());
    r.err = QString::fromLocal8Bit(process.readAllStandardError());
    return r;
}

} // namespace

TEST(DesktopProgram, HelpAndVersionAnswerOnStdoutWithoutADisplayOrDatabase)
{
    QProcessEnvironment bare;
    bare.insert(QStringLiteral("PATH"), QStringLiteral("/usr/bin:/bin"));
    QTemporaryDir home;
    bare.insert(QStringLiteral("HOME"), home.path()); // no settings, no data path
    const Outcome version = run(QStringLiteral(QUILLON_EXE), {QStringLiteral("--version")}, bare);
    EXPECT_EQ(version.code, 0) << version.err.toStdString();
    EXPECT_EQ(version.out, QStringLiteral("Quillon ") + qln::kProgramVersion + QLatin1Char('\n'));
    const Outcome help = run(QStringLiteral(QUILLON_EXE), {QStringLiteral("/DATAPATH=/nowhere"), QStringLiteral("--help")}, bare);
    EXPECT_EQ(help.code, 0) << help.err.toStdString();
    EXPECT_TRUE(help.out.startsWith(QStringLiteral("Usage: quillon"))) << help.out.toStdString();
    EXPECT_TRUE(help.err.isEmpty()) << help.err.toStdString();
    EXPECT_EQ(QDir(home.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::Hidden), QStringList())
        << "nothing written before the answer";
}

TEST(DesktopProgram, Sqlite3ShellComparesTextColumnsAsTheProgramWithTheExtension)
{
    const QString shell = QStandardPaths::findExecutable(QStringLiteral("sqlite3"));
    ASSERT_FALSE(shell.isEmpty()) << "the sqlite3 package is missing";
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("ZORDATA1.db"));
    const QString load = QStringLiteral(".load ") + QStringLiteral(QLN_COLLATION);
    const Outcome made = run(shell, {file, load,
                                 QStringLiteral("CREATE TABLE invt1 (SL CHAR(8) COLLATE QLN_CI PRIMARY KEY, Description VARCHAR(30) COLLATE QLN_CI)"),
                                 QStringLiteral("INSERT INTO invt1 VALUES ('10014447', 'Acme Basil  '), ('A0000001', 'acme basil')")});
    ASSERT_EQ(made.code, 0) << made.err.toStdString();

    const Outcome refused = run(shell, {file, QStringLiteral("select * from invt1 where SL='10014447'")});
    EXPECT_NE(refused.code, 0);
    EXPECT_TRUE(refused.err.contains(QStringLiteral("no such collation sequence: QLN_CI"))) << refused.err.toStdString();

    const Outcome answered = run(shell, {file, load, QStringLiteral("select SL from invt1 where SL='10014447'"),
                                     QStringLiteral("select count(*) from invt1 where Description = 'ACME BASIL'"),
                                     QStringLiteral("select SL from invt1 where SL > 'a' order by SL")});
    EXPECT_EQ(answered.code, 0) << answered.err.toStdString();
    EXPECT_EQ(answered.out, QStringLiteral("10014447\n2\nA0000001\n")) << "case and trailing blanks don't count";
}
