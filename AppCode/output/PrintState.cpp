#include "output/PrintState.h"

#include "common/DateForms.h"
#include "common/ProcessState.h"
#include "platform/Clock.h"
#include "store/Common.h"

namespace qln {

namespace {
bool isBlank(const QString &text) { return text.trimmed().isEmpty(); }

QString trimmedRight(QString text)
{
    while (!text.isEmpty() && text.back().isSpace())
        text.chop(1);
    return text;
}
} // namespace

QString gfsPrint_Header()
{
    QString header = sPrintHeadLeft + QLatin1Char('|');
    if (!isBlank(sPrintTitle))
        header += sPrintTitle;
    if (!isBlank(sPrintHeadRight))
        header += QLatin1Char('|') + sPrintHeadRight;
    return header;
}

QString gfsPrint_Footer()
{
    QString footer = sPrintFootLeft + QLatin1Char('|');
    if (!isBlank(sPrintFootCentre))
        footer += sPrintFootCentre;
    if (!isBlank(sPrintFootRight))
        footer += QLatin1Char('|') + sPrintFootRight;
    else
        footer += QStringLiteral("Page %d");
    return footer;
}

PrintHead gfPrintHead_store(const QString &title, const QString &subtitle)
{
    return {title, subtitle, trimmedRight(gCommon.Cname), QStringLiteral("Store #") + gsStore};
}

void gpPrint_head_set(const PrintHead &head)
{
    sPrintHeadLeft = head.company;
    sPrintTitle = head.title;
    sPrintHeadRight = gfsDate_short(Clock::today(), gCommon.USEurope);
    sPrintFootLeft.clear();
    sPrintFootCentre = head.store;
    sPrintFootRight.clear();
    gsaPrint_HeadLines.clear();
    bPrintSplitColumns = false;
    if (!isBlank(head.subtitle))
        gsaPrint_HeadLines << head.subtitle;
}

} // namespace qln
