#pragma once
#include "store/Inventory.h"

#include <QHash>
#include <memory>
#include <optional>
#include <vector>

// The items of the promo rows a list shows. The windows read them with one "=" read on
// key 0 of the item table for each row; here many rows share one statement, and each row
// still gets exactly what its own read would have put in the item buffer.
namespace qln {

class PromoItems {
public:
    // The items of the rows a list will show, in the order it asks for them. With `shown`
    // (item columns), the rows before the last get only those fields, which is all a list
    // looks at; the buffer still ends as the keyed reads leave it.
    explicit PromoItems(std::vector<qint32> invuids, const QStringList &shown = {});
    ~PromoItems();
    PromoItems(const PromoItems &) = delete;
    PromoItems &operator=(const PromoItems &) = delete;

    // The next row's item into gInventory, as "=" on RecordNum leaves the buffer: true
    // and the whole record when found; false and only RecordNum changed when not. The
    // last row goes through the keyed read itself, so that the table's record set and key
    // end where the row-by-row reads leave them.
    bool next();

    static constexpr int kDefaultBatch = 500;

private:
    void mpBatch_read();
    bool mfbKeyed_read(qint32 invuid);
    void mpRow_decode();
    void mpLast_found_restore(qint32 invuid);

    std::vector<qint32> m_invuids;
    size_t m_next = 0;
    size_t m_readUntil = 0; // rows before this one have their batch read
    bool m_batchRefused = false;
    // The batch's rows stay as the engine gave them; a row is decoded into the buffer only
    // when its promo row comes, as the keyed read would decode it.
    std::unique_ptr<class Recordset> m_rows;
    QHash<qint32, int> m_rowOf; // item number -> row of the batch
    int m_position = 0;
    InventoryColumns m_shown;   // none: every column
    // The last item found, when the buffer holds only its shown fields.
    std::optional<qint32> m_partialItem;
};

// Rows whose items share one statement: kDefaultBatch unless set. 0 reads each row's item by its own
// keyed read, the reference the equivalence tests and the benchmarks compare against.
void gpPromoItems_batch_set(int iRows);
int gfiPromoItems_batch();

} // namespace qln
