#pragma once
#include "promo/PromoPricing.h"

#include <QDateTime>
#include <QList>
#include <memory>

// A walk of PromoPrices along a key of a whole number and a date: a keyed read, then
// Get Next until it finds nothing. Here the rows the walk can reach are read with one
// statement, and the steps are played over them: a step goes to the first row whose key
// lies beyond the buffer's, so it never reaches a second row of the same key. Which of the
// rows sharing a key a step lands on is the engine's choice, so that step is still sent
// when the caller looks at more than the key; so is the last, so that the buffer and the
// table's record set end as the steps leave them.
namespace qln {

class Recordset;

// KeyOnly: the caller looks at the key alone, so the rows before the last set only the key's
// fields of the buffer. WholeRow: each row is read whole, as its step reads it.
enum class WalkTies { KeyOnly, WholeRow };

class PromoWalk {
public:
    PromoWalk(int iKey, WalkTies ties);
    ~PromoWalk();
    PromoWalk(const PromoWalk &) = delete;
    PromoWalk &operator=(const PromoWalk &) = delete;

    // The keyed read that begins the walk (kOpGetFirst, kOpGreaterEqual, ...), on gPromo.
    bool begin(int iOperation);
    // As Get Next on the key from the row begin or next gave: the next row in gPromo, or
    // false with the buffer as it was. The buffer must still hold that row's key.
    bool next();

private:
    struct Reach {
        int row;   // first row of the key in the set
        int rows;  // rows that share its key
    };
    void mpSet_read();
    bool mfbStep();
    bool mfbKey_is(const Reach &reach);

    int m_key;
    WalkTies m_ties;
    std::unique_ptr<Recordset> m_rows;
    int m_position = 0; // the set's current row
    QList<Reach> m_reached;
    qsizetype m_next = 0;
    bool m_steps = true; // from here on every step is sent
    int m_numberColumn = -1, m_dateColumn = -1;
    qint32 PromoPriceRecord::*m_number = nullptr;
    QDateTime PromoPriceRecord::*m_date = nullptr;
};

// The lists read their rows in sets (the default). Off, they make the keyed reads one by one:
// the reference the equivalence tests and the benchmarks compare against.
void gpListSets_set(bool bOn);
bool gfbListSets();

} // namespace qln
