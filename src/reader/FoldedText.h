#pragma once

#include <QList>
#include <QString>

/// A text without case and diacritics, in which every unit knows where it came from.
class FoldedText
{
public:
    explicit FoldedText(const QString &text);

    const QString &string() const { return m_folded; }

    /// Where the folded units from `start` up to, but without, `end` begin in the text.
    qsizetype originalStart(qsizetype start) const { return m_origins[start]; }
    /// And where they end: what was dropped behind a letter belongs to it.
    qsizetype originalEnd(qsizetype end) const { return m_origins[end]; }

private:
    void append(const QString &text, qsizetype origin);

    QString m_folded;
    QList<qsizetype> m_origins; ///< one more than there are units: the end of the text is the last
};
