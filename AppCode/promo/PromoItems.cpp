#include "promo/PromoItems.h"

#include "platform/Recordset.h"
#include "store/Database.h"
#include "store/RecordOps.h"
#include "store/RowsDecode.h"

#include <QSet>
#include <QStringList>
#include <algorithm>
#include <utility>

namespace qln {

namespace {

int &batchRows()
{
    static int rows = PromoItems::kDefaultBatch;
    return rows;
}

} // namespace

void gpPromoItems_batch_set(int iRows) { batchRows() = qMax(iRows, 0); }
int gfiPromoItems_batch() { return batchRows(); }

PromoItems::PromoItems(std::vector<qint32> invuids, const QStringList &shown) : m_invuids(std::move(invuids))
{
    // The row's number finds it in the batch, and the keyed read sets it all the same.
    if (!shown.isEmpty())
        m_shown = gfInventory_columns(QStringList{QStringLiteral("RecordNum")} + shown);
}

PromoItems::~PromoItems() = default;

bool PromoItems::next()
{
    const size_t at = m_next++;
    const qint32 invuid = m_invuids.at(at);
    if (gfiPromoItems_batch() == 0)
        return mfbKeyed_read(invuid);
    if (at + 1 == m_invuids.size()) {
        const bool found = mfbKeyed_read(invuid);
        if (!found && m_partialItem)
            mpLast_found_restore(invuid);
        return found;
    }
    if (at >= m_readUntil)
        mpBatch_read();
    // A refused batch leaves its rows to the keyed reads, which report as they always did.
    if (m_batchRefused)
        return mfbKeyed_read(invuid);
    const auto found = m_rowOf.constFind(invuid);
    if (found == m_rowOf.constEnd()) {
        gInventory.RecordNum = invuid;
        return false;
    }
    if (*found < m_position) {
        m_rows->moveFirst();
        m_position = 0;
    }
    for (; m_position < *found; ++m_position)
        m_rows->moveNext();
    mpRow_decode();
    return true;
}

void PromoItems::mpRow_decode()
{
    if (m_shown.ordinals.empty()) {
        gpDB_row_decode(kInventoryTable, m_rows);
        return;
    }
    // The field readers read the table's current record set: the batch stands in for it.
    std::swap(dbaRecordset[kInventoryTable], m_rows);
    gpInventory_columns_read(kInventoryTable, m_shown);
    std::swap(dbaRecordset[kInventoryTable], m_rows);
    m_partialItem = gInventory.RecordNum;
}

bool PromoItems::mfbKeyed_read(qint32 invuid)
{
    gInventory.RecordNum = invuid;
    const bool found = gfbDB_RecordOp(kInventoryTable, kOpEqual, 0);
    if (found)
        m_partialItem.reset();
    return found;
}

// The last row's item is missing, so its read changed only RecordNum of a buffer that holds
// the shown fields of the item before: that item is read whole, as the keyed read had it.
void PromoItems::mpLast_found_restore(qint32 invuid)
{
    auto whole = std::make_unique<Recordset>();
    if (whole->open(dbConnection(), QStringLiteral("SELECT * FROM ") + dbuaTable[kInventoryTable].sSqlFile +
                                         QStringLiteral(" WHERE RecordNum = '") + QString::number(*m_partialItem) + QLatin1Char('\'')) &&
        !whole->eof())
        gpDB_row_decode(kInventoryTable, whole);
    gInventory.RecordNum = invuid;
    m_partialItem.reset();
}

// The items of the rows up to the next batch's end, the last row excepted. The values are
// quoted as the keyed read quotes them, so the engine compares them the same way; the list
// is padded to a fixed length so that every batch is one prepared statement. A refused
// batch is not logged: its text is none of the program's, and the keyed reads that stand in
// for it log their own.
void PromoItems::mpBatch_read()
{
    const int batch = gfiPromoItems_batch();
    const size_t end = std::min(m_readUntil + size_t(batch), m_invuids.size() - 1);
    QSet<qint32> seen;
    QStringList values;
    for (size_t i = m_readUntil; i < end; ++i) {
        if (!seen.contains(m_invuids[i])) {
            seen.insert(m_invuids[i]);
            values << QLatin1Char('\'') + QString::number(m_invuids[i]) + QLatin1Char('\'');
        }
    }
    m_readUntil = end;
    m_rowOf.clear();
    while (values.size() < batch)
        values << values.constLast();
    const QString &table = dbuaTable[kInventoryTable].sSqlFile;
    const QString columns = m_shown.ordinals.empty() ? QStringLiteral("*") : m_shown.selectList;
    m_rows = std::make_unique<Recordset>();
    m_batchRefused = !m_rows->open(dbConnection(), QStringLiteral("SELECT ") + columns + QStringLiteral(" FROM ") + table +
                                                       QStringLiteral(" WHERE RecordNum IN (") + values.join(QLatin1Char(',')) +
                                                       QLatin1Char(')'));
    if (m_batchRefused)
        return;
    if (!m_shown.ordinals.empty())
        m_rows->describe(table);
    const int recordNum = m_rows->fieldIndex(QStringLiteral("RecordNum"));
    int row = 0;
    for (m_rows->moveFirst(); !m_rows->eof(); m_rows->moveNext(), ++row)
        if (!m_rowOf.contains(m_rows->readInteger(recordNum)))
            m_rowOf.insert(m_rows->readInteger(recordNum), row);
    m_rows->moveFirst();
    m_position = 0;
}

} // namespace qln
