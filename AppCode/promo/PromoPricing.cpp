#include "promo/PromoPricing.h"

#include "common/ProcessState.h"
#include "store/Database.h"
#include "store/FieldCodec.h"
#include "store/RecordOps.h"
#include "store/TableCreate.h"

namespace qln {

namespace {

enum Field { fStore, fSL, fDept, fStartDate, fEndDate, fChangeDate, fPriceChange, fChangeType, fPoll, fGroupID, fInvuid,
             fUniqueID, kFieldCount };

constexpr int kSLWidth = 8, kDeptWidth = 11, kPollWidth = 1;

} // namespace

void gpPromo_table_register(int iTable, const QString &sPath)
{
    Q_UNUSED(sPath);
    gpDB_Table_register(iTable, QStringLiteral("PromoPrices"), QStringLiteral("PromoPrices"), QStringLiteral("PromoPrices"),
                        QStringLiteral("PROMO PRICING"));
    gpDB_table_routines_set(iTable, {gpPromo_key_set, gpPromo_row_to_record, gpPromo_record_to_row, gfsPromo_values_get});
    if (!gfbDB_TableExists(dbuaTable[iTable].sSqlFile)) {
        gpPromo_table_create(iTable);
        gfbDB_TableCreate(iTable);
    }
}

void gpPromo_table_create(int iTable)
{
    dbuaTable[iTable].sCreateSql = QStringLiteral(
        "Create Table PromoPrices (Store SMALLINT, SL CHAR (8), Dept CHAR (11), StartDate DATETIME, EndDate DATETIME, "
        "ChangeDate DATETIME, PriceChange DECIMAL (18,2), ChangeType SMALLINT, Poll CHAR(1),GroupID SMALLINT, Invuid INTEGER "
        "not null, UniqueID INTEGER);");
    dbuaTable[iTable].sIndexSql = QStringLiteral(
        "Create  Index idx_0 On PromoPrices (SL, EndDate );Create Index idx_1 On PromoPrices (Dept, EndDate);"
        "Create  Index idx_2 On PromoPrices (SL, StartDate );Create Index idx_3 On PromoPrices (Dept, StartDate);"
        "Create  Index idx_4 On PromoPrices (GroupID, EndDate );Create  Index idx_5 On PromoPrices (GroupID,SL, StartDate );"
        "Create Index idx_6 On PromoPrices (GroupID, StartDate);Create  Index idx_7 On PromoPrices (Invuid, EndDate );"
        "Create  Index idx_8 On PromoPrices (Invuid, StartDate );Create UNIQUE Index UniqueID On PromoPrices (UniqueID);");
}

void gpPromo_key_set(int iTable, int iKey)
{
    const PromoPriceRecord &p = gPromo;
    const QString end = gfsDate_keyText(p.EndDate), start = gfsDate_keyText(p.StartDate);
    switch (iKey) {
    case 0: gpDB_KeySet(iTable, 2, {{fSL, p.SL}, {fEndDate, end}}); break;
    case 1: gpDB_KeySet(iTable, 2, {{fDept, p.Dept}, {fEndDate, end}}); break;
    case 2: gpDB_KeySet(iTable, 2, {{fSL, p.SL}, {fStartDate, start}}); break;
    case 3: gpDB_KeySet(iTable, 2, {{fDept, p.Dept}, {fStartDate, start}}); break;
    case 4: gpDB_KeySet(iTable, 2, {{fGroupID, p.GroupID}, {fEndDate, end}}); break;
    case 5: gpDB_KeySet(iTable, 3, {{fGroupID, p.GroupID}, {fSL, p.SL}, {fEndDate, end}}); break;
    case 6: gpDB_KeySet(iTable, 2, {{fGroupID, p.GroupID}, {fStartDate, start}}); break;
    case 7: gpDB_KeySet(iTable, 2, {{fInvuid, p.Invuid}, {fEndDate, end}}); break;
    case 8: gpDB_KeySet(iTable, 2, {{fInvuid, p.Invuid}, {fStartDate, start}}); break;
    default: break;
    }
}

void gpPromo_row_filter_read(int iTable)
{
    gPromo.EndDate = gfdField_date(iTable, fEndDate);
    gPromo.ChangeType = qint16(gfiField_number(iTable, fChangeType));
    gPromo.Invuid = gfiField_number(iTable, fInvuid);
    if (!gfbField_isNull(iTable, fUniqueID))
        gPromo.UniqueID = gfiField_number(iTable, fUniqueID);
}

void gpPromo_row_to_record(int iTable)
{
    PromoPriceRecord &p = gPromo;
    p.Store = qint16(gfiField_number(iTable, fStore));
    p.SL = gfsField_text(iTable, fSL, kSLWidth);
    p.Dept = gfsField_text(iTable, fDept, kDeptWidth);
    p.StartDate = gfdField_date(iTable, fStartDate);
    p.EndDate = gfdField_date(iTable, fEndDate);
    p.ChangeDate = gfdField_date(iTable, fChangeDate);
    p.PriceChange = gfcField_money(iTable, fPriceChange);
    p.ChangeType = qint16(gfiField_number(iTable, fChangeType));
    p.Poll = gfsField_text(iTable, fPoll, kPollWidth);
    p.GroupID = gfiField_number(iTable, fGroupID);
    p.Invuid = gfiField_number(iTable, fInvuid);
    if (!gfbField_isNull(iTable, fUniqueID)) // rows from before the numbering keep the buffer's
        p.UniqueID = gfiField_number(iTable, fUniqueID);
}

void gpPromo_record_to_row(int iTable)
{
    const PromoPriceRecord &p = gPromo;
    gpDB_FieldSet(iTable, fStore, p.Store);
    gpDB_FieldSet(iTable, fSL, p.SL);
    gpDB_FieldSet(iTable, fDept, p.Dept);
    gpDB_FieldSet(iTable, fStartDate, p.StartDate);
    gpDB_FieldSet(iTable, fEndDate, p.EndDate);
    gpDB_FieldSet(iTable, fChangeDate, p.ChangeDate);
    gpDB_FieldSet(iTable, fPriceChange, p.PriceChange.toPlainText());
    gpDB_FieldSet(iTable, fChangeType, p.ChangeType);
    gpDB_FieldSet(iTable, fPoll, p.Poll);
    gpDB_FieldSet(iTable, fGroupID, p.GroupID);
    gpDB_FieldSet(iTable, fInvuid, p.Invuid);
    gpDB_FieldSet(iTable, fUniqueID, p.UniqueID);
}

QString gfsPromo_values_get()
{
    PromoPriceRecord &p = gPromo;
    const QString sl = p.SL, dept = p.Dept, poll = p.Poll;
    auto quoted = [](const QString &text, int width) { return gfsDB_Quote(text, true, width); };
    const QString values = QString::number(p.Store) + QStringLiteral(", '") + quoted(sl, kSLWidth) + QStringLiteral("','") +
                           quoted(dept, kDeptWidth) + QStringLiteral("','") + gfsDate_keyText(p.StartDate) +
                           QStringLiteral("','") + gfsDate_keyText(p.EndDate) + QStringLiteral("','") +
                           gfsDate_keyText(p.ChangeDate) + QStringLiteral("',") + p.PriceChange.toPlainText() +
                           QStringLiteral(", ") + QString::number(p.ChangeType) + QStringLiteral(", '") +
                           quoted(poll, kPollWidth) + QStringLiteral("',") + QString::number(p.GroupID) +
                           QLatin1Char(',') + QString::number(p.Invuid) + QLatin1Char(',') + QString::number(p.UniqueID);
    return values;
}

void gpPromo_clear()
{
    gPromo = PromoPriceRecord();
    gPromo.SL = QString(kSLWidth, QLatin1Char(' '));
    gPromo.Dept = QString(kDeptWidth, QLatin1Char(' '));
    gPromo.Poll = QString(kPollWidth, QLatin1Char(' '));
    gPromo.StartDate = gPromo.EndDate = gPromo.ChangeDate = gfdDate_zero();
}

qint32 gfiPromo_UniqueID_next(int iTable)
{
    Q_UNUSED(iTable);
    Recordset highest;
    if (!highest.open(dbConnection(), QStringLiteral("select top 1 * from PromoPrices order by uniqueID desc")) ||
        highest.recordCount() == 0)
        return 1;
    return highest.value(fUniqueID).toInt() + 1;
}

bool gfbPromo_upgrade(int iTable, int iCount)
{
    Q_UNUSED(iCount);
    gfbDB_ColumnAdd(iTable, QStringLiteral("UniqueID"), QStringLiteral("INTEGER"));
    Recordset rows;
    if (!rows.open(dbConnection(), QStringLiteral("SELECT * FROM PromoPrices ORDER BY StartDate,invuid ASC")))
        return false;
    const int uniqueId = rows.fieldIndex(QStringLiteral("UniqueID"));
    int n = 0;
    for (rows.moveFirst(); !rows.eof(); rows.moveNext()) {
        rows.setValue(uniqueId, ++n);
        if (!rows.update())
            return false;
    }
    return dbConnection().execute(QStringLiteral("Create UNIQUE Index UniqueID On PROMOPRICES (UniqueID)"));
}

std::optional<Money> gfcPromo_price_get(Money regularPrice, Money priceChange, int changeType)
{
    switch (changeType) {
    case kChangeTo:
        return priceChange;
    case kChangeBy:
        return regularPrice - priceChange;
    case kChangeByPercent: {
        // Currency times currency rounds half to even; the product then goes through a
        // double and back: 9.99 at 15 is 8.4915.
        const __int128 raw = __int128(regularPrice.units()) * priceChange.units();
        __int128 productUnits = raw / Money::kScale;
        const __int128 rest = (raw < 0 ? -raw : raw) % Money::kScale;
        if (rest * 2 > Money::kScale || (rest * 2 == Money::kScale && productUnits % 2 != 0))
            productUnits += raw < 0 ? -1 : 1;
        const double off = double(qint64(productUnits)) / Money::kScale / 100.0;
        return regularPrice - Money::fromDouble(off);
    }
    default:
        return std::nullopt;
    }
}

std::optional<Money> gfcPromo_price_get(Money regularPrice, const PromoPriceRecord &promo)
{
    return gfcPromo_price_get(regularPrice, promo.PriceChange, promo.ChangeType);
}

QString mfsPromo_Price_get(const QStringList &notes, int iLine, int iStart)
{
    const QString line = notes.value(iLine);
    int at = qMax(0, iStart - 1);
    for (int colon = 0; colon < 3 && at >= 0; ++colon) {
        at = line.indexOf(QLatin1Char(':'), at);
        if (at >= 0)
            ++at;
    }
    const Money price = at >= 0 ? Money::parse(line.mid(at).trimmed()).value_or(Money()) : Money();
    return price.toText(2);
}

} // namespace qln
