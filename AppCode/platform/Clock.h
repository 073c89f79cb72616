#pragma once
#include <QDate>
#include <QDateTime>

namespace qln {

// Every "today" and "now" of the program comes from here, so tests can pin the date.
class Clock {
public:
    static QDateTime now();
    static QDate today() { return now().date(); }
    // A fixed instant; an invalid one returns to the system clock.
    static void setFixed(const QDateTime &instant);
    static void advanceDays(int days);
};

// With no TZ the C library reads the zone file again for every local time it works out;
// naming the zone once spares a file system call for each date read from a table.
void gpLocalTime_pin();

} // namespace qln
