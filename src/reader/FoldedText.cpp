#include "reader/FoldedText.h"

namespace
{
bool isMark(char32_t character)
{
    return QChar::category(character) == QChar::Mark_NonSpacing;
}
} // namespace

FoldedText::FoldedText(const QString &text)
{
    m_folded.reserve(text.size());
    m_origins.reserve(text.size() + 1);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar unit = text[i];
        if (unit.unicode() < 0x80) {
            m_folded += unit.toCaseFolded();
            m_origins.append(i);
            continue;
        }
        const bool isPair = unit.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        append(text.mid(i, isPair ? 2 : 1), i);
        i += isPair ? 1 : 0;
    }
    m_origins.append(text.size());
}

/// One character beyond ASCII.
void FoldedText::append(const QString &text, qsizetype origin)
{
    const QString decomposed = text.normalized(QString::NormalizationForm_D);
    for (const char32_t character : decomposed.toUcs4()) {
        if (isMark(character))
            continue;
        // By way of the capitals, which alone spell a sharp s and ligatures out.
        m_folded += QString::fromUcs4(&character, 1).toUpper().toCaseFolded();
        m_origins.resize(m_folded.size(), origin);
    }
}
