#include "indexing/Chunker.h"

#include "indexing/PaperText.h"

#include <algorithm>

namespace
{
constexpr qint64 kStride = CHUNK_SIZE - CHUNK_OVERLAP;

/// Cuts one page at a time and numbers the chunks through.
class Cutter
{
public:
    explicit Cutter(const PaperText &text)
        : m_text(text)
    {
    }

    void cut(const PaperText::Page &page, bool isLast)
    {
        const QByteArrayView words = QByteArrayView(m_text.fullText()).first(page.end);
        qsizetype begin = page.begin;
        for (qint64 start = 0; start < page.wordCount; start += kStride) {
            const qint64 taken = std::min(CHUNK_SIZE, page.wordCount - start);
            emitChunk(page.number, begin, skipWords(words, begin, taken) - 1);
            if (start + taken == page.wordCount && !isLast)
                return;
            begin = skipWords(words, begin, kStride);
        }
    }

    QList<Chunk> chunks;

private:
    void emitChunk(qint64 pageNumber, qsizetype begin, qsizetype end)
    {
        chunks.append({QByteArray::fromRawData(m_text.fullText().constData() + begin, end - begin),
                       pageNumber, chunks.size()});
    }

    const PaperText &m_text;
};
} // namespace

QList<Chunk> chunksOf(const PaperText &text)
{
    Cutter cutter(text);
    for (const PaperText::Page &page : text.pages())
        cutter.cut(page, &page == &text.pages().back());
    return cutter.chunks;
}
