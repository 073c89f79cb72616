#pragma once
#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

// Comma-separated text as spreadsheets write it: UTF-8 with or without a byte-order mark,
// CR LF or LF, fields in double quotes holding commas, doubled quotes and line breaks.
namespace qln {

// One record and the line of the file on which it starts (counted from 1); a quoted line
// break makes a record span lines.
struct CsvRecord {
    int line = 0;
    QStringList fields;
};

// What is wrong with the text on one line.
struct CsvProblem {
    int line = 0;
    QString text;
};

struct CsvText {
    QList<CsvRecord> records;
    QList<CsvProblem> problems;
};

// Reads a whole file's bytes. A record in error is reported and left out; reading goes on at
// the next line, so one report names every bad line. Blank lines are skipped.
CsvText gfCsv_read(const QByteArray &bytes);

// A field as written: in quotes, its quotes doubled, when it holds a comma, a quote or a line
// break.
QString gfsCsv_field(const QString &text);
// The fields of one line, with its CR LF.
QString gfsCsv_line(const QStringList &fields);

} // namespace qln
