#pragma once
#include "promo/PromoPricing.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

// The writes of the group promos window: members added from a list of items, the group's
// promo changed for every member, one member removed, the purge of expired rows.
namespace qln {

// Adds one row per item (SLs in key form) to the group's rows, each a copy of gGroupPromo.
// An item the group already holds with the same end date is refused ("already exists"); a
// refused insert stays in the list all the same. The number of items handled.
int gfiGroupMembers_add(const QStringList &slKeys, QList<PromoPriceRecord> &rows);

// Every member takes the values of gGroupPromo; each row is found by its item and start date.
void gpGroupMembers_change(QList<PromoPriceRecord> &rows);

enum class MemberDeleteEnd { NotConfirmed, NotFound, Deleted, NotDeleted, Marked };
// Removes the member of the group whose line shows sSL and the end date: gone at once in a
// single store, a tombstone for the stores otherwise.
MemberDeleteEnd gfeGroupMember_delete(int iGroupID, const QString &sSLShown, const QDate &end);
// The statement by which a single store removes a member.
QString gfsGroupMember_delete_sql(const QDate &end, int iGroupID, const QString &sSL);

// The purge of the group's expired rows. Where the last row up to today is expired the
// statement sent names the company table, which the server refuses: the log keeps it and no
// promo row goes. False when the user said no.
bool gfbGroupPromos_purge(int iGroupID);
QString gfsGroupPurge_sql(int iGroupID);

} // namespace qln
