#pragma once
#include <QString>

namespace qln {

// An engine's refusal, told the way the suite's provider tells it: a number and a text
// whose start callers test ("Invalid object name", "Cannot insert duplicate").
struct DbError {
    qint64 number = 0;
    QString description;
    QString source;
    bool connectionLost = false;

    bool isSet() const { return number != 0; }
    void clear() { *this = DbError(); }

    static constexpr qint64 kSyntax = 0x80040E14;       // errors occurred / syntax
    static constexpr qint64 kNotSupported = 0x80040E21; // multiple-step operation
    static constexpr qint64 kNoSuchObject = 0x80040E37;
    static constexpr qint64 kIntegrity = 0x80040E2F;
    static constexpr qint64 kRowChanged = 0x80040E38;   // optimistic check failed
    static constexpr qint64 kUnspecified = 0x80004005;
};

} // namespace qln
