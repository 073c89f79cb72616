#pragma once
#include <QString>
#include <QStringList>

// The texts of a printed list's header and footer, set by the caller before each print.
namespace qln {

inline QString sPrintHeadLeft;   // company line
inline QString sPrintTitle;      // title of the list
inline QString sPrintHeadRight;  // date of today
inline QString sPrintFootLeft;
inline QString sPrintFootCentre; // "Store #" and the number in a store list
inline QString sPrintFootRight;  // empty as a rule: the page number then follows the centre
inline const QString sPrintRowEnd = QStringLiteral("\n");
inline QString sPrintColumnFormat;
inline QString sPrintHeadRow;
inline int iPrintLastCol = 0;
inline bool bPrintSplitColumns = false;
// Lines that head the list on its first page and repeat on every later one.
inline QStringList gsaPrint_HeadLines;

// "left|title|date", each later part only when its trim isn't empty.
QString gfsPrint_Header();
// "left|centre|right"; with no right part "Page %d" is glued to the centre text. Kept so.
QString gfsPrint_Footer();

// The values a window gives its list: the title, a second title, the company line and the
// store line. Today's date is taken when the list is printed.
struct PrintHead {
    QString title;
    QString subtitle;
    QString company;
    QString store;
};
// A store list: the company name of the company settings and "Store #" with the store number.
PrintHead gfPrintHead_store(const QString &title, const QString &subtitle = QString());
// Sets every part of the state from the head, split columns off; nothing of an earlier print
// survives.
void gpPrint_head_set(const PrintHead &head);

} // namespace qln
