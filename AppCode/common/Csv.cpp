#include "common/Csv.h"

#include <QStringDecoder>

namespace qln {

namespace {

class CsvScanner {
public:
    explicit CsvScanner(const QByteArray &bytes) : m_data(bytes.constData()), m_size(bytes.size())
    {
        if (bytes.startsWith("\xEF\xBB\xBF"))
            m_pos = 3;
    }

    CsvText read()
    {
        while (m_pos < m_size) {
            const int line = m_line;
            CsvRecord record{line, {}};
            QString problem;
            if (recordRead(record.fields, problem)) {
                if (!(record.fields.size() == 1 && record.fields.first().isEmpty()))
                    m_text.records << record;
            } else {
                m_text.problems << CsvProblem{line, problem};
                lineSkip();
            }
        }
        return std::move(m_text);
    }

private:
    bool atEnd() const { return m_pos >= m_size; }
    char peek() const { return m_data[m_pos]; }

    // Steps over a line end at the current position, CR LF, LF or a CR alone.
    bool lineEndTake()
    {
        if (atEnd())
            return true;
        if (peek() == '\n') {
            ++m_pos;
        } else if (peek() == '\r') {
            ++m_pos;
            if (!atEnd() && peek() == '\n')
                ++m_pos;
        } else {
            return false;
        }
        ++m_line;
        return true;
    }

    void lineSkip()
    {
        while (!atEnd() && peek() != '\n' && peek() != '\r')
            ++m_pos;
        lineEndTake();
    }

    bool recordRead(QStringList &fields, QString &problem)
    {
        for (;;) {
            QByteArray raw;
            if (!atEnd() && peek() == '"') {
                if (!quotedRead(raw, problem))
                    return false;
            } else {
                const qsizetype start = m_pos;
                while (!atEnd() && peek() != ',' && peek() != '\r' && peek() != '\n')
                    ++m_pos;
                raw = QByteArray(m_data + start, m_pos - start);
                if (raw.contains('"')) {
                    problem = QStringLiteral("field %1 holds a quote but is not in quotes").arg(fields.size() + 1);
                    return false;
                }
            }
            QString field;
            if (!decode(raw, field)) {
                problem = QStringLiteral("field %1 is not UTF-8 text").arg(fields.size() + 1);
                return false;
            }
            fields << field;
            if (!atEnd() && peek() == ',') {
                ++m_pos;
                continue;
            }
            lineEndTake();
            return true;
        }
    }

    bool quotedRead(QByteArray &raw, QString &problem)
    {
        const int opened = m_line;
        ++m_pos;
        for (;;) {
            const qsizetype start = m_pos;
            while (!atEnd() && peek() != '"')
                ++m_pos;
            raw.append(m_data + start, m_pos - start);
            if (atEnd()) {
                problem = QStringLiteral("a quoted field opened on line %1 never closes").arg(opened);
                return false;
            }
            ++m_pos;
            if (!atEnd() && peek() == '"') {
                raw.append('"');
                ++m_pos;
                continue;
            }
            break;
        }
        m_line += int(raw.count('\n')) + mfiLoneCRs(raw);
        if (!atEnd() && peek() != ',' && peek() != '\r' && peek() != '\n') {
            problem = QStringLiteral("text follows the closing quote of a field");
            return false;
        }
        return true;
    }

    static int mfiLoneCRs(const QByteArray &raw)
    {
        int count = 0;
        for (qsizetype i = raw.indexOf('\r'); i >= 0; i = raw.indexOf('\r', i + 1))
            if (i + 1 >= raw.size() || raw.at(i + 1) != '\n')
                ++count;
        return count;
    }

    static bool decode(const QByteArray &raw, QString &field)
    {
        bool ascii = true;
        for (char c : raw)
            if (uchar(c) >= 0x80) {
                ascii = false;
                break;
            }
        if (ascii) {
            field = QString::fromLatin1(raw);
            return true;
        }
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        field = decoder.decode(raw);
        return !decoder.hasError();
    }

    const char *m_data;
    qsizetype m_size;
    qsizetype m_pos = 0;
    int m_line = 1;
    CsvText m_text;
};

} // namespace

CsvText gfCsv_read(const QByteArray &bytes) { return CsvScanner(bytes).read(); }

QString gfsCsv_field(const QString &text)
{
    const bool quoted = text.contains(QLatin1Char(',')) || text.contains(QLatin1Char('"')) ||
                        text.contains(QLatin1Char('\n')) || text.contains(QLatin1Char('\r'));
    if (!quoted)
        return text;
    QString field = text;
    field.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + field + QLatin1Char('"');
}

QString gfsCsv_line(const QStringList &fields)
{
    QString line;
    for (qsizetype i = 0; i < fields.size(); ++i) {
        if (i > 0)
            line += QLatin1Char(',');
        line += gfsCsv_field(fields[i]);
    }
    return line + QLatin1String("\r\n");
}

} // namespace qln
