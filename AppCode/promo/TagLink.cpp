#include "promo/TagLink.h"

#include "common/Files.h"
#include "common/ProcessState.h"
#include "platform/Settings.h"
#include "promo/PromoItems.h"
#include "promo/PromoPricing.h"
#include "promo/PromoWalk.h"
#include "store/Inventory.h"
#include "store/RecordOps.h"
#include "store/StatementLog.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTextStream>

namespace qln {

namespace {
constexpr int kItemWidth = 6;
constexpr int kDescriptionWidth = 30;
constexpr int kPromoByInvuidStart = 8;
const QDate kFirstPromoDay(1990, 1, 1);
const QString kItemGap(kItemWidth, QLatin1Char(' '));
} // namespace

bool gfbTagProgram_exists()
{
    QString folder = gfsAppPath_get(kTagProgram);
    if (folder.isEmpty())
        folder = gsAppPath;
    return gfb_FileExists(QDir(folder).filePath(kTagProgram));
}

QString gfsAppPath_get(const QString &sProgram, const QString &sKeyBase)
{
    const QString fullName = GetSetting(kZorSettings, sKeyBase, sProgram);
    const qsizetype at = fullName.toUpper().indexOf(sProgram.toUpper());
    if (sProgram.isEmpty() || at < 0)
        return gsAppPath;
    return fullName.left(at).chopped(at > 0 ? 1 : 0);
}

// The tag program reads one argument holding the four lines; it is started from the
// program's own folder even when the settings name another.
void gpTagProgram_run(const QString &sFile)
{
    QProcess tagProgram;
    tagProgram.setProgram(QDir(gsAppPath).filePath(kTagProgram));
    tagProgram.setArguments({gfsTagProgram_items(sFile, gsDataPath, QString::number(giStore), gsSalesCode)});
    tagProgram.setProcessChannelMode(QProcess::ForwardedChannels);
    tagProgram.start();
    if (tagProgram.waitForStarted())
        tagProgram.waitForFinished(-1);
}

QString gfsTagProgram_items(const QString &sFile, const QString &sDataPath, const QString &sStore,
                            const QString &sSalesCode)
{
    const QChar lf(10);
    return QStringLiteral("FILE=") + sFile + lf + QStringLiteral("PATH=") + sDataPath + lf + QStringLiteral("STORE=") +
           sStore + lf + QStringLiteral("USER=") + sSalesCode + lf;
}

QString gfsTagFile_name()
{
    return gfsDataPath_file(QStringLiteral("ITAGS") + gsStation + QStringLiteral(".TMP"));
}

QString gfsTagLine_make(qint32 recordNum, const QString &description, const QString &priceText)
{
    return QString::number(recordNum) + kItemGap +
           description.leftJustified(kDescriptionWidth, QLatin1Char(' '), true) + QLatin1Char(' ') + priceText;
}

qint32 gflTagLine_item(const QString &line)
{
    // Leading digits only: a short number is followed by the gap.
    const QString head = line.left(kItemWidth).trimmed();
    qsizetype digits = 0;
    while (digits < head.size() && head.at(digits).isDigit())
        ++digits;
    return head.left(digits).toInt();
}

std::optional<QString> gfsTagFile_write(const QString &sFile, const QList<qint32> &items)
{
    gfbFile_delete(sFile);
    QFile file(sFile);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return file.errorString();
    QTextStream out(&file);
    for (qint32 item : items)
        out << item << "\r\n";
    out.flush();
    if (out.status() != QTextStream::Ok)
        return file.errorString();
    return std::nullopt;
}

bool gfbTagPromo_taken(const QDate &start, const QDate &end, bool bActiveOnly, const QDate &dTo, const QDate &today)
{
    if (bActiveOnly)
        return end >= today;
    return start <= dTo && end >= dTo;
}

QStringList gfTagLines_read(bool bActiveOnly, const QDate &dTo, const QDate &today)
{
    QList<PromoPriceRecord> taken;
    gPromo.Invuid = 0;
    gPromo.StartDate = QDateTime(kFirstPromoDay, QTime(0, 0));
    // A line shows the row's dates and price: of rows sharing a key, the one the step finds.
    PromoWalk walk(kPromoByInvuidStart, WalkTies::WholeRow);
    for (bool found = walk.begin(kOpGetFirst); found; found = walk.next())
        if (gfbTagPromo_taken(gPromo.StartDate.date(), gPromo.EndDate.date(), bActiveOnly, dTo, today))
            taken << gPromo;
    std::vector<qint32> invuids;
    invuids.reserve(size_t(taken.size()));
    for (const PromoPriceRecord &promo : std::as_const(taken))
        invuids.push_back(promo.Invuid);
    PromoItems items(std::move(invuids), {QStringLiteral("Description"), QStringLiteral("Price")});
    QStringList lines;
    QString priceText;
    for (const PromoPriceRecord &promo : std::as_const(taken)) {
        if (!items.next())
            continue;
        if (const std::optional<Money> price = gfcPromo_price_get(gInventory.Price, promo))
            priceText = price->toText(2);
        lines << gfsTagLine_make(gInventory.RecordNum, gInventory.Description, priceText);
    }
    return lines;
}

} // namespace qln
