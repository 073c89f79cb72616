#pragma once
#include "common/Money.h"

#include <QDate>
#include <QString>
#include <optional>

// One line of a soak station's log: what it did and what it was told.
namespace qln::soak {

struct LogLine {
    QString op;      // add-item, change-item, delete-item, add-dept, change-dept, delete-dept
    QString outcome; // saved, failed, failed-flag (the row written, the item's flag refused), lost
    qint32 uid = 0;
    QString key;     // SL or department code
    QDate start, end;
    qint16 changeType = 0;
    Money amount;
    QString message; // the system's text of a failure
};

QString gfsSoak_line(const LogLine &line);
// Nothing for a line that is not an operation (message boxes, the end mark).
std::optional<LogLine> gfSoak_line_parse(const QString &text);

} // namespace qln::soak
