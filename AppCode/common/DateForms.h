#pragma once
#include <QDate>
#include <QDateTime>
#include <QString>

namespace qln {

// "yyyymmdd".
QString gfsDate_compact(const QDate &date);
// A date kept as eight digits "yyyymmdd", shown "mm/dd/yyyy", or "dd/mm/yyyy" when sForm is "E"
// (USEurope). A blank text comes back with two blanks in front of it.
QString gfsDate_display(const QString &sDate, const QString &sForm);

// The platform's short date form: "MM/dd/yyyy", day first when USEurope is "E".
QString gfsDate_short(const QDate &date, const QString &usEurope);
// Date-times in list queries: "YYYY-MM-DD HH:MM:SS".
QString gfsDate_sql(const QDateTime &instant);
// Date-times in inserts and keys: "YYYYMMDD HH:MM:SS".
QString gfsDate_key(const QDateTime &instant);

} // namespace qln
