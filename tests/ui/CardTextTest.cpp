#include "ui/CardText.h"
#include "support/Printing.h"

#include <QApplication>
#include <QFontMetrics>
#include <gtest/gtest.h>

namespace
{
Paper paper(const QString &authors, std::optional<qint64> year)
{
    Paper made;
    made.authors = authors;
    made.year = year;
    return made;
}
} // namespace

TEST(Byline, JoinsAuthorsAndYear)
{
    EXPECT_EQ(elidedByline(paper(QStringLiteral("Ada"), 1843), QApplication::font(), 168), u"Ada · 1843");
    EXPECT_EQ(elidedByline(paper(QStringLiteral("Ada"), {}), QApplication::font(), 168), u"Ada");
    EXPECT_EQ(elidedByline(paper({}, 1843), QApplication::font(), 168), u"1843");
    EXPECT_EQ(elidedByline(paper({}, {}), QApplication::font(), 168), u"");
}

TEST(Byline, ShortensTheAuthorsAndKeepsTheYear)
{
    const QString byline =
        elidedByline(paper(QStringLiteral("Ada Lovelace, Charles Babbage, Luigi Menabrea"), 1843),
                     QApplication::font(), 168);
    EXPECT_TRUE(byline.startsWith(u"Ada"));
    EXPECT_TRUE(byline.endsWith(u"… · 1843"));
    EXPECT_LE(QFontMetrics(QApplication::font()).horizontalAdvance(byline), 168);
}

TEST(CardText, KnowsWhetherTheTitleIsCut)
{
    const CardStyle style(QApplication::font(), CardKind::Paper);
    PaperCard card;
    card.paper.title = QStringLiteral("Short");
    EXPECT_FALSE(CardText(card, {}, style, {}).isTitleCut());
    card.paper.title = QStringLiteral("going on and ").repeated(10);
    EXPECT_TRUE(CardText(card, {}, style, {}).isTitleCut());
}
