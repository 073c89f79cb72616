#pragma once
#include "common/Money.h"

#include <QDateTime>
#include <QString>
#include <optional>

// The table of all temporary prices and its one record buffer.
namespace qln {

constexpr int kPromoTable = 4;

enum PromoChangeType : qint16 { kChangeTo = 0, kChangeBy = 1, kChangeByPercent = 2, kChangeDeleted = 99 };

struct PromoPriceRecord {
    qint16 Store = 0;
    QString SL;   // 8
    QString Dept; // 11
    QDateTime StartDate;
    QDateTime EndDate;
    QDateTime ChangeDate;
    Money PriceChange;
    qint16 ChangeType = 0;
    QString Poll; // 1
    qint32 GroupID = 0;
    qint32 Invuid = 0;
    qint32 UniqueID = 0;
};

inline PromoPriceRecord gPromo;
inline PromoPriceRecord gGroupPromo; // the values all rows of a group, matrix or daily promo share

// Registers table 4, creates it when missing and installs its routines.
void gpPromo_table_register(int iTable, const QString &sPath);
void gpPromo_table_create(int iTable);
void gpPromo_key_set(int iTable, int iKey);
void gpPromo_row_to_record(int iTable);
// EndDate, ChangeType, Invuid and UniqueID (as the whole read takes it) of the current row
// alone, into gPromo: what a list's filter looks at before it reads the rows it keeps whole.
void gpPromo_row_filter_read(int iTable);
void gpPromo_record_to_row(int iTable);
QString gfsPromo_values_get();
void gpPromo_clear();
qint32 gfiPromo_UniqueID_next(int iTable);
// Numbers the rows of a table from before UniqueID, in start-date order.
bool gfbPromo_upgrade(int iTable, int iCount);

// The promo price of a regular price; none for a tombstone or an unknown type.
std::optional<Money> gfcPromo_price_get(Money regularPrice, Money priceChange, int changeType);
std::optional<Money> gfcPromo_price_get(Money regularPrice, const PromoPriceRecord &promo);

// The price of the old note form "PROMO:<start>:<end>:<price>", as "##.00".
QString mfsPromo_Price_get(const QStringList &notes, int iLine, int iStart);

} // namespace qln
