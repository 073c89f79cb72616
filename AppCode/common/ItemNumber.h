#pragma once
#include "common/ProcessState.h" // gbItemID_plain

#include <QString>

namespace qln {

// SL, the eight-character item key, shows with a point before its last character:
// key "12345678" is "1234567.8" on screen.

// The display form; a text whose trimmed form starts with "~" (a non-stock item) stays as it is.
QString gfsItemID_display(const QString &sSL);
// The key of a display form: its first seven characters and its last.
QString gfsItemID_key(const QString &sText);
// What a user typed, made into the display form of a key.
QString gfsItemID_normalise(const QString &sText);
// The text that goes into the 25-character ItemID field: a numeric id is right-aligned so that
// ids sort by value, unless bPlain or gbItemID_plain asks for plain text.
QString gfsItemID_format(const QString &sText, bool bPlain);

} // namespace qln
