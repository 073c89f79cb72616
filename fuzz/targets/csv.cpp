#include "FuzzTarget.h"

#include "common/Csv.h"

// A promo file from a spreadsheet: whatever reads must write back as text that reads to the
// same records, and every problem names a line of the file.
QLN_FUZZ_TARGET(csv)
{
    using namespace qln;
    const QByteArray input = fuzz::bytes(data, size);
    const CsvText csv = gfCsv_read(input);
    const int lines = int(input.count('\n') + input.count('\r')) + 1;
    for (const CsvProblem &problem : csv.problems)
        fuzz::require(problem.line >= 1 && problem.line <= lines && !problem.text.isEmpty(), "a problem names a line of the file");
    QByteArray written;
    for (const CsvRecord &record : csv.records) {
        fuzz::require(record.line >= 1 && record.line <= lines, "a record starts on a line of the file");
        written += gfsCsv_line(record.fields).toUtf8();
    }
    const CsvText again = gfCsv_read(written);
    fuzz::require(again.problems.isEmpty(), "written records read without a problem");
    fuzz::require(again.records.size() == csv.records.size(), "written records read back as many");
    for (qsizetype i = 0; i < csv.records.size() && i < again.records.size(); ++i)
        fuzz::require(again.records[i].fields == csv.records[i].fields, "written records read back to the same fields");
    return 0;
}
