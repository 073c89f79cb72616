#include "cli/TextTable.h"

namespace qln {

TextTable::TextTable(const QStringList &headers, const QList<Align> &aligns) : m_aligns(aligns)
{
    m_rows << headers;
}

void TextTable::add(const QStringList &cells) { m_rows << cells; }

QString TextTable::text() const
{
    QString text;
    QTextStream out(&text);
    write(out);
    out.flush();
    return text;
}

void TextTable::write(QTextStream &out) const
{
    QList<qsizetype> widths(m_aligns.size(), 0);
    for (const QStringList &row : m_rows)
        for (qsizetype c = 0; c < widths.size(); ++c)
            widths[c] = qMax(widths[c], row.value(c).size());
    QString line;
    for (const QStringList &row : m_rows) {
        line.clear();
        for (qsizetype c = 0; c < widths.size(); ++c) {
            if (c > 0)
                line += QLatin1String("  ");
            const QString cell = row.value(c);
            line += m_aligns[c] == Right ? cell.rightJustified(widths[c]) : cell.leftJustified(widths[c]);
        }
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        out << line << QLatin1Char('\n');
    }
}

} // namespace qln
