#pragma once
#include "output/PrintTable.h" // gfsCsv_field

#include <QString>
#include <QStringList>

// Comma-separated text as spreadsheets write and read it: each field quoted by gfsCsv_field
// where it must be, lines ending in CR LF.
namespace qln {

// The fields of one line, with its CR LF.
QString gfsCsv_line(const QStringList &fields);

} // namespace qln
