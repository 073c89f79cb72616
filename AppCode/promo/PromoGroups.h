#pragma once
#include "promo/PromoPricing.h"

#include <QList>
#include <QString>

// The list of promo groups: a number and a name each, kept one a line in Groups.QLN in the
// data path. The number is the GroupID of every PromoPrices row of the group's promo.
namespace qln {

constexpr int kGroupCodesMax = 999;
constexpr int kGroupCodeLength = 3;
constexpr int kGroupLabelLength = 30;

struct PromoGroup {
    QString sCode;  // trimmed
    QString sLabel; // as written, less its trailing blanks
};

// The groups file of the open data path.
QString gfsGroups_file();

// One line of the file: "[CODE]" code " [LABEL]" label. A "[" in the label ends it on
// the next read.
QString gfsGroup_line(const PromoGroup &group);
// The two fields of a line; an empty code means the line holds no group.
PromoGroup gfGroup_parse(const QString &sLine);

// The groups of a file in its order, lines with no code left out. False when the file is
// missing or can't be read; the list is then empty.
bool gfbGroups_read(const QString &sFile, QList<PromoGroup> &groups);
// Rewrites the file whole, one line a group, empty entries too (a later read skips them).
bool gfbGroups_write(const QString &sFile, const QList<PromoGroup> &groups);

// All codes run together, as the group editor keeps them.
QString gfsGroup_codes(const QList<PromoGroup> &groups);

// A code the server can take as a number.
bool gfbGroup_code_numeric(const QString &sCode);
// Removes every promo row of the group, whatever the mode of the data set: no tombstones for
// the stores. The rows removed; 0 for a code that isn't numeric or a refused statement.
int gfiGroup_promos_delete(const QString &sCode);

// The entry of a group in a group selector: the number, two blanks and the name.
QString gfsGroup_choice_text(const PromoGroup &group);
// The rows of a group, tombstones and expired ones too, by SL.
QString gfsGroup_rows_sql(int iGroupID);

// Takes an editor's values into the shared record of a group, matrix or daily promo: dates
// compared by day, the amount and type together. True when any of them changed.
bool gfbGroupPromo_take(PromoPriceRecord &group, const QDate &start, const QDate &end, int changeType, Money amount);

} // namespace qln
