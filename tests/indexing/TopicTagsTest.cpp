#include "indexing/TopicTags.h"

#include "indexing/KeywordFilter.h"
#include "indexing/TopicTable.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

namespace
{
const QString kTopology = QStringLiteral("Topology");

QStringList tagsOfTitle(const QString &title)
{
    return topicTags(title, {}, {});
}

QStringList tagsOfText(const QString &text)
{
    return topicTags({}, text, {});
}

QStringList tagsOfSubject(const QString &subject)
{
    return topicTags({}, {}, {subject});
}

TEST(TopicTags, NeedOneKeywordInTheTitle)
{
    EXPECT_EQ(tagsOfTitle(QStringLiteral("Notes on Homotopy")), QStringList(kTopology));
    EXPECT_EQ(tagsOfTitle(QStringLiteral("Notes on Nothing")), QStringList());
}

TEST(TopicTags, NeedTwoDifferentKeywordsInTheText)
{
    EXPECT_EQ(tagsOfText(QStringLiteral("homotopy ").repeated(10)), QStringList());
    EXPECT_EQ(tagsOfText(QStringLiteral("homotopy and knot theory")), QStringList(kTopology));
}

TEST(TopicTags, MatchWholeWordsOnly)
{
    EXPECT_EQ(tagsOfTitle(QStringLiteral("A node to decode")), QStringList());
    EXPECT_EQ(tagsOfTitle(QStringLiteral("An ODE solver")),
              QStringList(QStringLiteral("Differential Equations")));
    EXPECT_EQ(tagsOfTitle(QStringLiteral("Albert's Roberta")), QStringList());
    EXPECT_EQ(tagsOfTitle(QStringLiteral("On BERT")), QStringList(QStringLiteral("Transformer Models")));
    EXPECT_EQ(tagsOfTitle(QStringLiteral("gpt-40")), QStringList());
    EXPECT_EQ(tagsOfTitle(QStringLiteral("(GPT-4)")), QStringList(QStringLiteral("Transformer Models")));
    EXPECT_EQ(tagsOfTitle(QStringLiteral("gpt4")), QStringList());
}

TEST(TopicTags, KnowWordsInEveryScript)
{
    EXPECT_EQ(tagsOfTitle(QStringLiteral("éode odeé ωode")), QStringList());
    EXPECT_EQ(tagsOfTitle(QStringLiteral("«ode»")), QStringList(QStringLiteral("Differential Equations")));
}

TEST(TopicTags, SeeTheFirst8000CharactersOfTheText)
{
    const QString keywords = QStringLiteral("homotopy knot theory");
    const QString fits = QStringLiteral("x").repeated(8000 - keywords.size() - 1) + u' ';
    EXPECT_EQ(tagsOfText(fits + keywords), QStringList(kTopology));
    // One character more in front and the last keyword is cut.
    EXPECT_EQ(tagsOfText(u"x" + fits + keywords), QStringList());
}

TEST(TopicTags, CountCharactersAsPeoplePerceiveThem)
{
    const QString accented = QStringLiteral("e\u0301").repeated(7900);
    EXPECT_EQ(tagsOfText(accented + u" homotopy knot theory"), QStringList(kTopology));
}

TEST(TopicTags, FindKeywordsInsideSubjects)
{
    EXPECT_EQ(tagsOfSubject(QStringLiteral("Machine learning -- Congresses")),
              QStringList(QStringLiteral("AI & Machine Learning")));
    EXPECT_EQ(tagsOfSubject(QStringLiteral("Topologyx")), QStringList(kTopology));
}

TEST(TopicTags, TakeASubjectThatIsATopicsName)
{
    EXPECT_EQ(tagsOfSubject(QStringLiteral("PROBABILITY & STATISTICS")),
              QStringList(QStringLiteral("Probability & Statistics")));
    EXPECT_EQ(tagsOfSubject(QStringLiteral("analysis")), QStringList(QStringLiteral("Analysis")));
    EXPECT_EQ(tagsOfSubject(QStringLiteral("analysis of things")), QStringList());
}

TEST(TopicTags, ComeInTableOrderAndOnce)
{
    EXPECT_EQ(topicTags(QStringLiteral("LLM topology"), QStringLiteral("vector space, eigenvalue, llm, rlhf"),
                        {QStringLiteral("set theory"), kTopology}),
              QStringList({QStringLiteral("Logic & Foundations"), QStringLiteral("Linear Algebra"), kTopology,
                           QStringLiteral("Large Language Models")}));
}

TEST(TopicTable, HasSixteenTopicsWhoseKeywordsAllFindThemselves)
{
    EXPECT_EQ(topicTable().size(), 16U);
    size_t number = 0;
    for (const Topic &topic : topicTable()) {
        EXPECT_EQ(topic.flag, topic.name == u"Algebraic Geometry");
        EXPECT_TRUE(isTopicName(topic.name));
        for (const TopicKeyword &keyword : topic.keywords) {
            EXPECT_EQ(keyword.number, number++);
            EXPECT_TRUE(keyword.expression.match(keyword.text.toUpper()).hasMatch())
                << keyword.text.toStdString();
            EXPECT_EQ(tagsOfTitle(keyword.text).count(topic.name), 1);
        }
    }
    EXPECT_EQ(topicKeywordCount(), number);
    EXPECT_FALSE(isTopicName(QStringLiteral("Untagged")));
}

TEST(KeywordFilter, LetsThroughEveryKeywordThatItsExpressionFinds)
{
    const QStringList frames = {QStringLiteral("%1"),   QStringLiteral("a %1 b"), QStringLiteral("x%1"),
                                QStringLiteral("é%1é"), QStringLiteral("-%1-"),   QStringLiteral("4%1"),
                                QStringLiteral("_%1_"), QStringLiteral("ſ%1"),    QStringLiteral("%1s")};
    for (const Topic &topic : topicTable()) {
        for (const TopicKeyword &keyword : topic.keywords) {
            for (QString text :
                 {keyword.text, keyword.text.toUpper(), QString(keyword.text).replace(u's', u'ſ'),
                  QString(keyword.text).replace(u'k', QChar(0x212A))}) {
                for (const QString &frame : frames) {
                    const QString lowered = frame.arg(text).toLower();
                    const bool isFound = keyword.expression.match(lowered).hasMatch();
                    EXPECT_TRUE(!isFound || possibleKeywords(lowered)[keyword.number])
                        << lowered.toStdString();
                }
            }
        }
    }
}
} // namespace
