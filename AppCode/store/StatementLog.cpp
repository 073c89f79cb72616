#include "store/StatementLog.h"

#include "common/ProcessState.h"
#include "platform/Clock.h"

#include <QDir>
#include <QFile>
#include <QTextStream>

namespace qln {

QString gfsNow_text()
{
    return Clock::now().toString(QStringLiteral("M/d/yyyy h:mm:ss AP"));
}

QString gfsPrint_zones(const QStringList &fields)
{
    constexpr int kZone = 14;
    QString line;
    for (int i = 0; i < fields.size(); ++i) {
        if (i > 0)
            line = line.leftJustified((line.size() / kZone + 1) * kZone, QLatin1Char(' '));
        line += fields[i];
    }
    return line;
}

QString gfsDataPath_file(const QString &name)
{
    return QDir(gsDataPath).filePath(name);
}

void gpFile_append(const QString &path, const QStringList &lines)
{
    QFile file(path);
    if (!file.open(QIODevice::Append | QIODevice::Text))
        return;
    QTextStream out(&file);
    for (const QString &line : lines)
        out << line << "\r\n";
}

namespace {

QStringList failureLines(const QString &sSQL, const DbError &error)
{
    const qint32 number = qint32(quint32(error.number)); // the platform's error numbers are signed
    return {gfsPrint_zones({gfsNow_text(), QString(),
                            kProgramName + QStringLiteral(" [EXE FAIL]") + QString::number(number) +
                                QStringLiteral(" Description: ") + error.description + QStringLiteral(" Source: ") +
                                error.source}),
            sSQL};
}

} // namespace

void gpDB_LogRefused(const QString &sSQL, const DbError &error)
{
    if (sSQL.contains(QLatin1String("UPC"))) {
        gpFile_append(gfsDataPath_file(QStringLiteral("upcDups.txt")),
                      {gfsNow_text() + QStringLiteral(" Description: ") + error.description});
        return;
    }
    gpDB_LogRefusedQuery(sSQL, error);
}

void gpDB_LogRefusedQuery(const QString &sSQL, const DbError &error)
{
    gpFile_append(gfsDataPath_file(QStringLiteral("PVSW.log")), failureLines(sSQL, error));
}

} // namespace qln
