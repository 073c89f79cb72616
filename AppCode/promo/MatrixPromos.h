#pragma once
#include "promo/PromoPricing.h"
#include "store/MtxItem.h"

#include <QList>
#include <QString>
#include <QStringList>

// A promo on a matrix of the back office: one PromoPrices row for each item of the matrix,
// all with GroupID 1000 + the matrix's GroupUID and the same dates, type and amount. The
// rows stand by themselves once written: an item added to the matrix later is not covered.
namespace qln {

constexpr qint32 kMatrixGroupBase = 1000;

inline const QString kMatrixNoneExisting = QStringLiteral("None existing ");
inline const QString kMatrixSelectGroup = QStringLiteral("Select Group");

// The starting date from which the lists look for a matrix's promo rows.
QDateTime gfdMatrixPromos_since();

// The selector of matrices that have a promo: "Select Group", then "<GroupID>  <name>" for
// each, in the order of their rows; or "None existing " alone.
QStringList gfMatrixPromo_choices();

// The picker's matrices: those defined and built (MatrixExists and MatrixBuilt) with no
// promo yet, "<GroupID>" and the name, parted by two blanks or, when no promo row stands
// beyond the matrix's number, by a tab.
QStringList gfMatrixList_entries();

// The number an entry of either list begins with: its first `digits` characters as a number.
qint32 gfiMatrix_entry_number(const QString &entry, int digits);

// The items of a matrix in the order a walk of MtxItem by (InvUID, MatrixGroupUID) meets
// them, from the matrix's first row on, up to the first row of another matrix. `members`
// gets the number of rows the matrix has in all. False when the server refused a read.
bool gfbMatrix_items_walk(qint32 groupUID, QList<MtxItemRecord> &walk, int &members);

// What an expansion did.
struct MatrixExpansion {
    bool walked = false;           // the matrix's first row was found: `rows` replaces the window's
    QList<PromoPriceRecord> rows;  // one for each item met, written now or there before
    int failed = 0;                // inserts the server refused
    QList<qint32> missing;         // InvUIDs of items gone from the item file: no row for them
    int notReached = 0;            // items of the matrix the walk stopped before
};
// One row for each item of the matrix of gGroupPromo.GroupID, with its dates, type and amount.
// An item that already has a row of the promo with the same ending date keeps it.
MatrixExpansion gfMatrixPromo_expand();

// Writes gGroupPromo's values into each row of the promo that is still there; a row the server
// refuses is told with "record not updated".
void gpMatrixPromo_change(QList<PromoPriceRecord> &rows);

// Removes the rows with gGroupPromo's GroupID and StartDate, in every mode of the data set: no
// tombstone stays. The count removed.
int gfiMatrixPromo_delete();

} // namespace qln
