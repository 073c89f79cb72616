#include "config/TermDefinitions.h"

#include "config/IniServices.h"
#include "config/ProfileFile.h"
#include "platform/Messages.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

namespace qln {

namespace {

// Beyond "00#" no site numbers its terms; a larger key is a damaged line, not a term.
constexpr int kLastTerm = 9999;
constexpr int kListRoom = 1 << 16;

QStringList keysOf(const QString &section, const QString &file)
{
    QString list;
    GetPrivateProfileString(section, std::nullopt, QString(), list, kListRoom, file);
    return list.split(QChar(0), Qt::SkipEmptyParts);
}

QString valueOf(const QString &section, const QString &key, const QString &file)
{
    QString value;
    GetPrivateProfileString(section, key, QString(), value, 1024, file);
    return value;
}

bool yes(const QString &text)
{
    const QString t = text.trimmed().toUpper();
    return t.startsWith(QLatin1Char('Y')) || t == QLatin1String("1") || t == QLatin1String("-1") ||
           t == QLatin1String("TRUE");
}

// Each section of one file over the table; a number written twice counts once, the first time.
void termsRead(const QString &file)
{
    using Apply = void (*)(TermRecord &, const QString &);
    const std::pair<const char *, Apply> sections[] = {
        {"INDEX", [](TermRecord &t, const QString &v) { t.sName = v; }},
        {"DEFAULT", [](TermRecord &t, const QString &v) { t.sDefault = v; }},
        {"DEFINED", [](TermRecord &t, const QString &v) { t.sDefined = v; }},
        {"USE", [](TermRecord &t, const QString &v) { t.bUse = yes(v); }},
        {"LEN", [](TermRecord &t, const QString &v) { t.iLen = qMax(0, v.trimmed().toInt()); }},
    };
    for (const auto &[name, apply] : sections) {
        const QString section = QString::fromLatin1(name);
        QSet<int> seen;
        for (const QString &key : keysOf(section, file)) {
            bool number = false;
            const int n = key.trimmed().toInt(&number);
            if (!number || n < 1 || n > kLastTerm || seen.contains(n))
                continue;
            seen.insert(n);
            while (gaTerms.size() <= n)
                gaTerms.append(TermRecord());
            apply(gaTerms[n], valueOf(section, key, file));
        }
    }
}

} // namespace

bool gfbTerms_load(const QString &sFolder)
{
    gaTerms.clear();
    const QDir folder(sFolder);
    const QString system = folder.filePath(QStringLiteral("SYSTERMS.MSG"));
    const QString site = folder.filePath(QStringLiteral("USRTERMS.MSG"));
    const bool found = QFileInfo(system).isFile();
    if (found)
        termsRead(system);
    if (QFileInfo(site).isFile())
        termsRead(site);
    return found;
}

QString gfsTerms_path(clsINI_Services &ini, const QString &sDataPath)
{
    const QString path = ini.GetValue(QStringLiteral("ZOR Terms"), QStringLiteral("TERMSPATH"), QString()).trimmed();
    return path.isEmpty() ? sDataPath : path;
}

int gfiTerm_Index(const QString &sName)
{
    const QString wanted = sName.trimmed().toUpper();
    if (wanted.isEmpty())
        return 0;
    for (int i = 1; i < gaTerms.size(); ++i) {
        if (gaTerms[i].sName.trimmed().toUpper() == wanted)
            return i;
    }
    return 0;
}

QString gfsTerm(int iTerm, int iCase)
{
    QString text;
    if (iTerm > 0 && iTerm < gaTerms.size()) {
        const TermRecord &t = gaTerms[iTerm];
        text = t.bUse ? t.sDefined.trimmed() : QString();
        if (text.isEmpty())
            text = t.sDefault.trimmed();
        if (t.iLen > 0)
            text = text.left(t.iLen).trimmed();
    }
    if (iCase == 1)
        text = text.toUpper();
    else if (iCase == 2)
        text = text.toLower();
    if (text.isEmpty()) {
        text = QStringLiteral("ERROR");
        gpTerm_Missing(QStringLiteral("Defined\\Default"));
    }
    return text;
}

QString gfsTerm(const QString &sName, int iCase) { return gfsTerm(gfiTerm_Index(sName), iCase); }

void gpTerm_Missing(const QString &sWhich)
{
    gfiMsgBox(QStringLiteral("ZOR Term '") + sWhich + QStringLiteral("' Not Found") + QLatin1Char('\r') +
              QStringLiteral("Call ZOR Support"));
}

} // namespace qln
