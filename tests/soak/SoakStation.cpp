// One station of the soak: adds, changes and deletes item and department promos through the
// editors' saves for a given time, as fast as it can, and logs what it was told each time.
//
//   quillon_soak_station <data path> <station> <seconds> <log> <RecordNum,...> <dept code,...>
//
// The database is the one the user's settings name (XDG_CONFIG_HOME of the caller). Log lines
// are tab-separated: op, outcome (saved / failed / failed-flag), UniqueID, SL or department,
// start, end, change type, amount, and the system's message; "box" lines hold message boxes.
#include "SoakLog.h"

#include "common/ProcessState.h"
#include "platform/Clock.h"
#include "platform/Messages.h"
#include "promo/PromoPricing.h"
#include "promo/PromoSave.h"
#include "shell/Tables.h"
#include "store/Database.h"
#include "store/Departments.h"
#include "store/Inventory.h"
#include "store/RecordOps.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QTextStream>
#include <cstdio>

using namespace qln;
using namespace qln::soak;

namespace {

QTextStream *gLog = nullptr;

// Whatever box the program raises is written down; nobody is there to answer it.
class LoggedMessages final : public Messages {
public:
    MsgAnswer show(const MessageBoxSpec &box) override
    {
        QString text = box.text;
        text.replace(QLatin1Char('\r'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
        *gLog << "box\t" << text << '\n';
        gLog->flush();
        return defaultAnswer(box);
    }
};

class Station {
    // A row this station saved and still works on.
    struct Row {
        bool item = true;
        qint32 uid = 0;
        qint32 invuid = 0;
        QString key;
        PromoEntry entry;
    };

public:
    Station(int number, QList<qint32> items, QStringList depts)
        : m_rng(quint32(number) * 7919u + 17u), m_items(std::move(items)), m_depts(std::move(depts)),
          m_firstStart(QDate(2031, 1, 1).addDays(number * 100000))
    {
    }

    void step()
    {
        const int roll = int(m_rng.bounded(100));
        if (m_live.isEmpty() || roll < 45)
            add(roll % 3 != 0);
        else if (roll < 80)
            change(pickLive());
        else
            remove(pickLive());
    }

private:
    qsizetype pickLive() { return qsizetype(m_rng.bounded(quint32(m_live.size()))); }

    // A start date no other row has: stations take theirs from ranges far apart, and within a
    // station each add takes the next day. A walk on "SL, StartDate" never reaches a second row
    // with the same start (the next row is the next key), so two rows on one start would make
    // the second one unreachable, as it is in the windows.
    QDate freeStart() { return m_firstStart.addDays(m_next++); }

    PromoEntry entryFrom(const QDate &start, bool item)
    {
        PromoEntry entry;
        entry.start = start;
        entry.end = start.addDays(1 + m_rng.bounded(90));
        entry.changeType = qint16(item ? m_rng.bounded(3) : 1 + m_rng.bounded(2));
        entry.amount = Money::fromUnits(qint64(1 + m_rng.bounded(99999)) * 100);
        return entry;
    }

    static QString failure()
    {
        if (!gsDBLastError.isEmpty())
            return gsDBLastError;
        return gDBErr().description.trimmed();
    }

    void add(bool item)
    {
        Row row;
        row.item = item;
        gsDBLastError.clear();
        gDBErr() = DbError();
        if (item) {
            const qint32 recordNum = m_items.at(qsizetype(m_rng.bounded(quint32(m_items.size()))));
            if (!gfbInventory_ByRecordNum(recordNum)) {
                write({QStringLiteral("add-item"), QStringLiteral("failed"), 0, QString::number(recordNum), {}, {}, 0, {},
                       QStringLiteral("item not read: ") + failure()});
                return;
            }
            row.key = gInventory.SL;
            row.invuid = gInventory.RecordNum;
            gpPromo_clear(); // a new item promo starts from a clear buffer
        } else {
            row.key = m_depts.at(qsizetype(m_rng.bounded(quint32(m_depts.size()))));
            gDept.DeptCode = row.key;
            gPromo.UniqueID = 0; // the department window's add clears the number alone
        }
        const PromoEntry entry = entryFrom(freeStart(), item);
        QString outcome = QStringLiteral("saved");
        if (item ? !gfbItemPromo_write(true, entry) : !gfbDeptPromo_save(true, entry))
            outcome = QStringLiteral("failed");
        else if (item && !gfbItemPromo_flag_set())
            outcome = QStringLiteral("failed-flag");
        row.uid = gPromo.UniqueID;
        row.entry = entry;
        write({item ? QStringLiteral("add-item") : QStringLiteral("add-dept"), outcome, row.uid, row.key, entry.start, entry.end,
               entry.changeType, entry.amount, outcome == QLatin1String("saved") ? QString() : failure()});
        // A failed save is cancelled by its user; a row written before the failure stays in the
        // table (the flag's update is the second of two), but it is no longer worked on.
        if (outcome == QLatin1String("saved"))
            m_live << row;
    }

    // The row positioned the way the windows find it: "=" on its key, then a walk.
    bool find(const Row &row)
    {
        const int key = row.item ? 2 : 3;
        gpPromo_clear();
        if (row.item)
            gPromo.SL = row.key;
        else
            gPromo.Dept = row.key;
        gPromo.StartDate = QDateTime(row.entry.start, QTime(0, 0));
        bool found = gfbDB_RecordOp(kPromoTable, kOpEqual, key);
        while (found && gPromo.UniqueID != row.uid && (row.item ? gPromo.SL : gPromo.Dept) == row.key)
            found = gfbDB_RecordOp(kPromoTable, kOpGetNext, key);
        return found && gPromo.UniqueID == row.uid;
    }

    void change(qsizetype index)
    {
        Row &row = m_live[index];
        const QString op = row.item ? QStringLiteral("change-item") : QStringLiteral("change-dept");
        gsDBLastError.clear();
        gDBErr() = DbError();
        if (row.item && !gfbInventory_ByRecordNum(row.invuid)) {
            write({op, QStringLiteral("failed"), row.uid, row.key, {}, {}, 0, {}, QStringLiteral("item not read: ") + failure()});
            return;
        }
        if (!find(row)) {
            write({op, QStringLiteral("lost"), row.uid, row.key, row.entry.start, {}, 0, {}, QStringLiteral("row not found")});
            m_live.removeAt(index);
            return;
        }
        if (row.item)
            row.invuid = gInventory.RecordNum;
        else
            gDept.DeptCode = row.key;
        const PromoEntry entry = entryFrom(row.entry.start, row.item);
        QString outcome = QStringLiteral("saved");
        if (row.item ? !gfbItemPromo_write(false, entry) : !gfbDeptPromo_save(false, entry))
            outcome = QStringLiteral("failed");
        else if (row.item && !gfbItemPromo_flag_set())
            outcome = QStringLiteral("failed-flag");
        write({op, outcome, row.uid, row.key, entry.start, entry.end, entry.changeType, entry.amount,
               outcome == QLatin1String("saved") ? QString() : failure()});
        if (outcome != QLatin1String("failed"))
            row.entry = entry;
    }

    // A head office marks a deleted promo for the stores instead of removing it.
    void remove(qsizetype index)
    {
        const Row row = m_live.at(index);
        const QString op = row.item ? QStringLiteral("delete-item") : QStringLiteral("delete-dept");
        gsDBLastError.clear();
        gDBErr() = DbError();
        if (!find(row)) {
            write({op, QStringLiteral("lost"), row.uid, row.key, row.entry.start, {}, 0, {}, QStringLiteral("row not found")});
            m_live.removeAt(index);
            return;
        }
        gPromo.ChangeType = kChangeDeleted;
        gPromo.ChangeDate = QDateTime(Clock::today(), QTime(0, 0));
        if (!row.item)
            gPromo.Poll = QStringLiteral("Y");
        const bool done = gfbDB_RecordOp(kPromoTable, kOpUpdate, row.item ? 2 : 3);
        write({op, done ? QStringLiteral("saved") : QStringLiteral("failed"), row.uid, row.key, row.entry.start, row.entry.end,
               kChangeDeleted, row.entry.amount, done ? QString() : failure()});
        if (done)
            m_live.removeAt(index);
    }

    void write(const LogLine &line)
    {
        *gLog << gfsSoak_line(line) << '\n';
        gLog->flush();
    }

    QRandomGenerator m_rng;
    QList<qint32> m_items;
    QStringList m_depts;
    QDate m_firstStart;
    int m_next = 0;
    QList<Row> m_live;
};

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 7) {
        std::fprintf(stderr, "usage: quillon_soak_station <data path> <station> <seconds> <log> <RecordNums> <depts>\n");
        return 2;
    }
    QFile logFile(args.at(4));
    if (!logFile.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text))
        return 2;
    QTextStream log(&logFile);
    gLog = &log;
    LoggedMessages boxes;
    installMessages(&boxes);

    gsDataPath = args.at(1);
    gsAppPath = args.at(1);
    gsStation = args.at(2);
    if (!gfbTables_open() || !gfbTables_recordsets_open(0)) {
        log << "open\tfailed\t" << gDBErr().description << '\n';
        return 1;
    }
    QList<qint32> items;
    for (const QString &number : args.at(5).split(QLatin1Char(',')))
        items << number.toInt();
    Station station(args.at(2).toInt(), items, args.at(6).split(QLatin1Char(',')));
    QElapsedTimer clock;
    clock.start();
    const qint64 until = qint64(args.at(3).toDouble() * 1000);
    while (clock.elapsed() < until)
        station.step();
    log << "end\n";
    return 0;
}
