#pragma once

#include "pdf/PDFPageText.h"

#include <QPointF>

/// Text as a test places it on a page: characters 6 points wide and 12 high.
class PlacedText
{
public:
    static constexpr double kCharacterWidth = 6;
    static constexpr double kCharacterHeight = 12;

    /// The words of one line, whose upper left corner is at `place`.
    PlacedText &line(const QString &words, QPointF place)
    {
        if (!m_text.isEmpty())
            append(u'\n', QRectF());
        for (qsizetype i = 0; i < words.size(); ++i)
            append(words[i], QRectF(place.x() + kCharacterWidth * double(i), place.y(), kCharacterWidth,
                                    kCharacterHeight));
        return *this;
    }

    PDFPageText page() const { return PDFPageText(m_text, m_boxes); }

private:
    void append(QChar character, const QRectF &box)
    {
        m_text += character;
        m_boxes.append(box);
    }

    QString m_text;
    QList<QRectF> m_boxes;
};
