#include "screenshots/SampleArticle.h"

#include "support/PdfBuilder.h"

#include <QFile>
#include <QStringList>
#include <algorithm>
#include <array>
#include <cmath>

namespace
{
constexpr PdfBox kSheet{0, 0, 595, 842}; // A4
// Two columns.
constexpr double kLeft = 62;
constexpr double kColumnWidth = 225;
constexpr double kGap = 21;
constexpr double kTop = 770;
constexpr double kBottom = 70;
constexpr double kTextSize = 10;
constexpr double kLeading = 13.5;
constexpr double kHeadingSize = 12.5;
constexpr int kLineLength = 45;
constexpr int kOutlineRoot = PdfBuilder::kFirstFreeObject;

struct Section {
    const char *title;
    int page; ///< 0-based, of the file
    bool isSubsection;
};

constexpr std::array kSections = {
    Section{"Preface", 0, false},
    Section{"1  What readers keep in mind", 2, false},
    Section{"1.1  Words, places and pictures", 3, true},
    Section{"1.2  What is lost overnight", 4, true},
    Section{"2  A corpus of half-remembered phrases", 5, false},
    Section{"2.1  Ninety readers, nine months", 6, true},
    Section{"2.2  What they typed", 7, true},
    Section{"3  Ranking passages before papers", 8, false},
    Section{"3.1  Rare words count for more", 9, true},
    Section{"3.2  Close words count for more still", 10, true},
    Section{"4  What a reader should see first", 11, false},
    Section{"References", 12, false},
};
constexpr int kPages = 13;

/// On every third page.
constexpr char kRareParagraph[] =
    "We asked ninety readers to find passages in papers that they had read between a day and nine months "
    "earlier. Places on a page stayed in their minds, together with perhaps two rarer words; titles "
    "seldom, dates almost never.";

constexpr std::array kParagraphs = {
    "A reader who looks for a passage has seen it before. That sets the task apart from the search "
    "for a paper that nobody has read yet: there is a memory to meet, and the memory is better than "
    "its owner thinks.",
    "Most interfaces answer with a list of papers. The reader opens the first, scrolls, closes it, "
    "and opens the next. In our recordings four fifths of the time of a search went by after the "
    "right paper had been opened.",
    "The remedy is plain. A search should answer with passages, a passage should open in its place "
    "on its page, and it should be lit when the reader arrives. The rest of this text measures how "
    "much that saves.",
    "Two measures are used throughout. The first is the time from the last key of the query until "
    "the eyes rest on the passage; the second is the share of searches that were given up. Both "
    "were taken from recordings of the screen, never from what people said.",
    "Nothing here depends on the language of the papers. Words are compared without regard to case "
    "and accents, and a word that a line's end has broken in two is tried as one word and as two.",
    "Rare words carry most of what a reader knows. A query of two common words and a rare one is, for "
    "nearly every library, a query of the rare one; the common ones only choose among its passages.",
    "Distance matters as much as rarity. What stands together in a memory stood together on the "
    "page, or within a line, in nine of ten recordings.",
    "When the right passage was among the first three, readers took it without opening any other. "
    "When it came later they opened the first three nevertheless, in order, and then typed anew.",
    "The libraries were the readers' own, between two hundred and eleven thousand papers. Size made "
    "no difference to what they typed, and little to how long they looked.",
    "Scanned papers were left out unless their text had been recognised. A third of the recognised "
    "ones still lacked the words that were looked for, mostly at the ends of lines.",
    "One reader in six drew the page: a column, a figure at its foot, a formula near the top. The "
    "drawings were right more often than the words.",
    "Notes in the margin would settle the matter, and some readers keep them. They too went back to "
    "the passage itself before they quoted it.",
    "It did not help to show more of each passage. Two lines were enough to recognise it, and four "
    "lines left room for fewer passages.",
    "Readers who came from a list scrolled past the passage once in three times, and then back. "
    "Those who arrived on it, lit, began to read within a second.",
};

QByteArray number(double value)
{
    return QByteArray::number(value, 'f', 2) + ' ';
}

/// Text and drawings of one page, from the top downwards.
class Sheet
{
public:
    void paragraph(const QByteArray &text)
    {
        QByteArray line;
        for (const QByteArray &word : text.split(' ')) {
            if (line.size() + word.size() > kLineLength)
                write(std::exchange(line, {}), kTextSize, kLeading);
            line += (line.isEmpty() ? "" : " ") + word;
        }
        write(line, kTextSize, kLeading * 1.6);
    }
    void heading(const QByteArray &text)
    {
        m_y -= 6;
        write(text, kHeadingSize, 22);
    }
    void title(const QByteArray &text, const QByteArray &authors)
    {
        write(text, 23, 30);
        write(authors, 11, 44);
        m_columnTop = m_y;
    }
    bool isFull() const { return m_x > kLeft && m_y < kBottom; }
    /// A sky over hills, so that one sees at once whether its colours were touched.
    void photograph()
    {
        constexpr int kWidth = 108;
        constexpr int kHeight = 52;
        QByteArray pixels;
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x)
                pixels += pixelOf(double(x) / kWidth, double(y) / kHeight);
        }
        m_y -= 96;
        m_content += "q " + number(kColumnWidth) + "0 0 108 " + number(m_x) + number(m_y) +
                     "cm BI /W 108 /H 52 /CS /RGB /BPC 8 /F /AHx ID " + pixels.toHex() + "> EI Q ";
        m_y -= 14;
        write("Figure 1: The view from the reading room.", 8.5, 24);
    }
    void chart()
    {
        constexpr std::array kHeights = {96, 81, 60, 54, 33, 27, 18};
        m_y -= 90;
        double x = m_x + 8;
        for (const int height : kHeights) {
            m_content += "0.25 0.45 0.7 rg " + number(x) + number(m_y) + "22 " + number(height) + "re f ";
            x += 31;
        }
        m_content += "0 g " + number(m_x) + number(m_y) + number(kColumnWidth) + "0.8 re f ";
        m_y -= 14;
        write("Figure 2: Seconds to the passage, by words typed.", 8.5, 24);
    }
    void write(const QByteArray &text, double size, double step)
    {
        if (m_y < kBottom && m_x == kLeft) {
            m_x += kColumnWidth + kGap;
            m_y = m_columnTop;
        }
        m_content +=
            "BT /F1 " + number(size) + "Tf " + number(m_x) + number(m_y) + "Td <" + text.toHex() + "> Tj ET ";
        m_y -= step;
    }
    QByteArray content() const { return "0 g " + m_content; }

private:
    static QByteArray pixelOf(double x, double y)
    {
        const double hill = 0.62 + 0.13 * std::sin(7 * x) + 0.05 * std::sin(23 * x + 1);
        if (y < hill)
            return pixel(0.95 - 0.5 * (1 - y), 0.62 + 0.1 * y, 0.55 + 0.4 * (1 - y));
        return pixel(0.12 + 0.3 * (y - hill), 0.42 - 0.5 * (y - hill), 0.28 - 0.2 * x);
    }
    static QByteArray pixel(double red, double green, double blue)
    {
        QByteArray bytes;
        for (const double share : {red, green, blue})
            bytes += char(int(std::lround(255 * std::clamp(share, 0.0, 1.0))));
        return bytes;
    }

    double m_columnTop = kTop;
    double m_x = kLeft;
    double m_y = kTop;
    QByteArray m_content;
};

Sheet sheetOf(int page)
{
    Sheet sheet;
    if (page == 0)
        sheet.title(kSampleArticleTitle, "Clara Beaumont and Yusuf Demir");
    for (const Section &section : kSections) {
        if (section.page == page)
            sheet.heading(section.title);
    }
    for (size_t i = 0; i < kParagraphs.size() && !sheet.isFull(); ++i) {
        if (i == 1 && page == 0)
            sheet.photograph();
        if (i == 1 && page == 6)
            sheet.chart();
        if (i == 1 && page % 3 == 1)
            sheet.paragraph(kRareParagraph);
        sheet.paragraph(kParagraphs.at((size_t(page) * 5 + i) % kParagraphs.size()));
    }
    return sheet;
}

QByteArray reference(size_t item)
{
    return QByteArray::number(kOutlineRoot + 1 + qint64(item)) + " 0 R";
}

/// The item of the same rank that is nearest in a direction, or the size of the list.
size_t neighbour(size_t item, int step)
{
    for (size_t i = item + size_t(step); i < kSections.size(); i += size_t(step)) {
        if (kSections[i].isSubsection == kSections[item].isSubsection)
            return i;
        if (kSections[item].isSubsection)
            break;
    }
    return kSections.size();
}

QByteArray parentOf(size_t item)
{
    if (!kSections[item].isSubsection)
        return QByteArray::number(kOutlineRoot) + " 0 R";
    while (kSections[item].isSubsection)
        --item;
    return reference(item);
}

void addOutline(PdfBuilder &builder)
{
    for (size_t i = 0; i < kSections.size(); ++i) {
        QByteArray entry = "<</Title<" + QByteArray(kSections[i].title).toHex() + ">/Parent " + parentOf(i) +
                           "/Dest[" + PdfBuilder::pageReference(kSections[i].page) + "/XYZ 0 790 0]";
        if (neighbour(i, 1) < kSections.size())
            entry += "/Next " + reference(neighbour(i, 1));
        if (neighbour(i, -1) < kSections.size())
            entry += "/Prev " + reference(neighbour(i, -1));
        size_t last = i;
        while (!kSections[i].isSubsection && last + 1 < kSections.size() && kSections[last + 1].isSubsection)
            ++last;
        if (last > i)
            entry += "/First " + reference(i + 1) + "/Last " + reference(last) + "/Count " +
                     QByteArray::number(qint64(last - i));
        builder.object(kOutlineRoot + 1 + int(i), entry + ">>");
    }
    builder
        .object(kOutlineRoot,
                "<</First " + reference(0) + "/Last " + reference(kSections.size() - 1) + "/Count 12>>")
        .catalogue("/Outlines " + QByteArray::number(kOutlineRoot) + " 0 R");
}
} // namespace

QString writeSampleArticle(const QString &folder)
{
    PdfBuilder builder;
    builder.title(PdfBuilder::utf16(QLatin1String(kSampleArticleTitle)))
        .author(PdfBuilder::utf16(QStringLiteral("Clara Beaumont, Yusuf Demir")))
        .catalogue("/PageLabels<</Nums[0<</S/r>>2<</S/D>>]>>");
    for (int page = 0; page < kPages; ++page)
        builder.page(PdfPage{.mediaBox = kSheet, .drawing = sheetOf(page).content()});
    addOutline(builder);
    QFile file(folder + u"/finding-a-passage-again.pdf");
    if (file.open(QIODevice::WriteOnly))
        file.write(builder.build());
    return file.fileName();
}
