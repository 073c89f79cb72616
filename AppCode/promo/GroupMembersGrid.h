#pragma once
#include "promo/GroupMembers.h"
#include "promo/PromoWindow.h"

#include <functional>

// The grid of a window that lists the member items of one GroupID (group and matrix promos).
namespace qln {

class FlexGrid;

constexpr PromoGridColumn kGroupMemberColumns[] = {
    {"S/L", 800, kAlignKeep},         {"Description", 2200, kAlignKeep}, {"Reg. Price", 825, kAlignRight},
    {"Promo Price", 935, kAlignRight}, {"Starting", 1000, kAlignCenter},  {"Ending", 1000, kAlignCenter},
    {"Type Change", 900, kAlignCenter}, {"Amount", 825, kAlignCenter}};

// Clears the grid to its header and one empty row.
void gpGroupMembers_layout(FlexGrid &grid);

// How a window fills the lines of its members.
struct GroupMembersFill {
    // A member whose item is gone (or named by no number) leaves no line, and the next member
    // takes the empty one; otherwise its line stays empty.
    bool bReuseEmptyLine = true;
    // Members the window leaves out (their lines stay empty); none when unset.
    std::function<bool(const PromoPriceRecord &)> hidden;
    // The description of the item in gInventory; its Description when unset.
    std::function<QString()> description;
    GroupMemberWording wording;
};

// Lays the grid out and writes one line per member; the members' items are read into
// gInventory as one keyed read for each would read them. True when there was any member.
bool gfbGroupMembers_fill(FlexGrid &grid, const QList<PromoPriceRecord> &rows, const GroupMembersFill &how);

} // namespace qln
