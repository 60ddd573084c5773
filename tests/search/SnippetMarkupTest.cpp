#include "search/SnippetMarkup.h"
#include "search/FTSQueryBuilder.h"
#include "search/NativeSearchService.h"
#include "search/SnippetMarkers.h"
#include "support/TestLibrary.h"

namespace
{
/// The spans as one text: matches in [], cuts as …
QString shown(const QList<SnippetSpan> &spans)
{
    QString text;
    for (const SnippetSpan &span : spans)
        text += span.isMatch ? QString(u'[' + span.text + u']') : span.text;
    return text;
}

QString marked(const char *snippet)
{
    return shown(markUpSnippet(QString::fromUtf8(snippet)));
}

QString marked(const char *snippet, const char *query)
{
    return shown(markUpSnippet(QString::fromUtf8(snippet), QString::fromUtf8(query)));
}

/// Snippets as the index itself makes them.
class IndexSnippets : public ::testing::Test
{
protected:
    QString marked(const char *text, const char *query, bool knowsQuery = true)
    {
        library.run(QStringLiteral("DELETE FROM fts_papers"));
        library.addPage(QStringLiteral("a"), 1, text);
        const QString asked = QString::fromUtf8(query);
        const QList<Passage> passages = *search.searchInPaper(QStringLiteral("a"), asked).result();
        if (passages.isEmpty())
            return QStringLiteral("not found");
        return shown(knowsQuery ? markUpSnippet(passages[0].text, asked) : markUpSnippet(passages[0].text));
    }

    TestLibrary library;
    NativeSearchService search{library.db};
};
} // namespace

TEST(SnippetMarkup, TellsMatchesFromCuts)
{
    EXPECT_EQ(marked("...match... of all"), u"[match] of all");
    EXPECT_EQ(marked("all of ...match..."), u"all of [match]");
    EXPECT_EQ(marked("...a b ...match... c d..."), u"…a b [match] c d…");
    EXPECT_EQ(marked("......match... c d..."), u"…[match] c d…");
    EXPECT_EQ(marked("...a b ...match......"), u"…a b [match]…");
    EXPECT_EQ(marked("...a b ...match..."), u"…a b [match]");
    EXPECT_EQ(marked("...match... a b..."), u"[match] a b…");
    EXPECT_EQ(marked("......match......"), u"…[match]…");
    EXPECT_EQ(marked("...one... ...two..."), u"[one] [two]");
    EXPECT_EQ(marked("...two words... (...three...), x"), u"[two words] ([three]), x");
}

TEST(SnippetMarkup, LeavesPlainTextAsItIs)
{
    for (const char *text :
         {"", "plain", "a . . . b", "what ... ever", "e.g. this", ". . .", "...", "......", "a..b"})
        EXPECT_EQ(marked(text), QString::fromUtf8(text)) << text;
}

TEST(SnippetMarkup, LeavesTheTextsOwnDotsInPlace)
{
    EXPECT_EQ(marked("we use ...learning..... And"), u"we use [learning].. And");
    EXPECT_EQ(marked("www....example....com"), u"www.[example].com");
    EXPECT_EQ(marked("wait ... what ...match... is"), u"wait ... what [match] is");
}

TEST(SnippetMarkup, LosesNoWordOfATableOfContents)
{
    for (const char *text :
         {"Introduction........5 ...Method......7 Results.....9",
          "...1.2 Methods..........17 1.3 ...Data.............21...", "A......................B",
          "x... y... z...", "...x ...y ...z", "a...b...c...d"}) {
        QString spans;
        for (const SnippetSpan &span : markUpSnippet(QString::fromUtf8(text)))
            spans += span.text + u' ';
        EXPECT_EQ(foldedWords(spans), foldedWords(QString::fromUtf8(text))) << text;
    }
}

TEST(SnippetMarkup, IsSureOnceItKnowsTheQuery)
{
    EXPECT_EQ(marked("...we think... that ...graph... works...", "graph"),
              u"…we think... that [graph] works…");
    EXPECT_EQ(marked("Introduction........5 ...Method......7 Results.....9", "meth"),
              u"Introduction........5 [Method]...7 Results.....9");
    EXPECT_EQ(marked("......Überlagerung... x", "uber"), u"…[Überlagerung] x");
    EXPECT_EQ(marked("...state-of-the-art... x", "state-of-the-art"), u"[state-of-the-art] x");
}

TEST(SnippetMarkup, FallsBackOnStructureWhenNoWordOfTheQueryIsThere)
{
    EXPECT_EQ(marked("a ...match... b", "other"), u"a [match] b");
}

TEST(SnippetMarkup, TakesAnyLengthOfText)
{
    const QString dots = QStringLiteral("a... b ").repeated(200'000);
    EXPECT_EQ(shown(markUpSnippet(dots)), dots);
}

TEST_F(IndexSnippets, AreToldApart)
{
    EXPECT_EQ(marked("graph", "graph"), u"[graph]");
    EXPECT_EQ(marked("graph neural networks", "gra neur"), u"[graph] [neural] networks");
    EXPECT_EQ(marked("graph neural networks", "\"graph neural\""), u"[graph neural] networks");
    EXPECT_EQ(marked("one two three four five six seven eight nine ten eleven twelve graph", "graph"),
              u"…four five six seven eight nine ten eleven twelve [graph]");
    EXPECT_EQ(marked("graph two three four five six seven eight nine ten eleven twelve", "graph"),
              u"[graph] two three four five six seven eight nine ten…");
    EXPECT_EQ(marked("a b c d e f g h i j k l graph m n o p q r s t u v w", "graph"),
              u"…i j k l [graph] m n o p q…");
}

TEST_F(IndexSnippets, AreToldApartWithoutTheQueryToo)
{
    EXPECT_EQ(marked("graph neural networks", "gra neur", false), u"[graph] [neural] networks");
    EXPECT_EQ(marked("a b c d e f g h i j k l graph m n o p q r s t u v w", "graph", false),
              u"…i j k l [graph] m n o p q…");
    EXPECT_EQ(marked("a b graph j graph k l m n o p q r", "graph", false),
              u"a b [graph] j [graph] k l m n o…");
}

TEST_F(IndexSnippets, KeepTheDotsOfTheirText)
{
    EXPECT_EQ(marked("we think... that the graph... works well", "graph"),
              u"we think... that the [graph]... works well");
    EXPECT_EQ(marked("1 Introduction ........ 5 2 Method ........ 7 3 Results ........ 9 4 End", "method"),
              u"…5 2 [Method] ........ 7 3 Results ........ 9 4 End");
    EXPECT_EQ(marked("1 Introduction........5 2 Method........7 3 Results........9", "method"),
              u"1 Introduction........5 2 [Method]........7 3 Results........9");
}
