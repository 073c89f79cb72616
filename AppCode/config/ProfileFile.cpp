#include "config/ProfileFile.h"

#include "common/AnsiText.h"
#include "common/Text.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

namespace qln {

namespace {

enum class LineKind { Other, Section, Key };

struct Line {
    LineKind kind = LineKind::Other;
    QString name;
    QString value;
};

QString unquoted(const QString &value)
{
    if (value.size() >= 2 && value.front() == value.back()
        && (value.front() == QLatin1Char('"') || value.front() == QLatin1Char('\'')))
        return value.mid(1, value.size() - 2);
    return value;
}

Line parse(const QString &raw)
{
    const QString text = raw.trimmed();
    if (text.startsWith(QLatin1Char('['))) {
        const qsizetype close = text.indexOf(QLatin1Char(']'));
        return {LineKind::Section, text.mid(1, close < 0 ? -1 : close - 1).trimmed(), QString()};
    }
    const qsizetype equals = text.indexOf(QLatin1Char('='));
    if (text.startsWith(QLatin1Char(';')) || equals < 0)
        return {};
    return {LineKind::Key, text.left(equals).trimmed(), unquoted(text.mid(equals + 1).trimmed())};
}

bool sameName(const QString &a, const QString &b) { return a.compare(b, Qt::CaseInsensitive) == 0; }

int errorNumber(const QString &file)
{
    const QFileInfo info(file);
    if (!info.dir().exists())
        return 76; // path not found
    if (info.exists() && !(info.isReadable() && info.isWritable()))
        return 70; // permission denied
    return 75;     // path/file access error
}

void setError(ProfileError *error, const QFile &f)
{
    if (error)
        *error = {errorNumber(f.fileName()), f.errorString()};
}

// The file as lines, changed in memory and written back whole.
class ProfileText {
public:
    bool load(const QString &file, ProfileError *error)
    {
        QFile f(file);
        if (!f.exists())
            return true;
        if (!f.open(QIODevice::ReadOnly)) {
            setError(error, f);
            return false;
        }
        const QString text = gfsAnsi_decode(f.readAll());
        const qsizetype firstBreak = text.indexOf(QLatin1Char('\n'));
        if (firstBreak >= 0 && (firstBreak == 0 || text.at(firstBreak - 1) != QLatin1Char('\r')))
            m_eol = QStringLiteral("\n");
        m_lines = text.split(QLatin1Char('\n'));
        m_endsWithEol = m_lines.last().isEmpty();
        if (m_endsWithEol)
            m_lines.removeLast();
        for (QString &line : m_lines)
            if (line.endsWith(QLatin1Char('\r')))
                line.chop(1);
        return true;
    }

    bool save(const QString &file, ProfileError *error) const
    {
        QFile f(file);
        QString text = m_lines.join(m_eol);
        if (m_endsWithEol && !m_lines.isEmpty())
            text += m_eol;
        if (f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(gfsAnsi_encode(text)) >= 0)
            return true;
        setError(error, f);
        return false;
    }

    QStringList sectionNames() const
    {
        QStringList names;
        for (const QString &raw : m_lines) {
            const Line line = parse(raw);
            if (line.kind == LineKind::Section && !names.contains(line.name, Qt::CaseInsensitive))
                names << line.name;
        }
        return names;
    }

    QStringList keyNames(const QString &section) const
    {
        QStringList names;
        const auto [first, end] = body(section);
        for (qsizetype i = first; i < end; ++i) {
            const Line line = parse(m_lines.at(i));
            if (line.kind == LineKind::Key && !names.contains(line.name, Qt::CaseInsensitive))
                names << line.name;
        }
        return names;
    }

    std::optional<QString> value(const QString &section, const QString &key) const
    {
        const qsizetype at = keyLine(section, key);
        return at < 0 ? std::nullopt : std::optional<QString>(parse(m_lines.at(at)).value);
    }

    void setValue(const QString &section, const QString &key, const QString &value)
    {
        const qsizetype head = sectionHead(section);
        if (head < 0) {
            insert(m_lines.size(), {QLatin1Char('[') + section + QLatin1Char(']'), key + QLatin1Char('=') + value});
            return;
        }
        const qsizetype at = keyLine(section, key);
        if (at >= 0) {
            m_lines[at] = parse(m_lines.at(at)).name + QLatin1Char('=') + value;
            return;
        }
        // After the section's last line that isn't blank, so that a blank line before the next head stays.
        qsizetype after = body(section).second;
        while (after > head + 1 && m_lines.at(after - 1).trimmed().isEmpty())
            --after;
        insert(after, {key + QLatin1Char('=') + value});
    }

    // Every line of the key in the section, so that a duplicate doesn't come back.
    bool removeKey(const QString &section, const QString &key)
    {
        bool removed = false;
        for (qsizetype at = keyLine(section, key); at >= 0; at = keyLine(section, key)) {
            m_lines.removeAt(at);
            removed = true;
        }
        return removed;
    }

    // Every section of that name, head and body.
    bool removeSection(const QString &section)
    {
        bool removed = false;
        for (qsizetype head = sectionHead(section); head >= 0; head = sectionHead(section)) {
            const qsizetype end = body(section).second;
            m_lines.remove(head, end - head);
            if (head == m_lines.size())
                m_endsWithEol = true;
            removed = true;
        }
        return removed;
    }

private:
    qsizetype sectionHead(const QString &section) const
    {
        for (qsizetype i = 0; i < m_lines.size(); ++i) {
            const Line line = parse(m_lines.at(i));
            if (line.kind == LineKind::Section && sameName(line.name, section))
                return i;
        }
        return -1;
    }

    // The lines after the first head of the section, up to the next head: [first, end).
    std::pair<qsizetype, qsizetype> body(const QString &section) const
    {
        const qsizetype head = sectionHead(section);
        if (head < 0)
            return {0, 0};
        qsizetype end = head + 1;
        while (end < m_lines.size() && parse(m_lines.at(end)).kind != LineKind::Section)
            ++end;
        return {head + 1, end};
    }

    qsizetype keyLine(const QString &section, const QString &key) const
    {
        const auto [first, end] = body(section);
        for (qsizetype i = first; i < end; ++i) {
            const Line line = parse(m_lines.at(i));
            if (line.kind == LineKind::Key && sameName(line.name, key))
                return i;
        }
        return -1;
    }

    void insert(qsizetype at, const QStringList &lines)
    {
        if (at == m_lines.size())
            m_endsWithEol = true;
        for (qsizetype i = 0; i < lines.size(); ++i)
            m_lines.insert(at + i, lines.at(i));
    }

    QStringList m_lines;
    QString m_eol = QStringLiteral("\r\n");
    bool m_endsWithEol = true;
};

int copyList(const QStringList &names, QString &returned, int size)
{
    QString text;
    for (const QString &name : names)
        text += name + QChar(0);
    if (text.size() + 1 <= size) {
        returned = text;
        return int(text.size());
    }
    const int room = qMax(0, size - 2);
    returned = text.left(room);
    return room;
}

} // namespace

int GetPrivateProfileString(const ProfileArg &section, const ProfileArg &key,
                            const ProfileArg &defaultValue, QString &returned, int size,
                            const QString &file, ProfileError *error)
{
    returned.clear();
    if (size <= 0)
        return 0;
    ProfileText text;
    text.load(file, error);
    if (!section)
        return copyList(text.sectionNames(), returned, size);
    if (!key)
        return copyList(text.keyNames(*section), returned, size);
    const std::optional<QString> found = text.value(*section, *key);
    returned = (found ? *found : gfsText_rtrim(defaultValue.value_or(QString()))).left(size - 1);
    return int(returned.size());
}

bool WritePrivateProfileString(const ProfileArg &section, const ProfileArg &key,
                               const ProfileArg &value, const QString &file, ProfileError *error)
{
    if (!section) {
        if (key || value || !QFileInfo(file).isFile())
            return false;
        QFile f(file);
        if (f.open(QIODevice::ReadOnly))
            return true;
        setError(error, f);
        return false;
    }
    ProfileText text;
    if (!text.load(file, error))
        return false;
    if (!key) {
        if (!text.removeSection(*section))
            return true;
    } else if (!value) {
        if (!text.removeKey(*section, *key))
            return true;
    } else {
        text.setValue(*section, *key, *value);
    }
    return text.save(file, error);
}

} // namespace qln
