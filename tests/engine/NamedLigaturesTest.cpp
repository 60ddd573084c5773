#include "engine/OpenedDocument.h"
#include "support/PdfBuilder.h"

#include <QList>
#include <QPair>
#include <QtEndian>

namespace
{

QByteArray bigEndian16(int value)
{
    const quint16 swapped = qToBigEndian(static_cast<quint16>(value));
    return {reinterpret_cast<const char *>(&swapped), sizeof swapped};
}

QByteArray bigEndian32(quint32 value)
{
    const quint32 swapped = qToBigEndian(value);
    return {reinterpret_cast<const char *>(&swapped), sizeof swapped};
}

QByteArray zeros(int count)
{
    return QByteArray(count, '\0');
}

/// The names of the glyphs in order, as the font's "post" table holds them: all beyond the 258 usual names.
QByteArray glyphNames(const QList<QByteArray> &names)
{
    QByteArray indexes;
    QByteArray strings;
    for (qsizetype i = 0; i < names.size(); ++i) {
        indexes += bigEndian16(258 + static_cast<int>(i));
        strings += static_cast<char>(names[i].size()) + names[i];
    }
    return bigEndian32(0x20000) + zeros(28) + bigEndian16(static_cast<int>(names.size())) + indexes + strings;
}

/// A TrueType font of empty glyphs, half an em wide, with these names.
QByteArray fontWithGlyphs(const QList<QByteArray> &names)
{
    const int count = static_cast<int>(names.size());
    QByteArray metrics;
    for (int i = 0; i < count; ++i)
        metrics += bigEndian16(500) + bigEndian16(0);
    const QByteArray head = bigEndian32(0x10000) + zeros(8) + bigEndian32(0x5F0F3CF5) + bigEndian16(0) +
                            bigEndian16(1000) + zeros(16) + zeros(8) + zeros(10);
    const QByteArray horizontal =
        bigEndian32(0x10000) + bigEndian16(800) + bigEndian16(-200) + zeros(26) + bigEndian16(count);
    const QByteArray profile = bigEndian32(0x10000) + bigEndian16(count) + zeros(26);
    const QList<QPair<QByteArray, QByteArray>> tables{{"glyf", zeros(4)},
                                                      {"head", head},
                                                      {"hhea", horizontal},
                                                      {"hmtx", metrics},
                                                      {"loca", zeros(2 * (count + 1))},
                                                      {"maxp", profile},
                                                      {"post", glyphNames(names)}};
    QByteArray directory = bigEndian32(0x10000) + bigEndian16(static_cast<int>(tables.size())) + zeros(6);
    QByteArray body;
    const auto bodyStart = directory.size() + 16 * tables.size();
    for (const auto &[tag, content] : tables) {
        directory += tag + zeros(4) + bigEndian32(static_cast<quint32>(bodyStart + body.size())) +
                     bigEndian32(static_cast<quint32>(content.size()));
        body += content + zeros(static_cast<int>((4 - content.size() % 4) % 4));
    }
    return directory + body;
}

QByteArray stream(const QByteArray &entries, const QByteArray &content)
{
    return "<<" + entries + "/Length " + QByteArray::number(content.size()) + ">>stream\n" + content +
           "\nendstream";
}

/// A page that shows "AB" in a font whose two glyphs have these names; `fontEntries` go into its dictionary.
QByteArray documentWith(const QList<QByteArray> &names, const QByteArray &fontEntries = {},
                        const QByteArray &map = {})
{
    const QByteArray font = fontWithGlyphs(QList<QByteArray>{".notdef"} + names);
    const QList<QByteArray> objects{
        "<</Type/Catalog/Pages 2 0 R>>",
        "<</Type/Pages/Count 1/Kids[3 0 R]>>",
        "<</Type/Page/Parent 2 0 R/MediaBox[0 0 300 100]/Resources<</Font<</F 4 0 R>>>>/Contents 5 0 R>>",
        "<</Type/Font/Subtype/TrueType/BaseFont/AAAAAA+Test/FirstChar 65/LastChar 66/Widths[500 500]"
        "/FontDescriptor 6 0 R/Encoding<</Differences[65/" +
            names[0] + "/" + names[1] + "]>>" + fontEntries + ">>",
        stream({}, "BT /F 20 Tf 20 50 Td (AB) Tj ET"),
        "<</Type/FontDescriptor/FontName/AAAAAA+Test/Flags 4/FontFile2 7 0 R>>",
        stream("/Length1 " + QByteArray::number(font.size()), font),
        stream({}, map)};
    QByteArray pdf = "%PDF-1.7\n";
    for (qsizetype i = 0; i < objects.size(); ++i)
        pdf += QByteArray::number(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    return pdf + "trailer<</Root 1 0 R>>\n%%EOF\n";
}

/// A device that only counts the clips that it was told of and not told the end of.
int clipsLeftOn(fz_context *context, void (*draw)(fz_context *, fz_device *, fz_text *))
{
    NamedLigatures ligatures(context);
    const DeviceHandle target(fz_new_device_of_size(context, sizeof(fz_device)), {context});
    const DeviceHandle device(ligatures.newDevice(target.get()), {context});
    fz_text *text = fz_new_text(context);
    draw(context, device.get(), text);
    fz_drop_text(context, text);
    const int clips = target->container_len;
    fz_close_device(context, device.get());
    fz_close_device(context, target.get());
    return clips;
}

} // namespace

TEST(NamedLigatures, AreSpelledOutByTheNamesOfTheirGlyphs)
{
    EXPECT_EQ(OpenedDocument(documentWith({"f_f_i", "T_h"})).text(), "ffiTh\n");
}

TEST(NamedLigatures, OfVariantsAreSpelledOutToo)
{
    EXPECT_EQ(OpenedDocument(documentWith({"f_l.alt", "x"})).text(), "flx\n");
}

TEST(NamedLigatures, AreLeftAloneWhereANameSpellsNothing)
{
    EXPECT_EQ(OpenedDocument(documentWith({"f_nonsense", "f_"})).text(), "ff\n");
}

TEST(NamedLigatures, AreLeftAloneWhereTheFontSaysWhatItsGlyphsMean)
{
    const QByteArray map = "/CIDInit /ProcSet findresource begin 12 dict begin begincmap\n"
                           "1 begincodespacerange <00> <FF> endcodespacerange\n"
                           "2 beginbfchar <41> <006600660069> <42> <FB02> endbfchar\nendcmap end end";
    EXPECT_EQ(OpenedDocument(documentWith({"f_f_i", "f_l"}, "/ToUnicode 8 0 R", map)).text(), "ffifl\n");
}

TEST(NamedLigatures, HandTextThatClipsOnInItsOrder)
{
    const PdfPage page = {.drawing = "BT /F1 12 Tf 72 700 Td (one) Tj 7 Tr 0 -20 Td (two) Tj "
                                     "5 Tr 0 -20 Td (three) Tj 0 Tr 0 -20 Td (four) Tj ET"};
    EXPECT_EQ(OpenedDocument(PdfBuilder().page(page).build()).text(), "one\ntwo\nthree\nfour\n");
}

TEST(NamedLigatures, LeaveNoClipOnTheTarget)
{
    const ContextHandle context(fz_new_context(nullptr, nullptr, FZ_STORE_DEFAULT));
    EXPECT_EQ(clipsLeftOn(context.get(),
                          [](fz_context *ctx, fz_device *device, fz_text *text) {
                              fz_clip_text(ctx, device, text, fz_identity, fz_infinite_rect);
                              fz_pop_clip(ctx, device);
                              fz_clip_stroke_text(ctx, device, text, &fz_default_stroke_state, fz_identity,
                                                  fz_infinite_rect);
                              fz_pop_clip(ctx, device);
                          }),
              0);
}
