#pragma once
#include <QList>
#include <QString>
#include <QStringList>
#include <QTextStream>

namespace qln {

// Columns for a terminal: each as wide as its widest cell, two blanks between, numbers to the
// right. No line ends in blanks.
class TextTable {
public:
    enum Align { Left, Right };
    explicit TextTable(const QStringList &headers, const QList<Align> &aligns);
    void add(const QStringList &cells);
    QString text() const;
    // The same text, line by line.
    void write(QTextStream &out) const;
    qsizetype rows() const { return m_rows.size(); }

private:
    QList<QStringList> m_rows;
    QList<Align> m_aligns;
};

} // namespace qln
