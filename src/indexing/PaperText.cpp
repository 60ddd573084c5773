#include "indexing/PaperText.h"

#include "base/TextClasses.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace
{
// How a byte of UTF-8 matters for finding white space.
enum ByteClass : quint8 {
    Ordinary,
    Space,     ///< a white-space character of its own
    MaybeLead, ///< may begin a white-space character of two or three bytes
};

constexpr std::array<quint8, 256> kByteClasses = [] {
    std::array<quint8, 256> classes{};
    for (const int byte : {0x00, 0x09, 0x0A, 0x0B, 0x0C, 0x0D, 0x20})
        classes[static_cast<size_t>(byte)] = Space;
    for (const int lead : {0xC2, 0xE1, 0xE2, 0xE3})
        classes[static_cast<size_t>(lead)] = MaybeLead;
    return classes;
}();

/// The length of the white-space character that begins at `at`, or 0. The characters with the property
/// White_Space in Unicode 15, a set that has been stable since 6.3.
qsizetype longSpaceAt(const char *at, const char *end)
{
    const auto byte = [&](qsizetype i) {
        return i < end - at ? static_cast<uchar>(at[i]) : uchar(0);
    };
    switch (byte(0)) {
    case 0xC2: // U+0085, U+00A0
        return byte(1) == 0x85 || byte(1) == 0xA0 ? 2 : 0;
    case 0xE1: // U+1680
        return byte(1) == 0x9A && byte(2) == 0x80 ? 3 : 0;
    case 0xE2: { // U+2000 to U+200A, U+2028, U+2029, U+202F, U+205F
        const uchar last = byte(2);
        const bool isIn20 = byte(1) == 0x80 &&
                            ((last >= 0x80 && last <= 0x8A) || last == 0xA8 || last == 0xA9 || last == 0xAF);
        return isIn20 || (byte(1) == 0x81 && last == 0x9F) ? 3 : 0;
    }
    case 0xE3: // U+3000
        return byte(1) == 0x80 && byte(2) == 0x80 ? 3 : 0;
    default:
        return 0;
    }
}

qsizetype spaceAt(const char *at, const char *end)
{
    const quint8 byteClass = kByteClasses[static_cast<uchar>(*at)];
    if (byteClass == Ordinary)
        return 0;
    return byteClass == Space ? 1 : longSpaceAt(at, end);
}

const char *skipSpaces(const char *at, const char *end)
{
    while (at < end) {
        const qsizetype length = spaceAt(at, end);
        if (length == 0)
            break;
        at += length;
    }
    return at;
}

const char *endOfWord(const char *at, const char *end)
{
    while (at < end && spaceAt(at, end) == 0)
        ++at;
    return at;
}

/// The first `size` bytes of `text`, or a few less where that would cut a character.
QByteArrayView headOfCharacters(QByteArrayView text, qsizetype size)
{
    if (size >= text.size())
        return text;
    while (size > 0 && (static_cast<uchar>(text[size]) & 0xC0) == 0x80)
        --size;
    return text.first(size);
}
} // namespace

PaperText::PaperText(qsizetype maxBytes)
    : m_maxBytes(maxBytes)
{
}

void PaperText::addPage(qint64 pageNumber, QByteArrayView pageText)
{
    if (m_isFull)
        return;
    const qsizetype begin = m_text.size();
    // A page's words and the blanks before them need no more than the page's text and one blank.
    m_text.resize(std::min(begin + pageText.size() + 1, m_maxBytes));
    char *out = m_text.data() + begin;
    const char *const limit = m_text.constData() + m_text.size();
    const char *const end = pageText.data() + pageText.size();
    qint64 words = 0;
    for (const char *word = skipSpaces(pageText.data(), end); word < end;) {
        const char *const behind = endOfWord(word, end);
        const bool needsBlank = m_wordCount + words > 0;
        m_isFull = behind - word + (needsBlank ? 1 : 0) > limit - out;
        if (m_isFull)
            break;
        if (needsBlank)
            *out++ = ' ';
        std::memcpy(out, word, static_cast<size_t>(behind - word));
        out += behind - word;
        ++words;
        word = skipSpaces(behind, end);
    }
    m_text.truncate(out - m_text.constData());
    if (words == 0)
        return;
    m_pages.push_back({pageNumber, begin == 0 ? 0 : begin + 1, m_text.size(), words});
    m_wordCount += words;
}

QByteArrayView PaperText::firstWords(qint64 count) const
{
    const qsizetype next = skipWords(m_text, 0, count);
    return QByteArrayView(m_text).first(std::clamp<qsizetype>(next - 1, 0, m_text.size()));
}

QString PaperText::firstCharacters(qsizetype count) const
{
    // Of most texts a small head suffices; it is widened for texts of many bytes a character.
    for (qsizetype window = 2 * count + 64;; window *= 2) {
        const QString head = QString::fromUtf8(headOfCharacters(m_text, window));
        QString characters = ::firstCharacters(head, count);
        // A character that ends with the head may go on behind it.
        if (window >= m_text.size() || characters.size() < head.size())
            return characters;
    }
}

qsizetype skipWords(QByteArrayView text, qsizetype begin, qint64 count)
{
    for (; count > 0 && begin <= text.size(); --count) {
        const qsizetype blank = text.indexOf(' ', begin);
        begin = (blank < 0 ? text.size() : blank) + 1;
    }
    return begin;
}
