#pragma once
#include "common/Csv.h"
#include "promo/PromoKind.h"
#include "promo/PromoPricing.h"
#include "store/Inventory.h"

#include <QDate>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

// Promos added in bulk, from the lines of a file or copied from promos already in the table:
// each checked as its editor checks it, the whole lot written in one transaction or not at
// all. Nothing here asks the user anything.
namespace qln {

// One promo to add, and the line (or the promo) it came from.
struct PromoDraft {
    QString origin; // "line 12", "UniqueID 40"
    PromoKind kind = PromoKind::Item; // item, dept or daily
    QString sl;   // item key, for an item promo
    QString dept; // for a department promo
    QDate start;
    QDate end;
    qint16 changeType = 0;
    Money amount;
    qint32 invuid = 0; // the item's RecordNum, once found
};

struct PromoAddNote {
    QString origin;
    QString text;
    bool refused = true; // false: said, but no reason to refuse
};

class PromoAddition {
public:
    // The lines of a file: a header naming at least the columns an addition needs (others are
    // ignored), then one promo a line. Lines in error become notes.
    void lines_take(const CsvText &csv);
    void draft_take(const PromoDraft &draft) { m_drafts << draft; }

    // The checks that need the tables: the item or department exists, the item takes
    // discounts, the item's promo price is above zero and not above its regular price.
    // False when the server refused a read.
    bool check();

    // Promos in the table that reach what each draft reaches on some of its days.
    struct Overlap {
        QString origin;
        PromoPriceRecord existing;
    };
    bool overlaps_find(QList<Overlap> &overlaps);

    bool refused() const;
    const QList<PromoDraft> &drafts() const { return m_drafts; }
    const QList<PromoAddNote> &notes() const { return m_notes; }

    // Every draft written as its editor writes it, all in one transaction: on any refusal
    // nothing stays and `error` says which promo failed and why. `progress` is told each row.
    bool write(QString &error, const std::function<void(qsizetype done)> &progress = {});

private:
    bool items_read();
    void refuse(const QString &origin, const QString &text) { m_notes << PromoAddNote{origin, text, true}; }
    bool draft_write(const PromoDraft &draft, qint32 uniqueID, qint32 &dailyGroupID);

    QList<PromoDraft> m_drafts;
    QList<PromoAddNote> m_notes;
    QHash<QString, InventoryRecord> m_items; // by key, trimmed and upper-cased
};

// Copies of the live promos of one kind (item, dept or daily) that start from `from` to `to`,
// dated `days` later, each named by the UniqueID of its original. False when the server
// refused the read.
bool gfbPromoShift_take(PromoAddition &addition, PromoKind kind, const QDate &from, const QDate &to, int days);

} // namespace qln
