#pragma once
#include <QString>
#include <QStringList>

// Comma-separated text as spreadsheets write and read it: a field holding a comma, a quote or a
// line break goes in quotes, its quotes doubled; lines end in CR LF.
namespace qln {

QString gfsCsv_field(const QString &text);
// The fields of one line, with its CR LF.
QString gfsCsv_line(const QStringList &fields);

} // namespace qln
