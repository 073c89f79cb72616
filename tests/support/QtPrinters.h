#pragma once
#include <QString>
#include <QVariant>
#include <ostream>

// Readable failures for Qt values.
inline void PrintTo(const QString &s, std::ostream *os) { *os << '"' << s.toStdString() << '"'; }
inline void PrintTo(const QVariant &v, std::ostream *os) { *os << "QVariant(" << v.toString().toStdString() << ')'; }
