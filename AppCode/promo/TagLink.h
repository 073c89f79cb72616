#pragma once
#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

// The hand-over of promos to the suite's tag program: where it lives, the list lines of
// picked promos, the file of item numbers and the command line that names it.
namespace qln {

inline const QString kTagProgram = QStringLiteral("LABRIX.EXE");
// Where a companion program's full name is kept: "ZOR Settings", this section, the
// program's name as the key.
inline const QString kAppPathsSection = QStringLiteral("AppPaths");

// True if the tag program exists in the folder gfsAppPath_get names.
bool gfbTagProgram_exists();
// The folder of sProgram: the full name kept under "ZOR Settings", section sKeyBase, key
// sProgram, left of the program's name (case aside) and less the separator; the program's
// own folder when nothing there names it.
QString gfsAppPath_get(const QString &sProgram, const QString &sKeyBase = kAppPathsSection);
// Runs the tag program from the program's own folder on sFile; returns when it has ended.
void gpTagProgram_run(const QString &sFile);

// The command line after the program's name: four items, each closed by a line feed.
QString gfsTagProgram_items(const QString &sFile, const QString &sDataPath, const QString &sStore,
                            const QString &sSalesCode);
// The hand-over file of this station, in the data path.
QString gfsTagFile_name();

// One line of the list of picked promos.
QString gfsTagLine_make(qint32 recordNum, const QString &description, const QString &priceText);
// The item a list line hands over: its first six characters read as a number, so a longer
// number loses its tail.
qint32 gflTagLine_item(const QString &line);
// One line of digits per item; the error's description when the file can't be written.
std::optional<QString> gfsTagFile_write(const QString &sFile, const QList<qint32> &items);

// Whether a promo is listed: with bActiveOnly while it hasn't ended by today (promos yet to
// begin included), otherwise when it runs on the day dTo.
bool gfbTagPromo_taken(const QDate &start, const QDate &end, bool bActiveOnly, const QDate &dTo,
                       const QDate &today);

// The list's lines: the promos listed, in the order of a walk of PromoPrices by Invuid and
// StartDate, each with its item as a keyed read finds it. A promo whose item is gone has no
// line; a tombstone shows the price of the line before it.
QStringList gfTagLines_read(bool bActiveOnly, const QDate &dTo, const QDate &today);

} // namespace qln
