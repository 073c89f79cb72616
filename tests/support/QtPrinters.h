#pragma once
#include <QString>
#include <QStringList>
#include <QVariant>
#include <initializer_list>
#include <ostream>

// Readable failures for Qt values.
inline void PrintTo(const QString &s, std::ostream *os) { *os << '"' << s.toStdString() << '"'; }
inline void PrintTo(const QVariant &v, std::ostream *os) { *os << "QVariant(" << v.toString().toStdString() << ')'; }

// A list of texts written as plain literals in tests.
inline QStringList strings(std::initializer_list<const char *> items)
{
    QStringList list;
    for (const char *item : items)
        list << QString::fromUtf8(item);
    return list;
}
