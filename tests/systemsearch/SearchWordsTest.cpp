#include "systemsearch/SearchWords.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

TEST(SearchWords, AreTheTermsWithoutWhatIsNoLetter)
{
    EXPECT_EQ(searchWords({QStringLiteral("\"graph\"*"), QStringLiteral("O'Brien"), QStringLiteral("--")}),
              (QStringList{QStringLiteral("graph"), QStringLiteral("O Brien")}));
}

TEST(SearchWords, KeepLettersOutsideTheBasicPlaneAndMarks)
{
    const QString text = QString::fromUtf8("𝔊raph e\u0301t");
    EXPECT_EQ(searchWords({text}), QStringList(text));
}

TEST(SearchWords, AreNotMadeOfMarksAlone)
{
    EXPECT_EQ(searchWords({QString(QChar(0x301))}), QStringList());
}

TEST(SearchWords, AreBoundedInNumberAndLength)
{
    EXPECT_EQ(searchWords(QStringList(1000, QStringLiteral("a"))).size(), kMostTerms);
    EXPECT_EQ(searchWords({QString(1000, u'a')}), QStringList(QString(kLongestTerm, u'a')));
}

TEST(SearchWords, SurviveACutThroughACharacter)
{
    const QString text = QString(kLongestTerm - 1, u'a') + QString::fromUtf8("𝔊");
    EXPECT_EQ(searchWords({text}), QStringList(QString(kLongestTerm - 1, u'a')));
}
