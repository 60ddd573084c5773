#include "support/PdfBuilder.h"

#include "support/PdfCipher.h"

#include <algorithm>
#include <map>

namespace
{
constexpr double kFontSize = 12;
constexpr double kLeading = 14;
constexpr double kMargin = 72;
// Wider than any character of either font at this size, so that a page grown to it holds the line.
constexpr double kWidestCharacter = 12;

// Objects come in a fixed order: catalogue, page tree, information, the Latin font, the other font, its
// character map, then two objects a page.
constexpr int kPagesObject = 2;
constexpr int kFirstPageObject = 7;

bool isLatin(char32_t c)
{
    return c >= 0x20 && c < 0x7f;
}

QByteArray number(double value)
{
    return QByteArray::number(value, 'g', 12);
}

QByteArray boxEntry(const char *name, const std::optional<PdfBox> &box)
{
    if (!box)
        return {};
    QByteArray out = QByteArray("/") + name + '[';
    for (double edge : *box)
        out += number(edge) + ' ';
    return out + ']';
}

/// Codes of one byte for every character beyond ASCII in the document; they live in a font of their own.
class CharacterCodes
{
public:
    explicit CharacterCodes(const QList<PdfPage> &pages)
    {
        for (const PdfPage &page : pages) {
            for (const QString &line : page.lines)
                add(line);
        }
    }

    char operator[](char32_t c) const { return char(m_codes.at(c)); }

    QByteArray toUnicodeMap() const
    {
        QByteArray out = "/CIDInit /ProcSet findresource begin 12 dict begin begincmap\n"
                         "1 begincodespacerange <00> <ff> endcodespacerange\n";
        for (const auto &[character, code] : m_codes) {
            const QByteArray utf16 = PdfBuilder::utf16(QString::fromUcs4(&character, 1)).mid(2);
            out += "1 beginbfchar <" + QByteArray(1, char(code)).toHex() + "> <" + utf16.toHex() +
                   "> endbfchar\n";
        }
        return out + "endcmap end end\n";
    }

private:
    void add(const QString &line)
    {
        for (uint c : line.toUcs4()) {
            if (isLatin(c) || m_codes.contains(c))
                continue;
            Q_ASSERT(m_codes.size() < 255);
            m_codes.emplace(c, quint8(m_codes.size() + 1));
        }
    }

    std::map<char32_t, quint8> m_codes;
};

QByteArray showText(bool latin, const QByteArray &codes)
{
    return QByteArray(latin ? "/F1 " : "/F2 ") + number(kFontSize) + " Tf <" + codes.toHex() + "> Tj ";
}

QByteArray showLine(const QString &line, const CharacterCodes &codes)
{
    QByteArray out;
    QByteArray run;
    bool latin = true;
    for (uint c : line.toUcs4()) {
        if (isLatin(c) != latin && !run.isEmpty()) {
            out += showText(latin, run);
            run.clear();
        }
        latin = isLatin(c);
        run += latin ? char(c) : codes[c];
    }
    return run.isEmpty() ? out : out + showText(latin, run);
}

PdfBox mediaBoxOf(const PdfPage &page)
{
    if (page.mediaBox)
        return *page.mediaBox;
    qsizetype longest = 0;
    for (const QString &line : page.lines)
        longest = std::max(longest, line.size());
    return {0, 0, std::max(612.0, double(longest) * kWidestCharacter + 2 * kMargin),
            std::max(792.0, double(page.lines.size()) * kLeading + 2 * kMargin)};
}

QByteArray content(const PdfPage &page, const CharacterCodes &codes)
{
    QByteArray out = page.drawing + '\n';
    if (page.lines.isEmpty())
        return out;
    const PdfBox box = mediaBoxOf(page);
    const double left = page.mediaBox ? box[0] : kMargin;
    out += "0 g BT " + number(kLeading) + " TL " + number(left) + ' ' +
           number(box[3] - (page.mediaBox ? kLeading : kMargin)) + " Td\n";
    for (const QString &line : page.lines)
        out += showLine(line, codes) + "T*\n";
    return out + "ET\n";
}

QByteArray pageObject(const PdfPage &page, int ownNumber)
{
    if (page.isBroken)
        return "<</Type/Page/Parent " + QByteArray::number(ownNumber) + " 0 R>>";
    QByteArray out = "<</Type/Page/Parent " + QByteArray::number(kPagesObject) + " 0 R" +
                     boxEntry("MediaBox", mediaBoxOf(page)) + boxEntry("CropBox", page.cropBox) +
                     boxEntry("ArtBox", page.artBox);
    if (page.rotation != 0)
        out += "/Rotate " + QByteArray::number(page.rotation);
    if (page.userUnit != 1)
        out += "/UserUnit " + number(page.userUnit);
    return out + "/Resources<</Font<</F1 4 0 R/F2 5 0 R>>>>/Contents " + QByteArray::number(ownNumber + 1) +
           " 0 R" + page.entries + ">>";
}

QByteArray stream(const QByteArray &bytes)
{
    return "<</Length " + QByteArray::number(bytes.size()) + ">>stream\n" + bytes + "\nendstream";
}

/// Encrypts an object as written: its stream, or its strings where all of them are in hexadecimal.
QByteArray encrypted(const QByteArray &object, int number, const PdfCipher &cipher)
{
    const qsizetype start = object.indexOf("stream\n");
    if (start >= 0) {
        const qsizetype first = start + 7;
        const qsizetype last = object.lastIndexOf("\nendstream");
        return object.left(first) + cipher.encrypted(number, object.mid(first, last - first)) +
               object.mid(last);
    }
    QByteArray out;
    for (qsizetype i = 0; i < object.size(); ++i) {
        const bool isString =
            object[i] == '<' && object.mid(i, 2) != "<<" && (i == 0 || object[i - 1] != '<');
        const qsizetype end = isString ? object.indexOf('>', i) : -1;
        if (end < 0) {
            out += object[i];
            continue;
        }
        out +=
            '<' + cipher.encrypted(number, QByteArray::fromHex(object.mid(i + 1, end - i - 1))).toHex() + '>';
        i = end;
    }
    return out;
}

QByteArray assembled(const QList<QByteArray> &objects, const std::map<int, QByteArray> &furtherObjects,
                     const QByteArray &trailerEntries)
{
    QByteArray out = "%PDF-1.7\n%\xe2\xe3\xcf\xd3\n";
    QByteArray table = "xref\n0 " + QByteArray::number(objects.size() + 1) + "\n0000000000 65535 f \n";
    const auto add = [&](int number, const QByteArray &object) {
        table += QByteArray::number(out.size()).rightJustified(10, '0') + " 00000 n \n";
        out += QByteArray::number(number) + " 0 obj\n" + object + "\nendobj\n";
    };
    for (qsizetype i = 0; i < objects.size(); ++i)
        add(int(i + 1), objects[i]);
    for (const auto &[number, object] : furtherObjects) {
        if (!furtherObjects.contains(number - 1)) {
            int end = number;
            while (furtherObjects.contains(end))
                ++end;
            table += QByteArray::number(number) + ' ' + QByteArray::number(end - number) + '\n';
        }
        add(number, object);
    }
    const qsizetype size = furtherObjects.empty() ? objects.size() + 1 : furtherObjects.rbegin()->first + 1;
    const QByteArray start = QByteArray::number(out.size());
    return out + table + "trailer\n<</Size " + QByteArray::number(size) + "/Root 1 0 R/Info 3 0 R" +
           trailerEntries + ">>\nstartxref\n" + start + "\n%%EOF\n";
}
} // namespace

PdfBuilder &PdfBuilder::title(const QByteArray &bytes)
{
    return attribute("/Title<" + bytes.toHex() + '>');
}

PdfBuilder &PdfBuilder::author(const QByteArray &bytes)
{
    return attribute("/Author<" + bytes.toHex() + '>');
}

PdfBuilder &PdfBuilder::attribute(const QByteArray &entry)
{
    m_attributes.append(entry);
    return *this;
}

PdfBuilder &PdfBuilder::page(const QStringList &lines)
{
    PdfPage page;
    page.lines = lines;
    return this->page(page);
}

PdfBuilder &PdfBuilder::page(const PdfPage &page)
{
    m_pages.append(page);
    return *this;
}

PdfBuilder &PdfBuilder::lock(PdfLock lock)
{
    m_lock = lock;
    return *this;
}

PdfBuilder &PdfBuilder::catalogue(const QByteArray &entries)
{
    m_catalogueEntries += entries;
    return *this;
}

PdfBuilder &PdfBuilder::object(int number, const QByteArray &body)
{
    Q_ASSERT(number >= kFirstFreeObject);
    m_furtherObjects[number] = body;
    return *this;
}

PdfBuilder &PdfBuilder::claimPageCount(qint64 count)
{
    m_claimedPageCount = count;
    return *this;
}

QList<QByteArray> PdfBuilder::objects() const
{
    const CharacterCodes codes(m_pages);
    QByteArray kids;
    for (qsizetype i = 0; i < m_pages.size(); ++i)
        kids += QByteArray::number(kFirstPageObject + 2 * i) + " 0 R ";
    QByteArray widths;
    for (int i = 0; i < 255; ++i)
        widths += "600 ";
    QList<QByteArray> all = {
        "<</Type/Catalog/Pages 2 0 R" + m_catalogueEntries + ">>",
        "<</Type/Pages/Count " + QByteArray::number(m_claimedPageCount.value_or(m_pages.size())) + "/Kids[" +
            kids + "]>>",
        "<<" + m_attributes.join() + ">>",
        "<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding>>",
        "<</Type/Font/Subtype/Type1/BaseFont/Courier/FirstChar 1/LastChar 255/Widths[" + widths +
            "]/ToUnicode 6 0 R>>",
        stream(codes.toUnicodeMap()),
    };
    for (qsizetype i = 0; i < m_pages.size(); ++i) {
        all.append(pageObject(m_pages[i], int(kFirstPageObject + 2 * i)));
        all.append(stream(content(m_pages[i], codes)));
    }
    return all;
}

QByteArray PdfBuilder::build() const
{
    QList<QByteArray> all = objects();
    if (m_lock == PdfLock::None)
        return assembled(all, m_furtherObjects, {});
    const PdfCipher cipher(m_lock == PdfLock::NeedsPassword ? QByteArray(kPassword) : QByteArray());
    for (qsizetype i = 0; i < all.size(); ++i)
        all[i] = encrypted(all[i], int(i + 1), cipher);
    const QByteArray identifier = '<' + PdfCipher::fileIdentifier().toHex() + '>';
    return assembled(all, {}, "/Encrypt " + cipher.dictionary() + "/ID[" + identifier + identifier + ']');
}

QByteArray PdfBuilder::pageReference(int index)
{
    return QByteArray::number(kFirstPageObject + 2 * index) + " 0 R";
}

QByteArray PdfBuilder::utf16(const QString &text)
{
    QByteArray out = QByteArray::fromHex("feff");
    for (QChar unit : text) {
        out += char(unit.unicode() >> 8);
        out += char(unit.unicode() & 0xff);
    }
    return out;
}

QString PdfBuilder::inVisualOrder(const QString &text)
{
    const QList<uint> characters = text.toUcs4();
    QString out;
    for (auto c = characters.crbegin(); c != characters.crend(); ++c)
        out += QString::fromUcs4(reinterpret_cast<const char32_t *>(&*c), 1);
    return out;
}
