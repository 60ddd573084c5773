#include "ui/CardWords.h"
#include "store/ReservedTags.h"
#include "support/Printing.h"
#include "ui/PaperListModel.h"

#include <gtest/gtest.h>

namespace
{
/// The spans as one text: matches in [], cuts as …
QString shown(const char *snippet, const char *query)
{
    QString text;
    for (const SnippetSpan &span : passageSpans(QString::fromUtf8(snippet), QString::fromUtf8(query)))
        text += span.isMatch ? QString(u'[' + span.text + u']') : span.text;
    return text;
}

PaperCard cardWithPassage(qint64 page, int more)
{
    PaperCard card;
    card.passage = QStringLiteral("...attention... is all");
    card.passagePage = page;
    card.morePassages = more;
    return card;
}
} // namespace

TEST(CardWords, TurnTheMarkersOfAPassageIntoEmphasisAndEllipses)
{
    EXPECT_EQ(shown("...the model is ...attention... only...", "attention"),
              u"…the model is [attention] only…");
    EXPECT_EQ(shown("all of ...attention...", "attention"), u"all of [attention]");
}

TEST(CardWords, LeaveOutABeginningThatWouldHideTheMatch)
{
    EXPECT_EQ(
        shown("the dominant sequence transduction models are based on complex networks and ...attention...",
              "attention"),
        u"…are based on complex networks and [attention]");
    EXPECT_EQ(
        shown("...sequence transduction models that are based on complex networks and ...attention... too",
              "attention"),
        u"…are based on complex networks and [attention] too");
}

TEST(CardWords, KeepABeginningThatIsShort)
{
    EXPECT_EQ(shown("networks and ...attention...", "attention"), u"networks and [attention]");
}

TEST(CardWords, CutAnEndlessWordBeforeTheMatchWhereTheyMust)
{
    const QString word(80, u'x');
    EXPECT_EQ(shown(qPrintable(word + u" ...attention..."), "attention"),
              QString(u"…" + word.left(35) + u" [attention]"));
}

TEST(CardWords, PutAPassageOnOneLine)
{
    EXPECT_EQ(shown("one\ntwo ...attention...\n\nthree", "attention"), u"one two [attention] three");
}

TEST(CardWords, NameThePageAndHowManyPassagesMore)
{
    EXPECT_EQ(passagePlace(cardWithPassage(7, 0)), u"Page 7");
    EXPECT_EQ(passagePlace(cardWithPassage(7, 1)), u"Page 7 · 1 more passage");
    EXPECT_EQ(passagePlace(cardWithPassage(12, 3)), u"Page 12 · 3 more passages");
    EXPECT_EQ(passagePlace(PaperCard()), u"");
}

TEST(CardWords, SpeakACardMostTellingFirst)
{
    PaperCard card = cardWithPassage(7, 1);
    card.paper.title = QStringLiteral("A Title");
    card.paper.authors = QStringLiteral("Ada, Ben");
    card.paper.year = 2017;
    card.paper.tags = {QLatin1String(kCurrentlyReadingTag)};
    EXPECT_EQ(spokenCard(card), u"A Title, Ada, Ben, 2017, attention is all, Page 7 · 1 more passage, "
                                u"currently reading");
}

TEST(CardWords, SpeakOnlyWhatIsKnown)
{
    PaperCard card;
    card.paper.title = QStringLiteral("A Title");
    EXPECT_EQ(spokenCard(card), u"A Title");
}
