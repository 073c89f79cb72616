#include "promo/PromoGroups.h"

#include "common/AnsiText.h"
#include "common/Files.h"
#include "common/NumberFormat.h"
#include "common/Numbers.h"
#include "common/Text.h"
#include "store/RecordOps.h"
#include "store/StatementLog.h"

#include <QFile>

namespace qln {

namespace {
const QString kCodeTag = QStringLiteral("[CODE]");
const QString kLabelTag = QStringLiteral("[LABEL]");
const QString kFieldEnd = QStringLiteral("[");
} // namespace

QString gfsGroups_file() { return gfsDataPath_file(QStringLiteral("Groups.QLN")); }

QString gfsGroup_line(const PromoGroup &group)
{
    return kCodeTag + group.sCode + QLatin1Char(' ') + kLabelTag + group.sLabel;
}

PromoGroup gfGroup_parse(const QString &sLine)
{
    if (sLine.trimmed().isEmpty())
        return {};
    return {gfsField_read(sLine, kCodeTag, kFieldEnd).trimmed(), gfsField_read(sLine, kLabelTag, kFieldEnd)};
}

bool gfbGroups_read(const QString &sFile, QList<PromoGroup> &groups)
{
    groups.clear();
    QFile file(sFile);
    if (!gfb_FileExists(sFile) || !file.open(QIODevice::ReadOnly))
        return false;
    // Lines end in LF or CR LF, whichever wrote the file.
    const QStringList lines = gfsAnsi_decode(file.readAll()).split(QLatin1Char('\n'));
    for (QString line : lines) {
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
        const PromoGroup group = gfGroup_parse(line);
        if (!group.sCode.isEmpty())
            groups << group;
    }
    return true;
}

bool gfbGroups_write(const QString &sFile, const QList<PromoGroup> &groups)
{
    if (!gfbFile_delete(sFile))
        return false;
    QByteArray text;
    for (const PromoGroup &group : groups)
        text += gfsAnsi_encode(gfsGroup_line(group)) + '\n';
    QFile file(sFile);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

QString gfsGroup_codes(const QList<PromoGroup> &groups)
{
    QString codes;
    for (const PromoGroup &group : groups)
        codes += group.sCode;
    return codes;
}

bool gfbGroup_code_numeric(const QString &sCode)
{
    bool number = false;
    sCode.trimmed().toDouble(&number);
    return number;
}

int gfiGroup_promos_delete(const QString &sCode)
{
    if (!gfbGroup_code_numeric(sCode))
        return 0;
    return gfiDB_Execute(QStringLiteral("DELETE FROM  PromoPrices  WHERE Groupid = ") + sCode);
}

QString gfsGroup_choice_text(const PromoGroup &group)
{
    return gfsNumber_format(gfdNumber_value(group.sCode), QStringLiteral("##0")) + QStringLiteral("  ") + group.sLabel;
}

QString gfsGroup_rows_sql(int iGroupID)
{
    // The blank inside the quotes is the statement's own; the engines read the text as a number.
    return QStringLiteral("SELECT * FROM PromoPrices WHERE groupid='") + QString::number(iGroupID) +
           QStringLiteral(" ' order by SL");
}

bool gfbGroupPromo_take(PromoPriceRecord &group, const QDate &start, const QDate &end, int changeType, Money amount)
{
    bool changed = false;
    if (start != group.StartDate.date()) {
        group.StartDate = QDateTime(start, QTime(0, 0));
        changed = true;
    }
    if (end != group.EndDate.date()) {
        group.EndDate = QDateTime(end, QTime(0, 0));
        changed = true;
    }
    if (amount != group.PriceChange || changeType != group.ChangeType) {
        group.ChangeType = qint16(changeType);
        group.PriceChange = amount;
        changed = true;
    }
    return changed;
}

} // namespace qln
