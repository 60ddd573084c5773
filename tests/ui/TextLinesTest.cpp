#include "ui/TextLines.h"
#include "support/Printing.h"

#include <QApplication>
#include <QFontMetrics>
#include <gtest/gtest.h>

namespace
{
constexpr int kWidth = 168;

QStringList linesOf(const QString &text, int lines)
{
    const TextLines fitted = fitText({text, {}}, QApplication::font(), kWidth, lines);
    QStringList shown;
    for (int i = 0; i < fitted.layout->lineCount(); ++i) {
        const QTextLine line = fitted.layout->lineAt(i);
        shown.append(fitted.layout->text().mid(line.textStart(), line.textLength()).trimmed());
        EXPECT_LE(line.naturalTextWidth(), kWidth) << shown.last().toStdString();
    }
    return shown;
}
} // namespace

TEST(TextLines, LeaveAShortTextAlone)
{
    EXPECT_EQ(linesOf(QStringLiteral("Short"), 2), QStringList{QStringLiteral("Short")});
    EXPECT_FALSE(fitText({QStringLiteral("Short"), {}}, QApplication::font(), kWidth, 2).isCut);
    EXPECT_EQ(linesOf({}, 2).size(), 1);
}

TEST(TextLines, EndALongTextAfterAWholeWord)
{
    const QString text =
        QStringLiteral("On the electrodynamics of moving bodies, with an appendix on moving rods");
    const QStringList lines = linesOf(text, 2);
    ASSERT_EQ(lines.size(), 2);
    ASSERT_TRUE(lines.last().endsWith(u'…'));
    const QString kept = lines.join(u' ').chopped(1);
    EXPECT_TRUE(text.startsWith(kept));
    EXPECT_EQ(text.at(kept.size()), u' ');
    EXPECT_TRUE(fitText({text, {}}, QApplication::font(), kWidth, 2).isCut);
}

TEST(TextLines, BreakAWordThatIsLongerThanALine)
{
    const QStringList lines = linesOf(QString(200, u'm'), 2);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines.first().size() > 5);
    EXPECT_TRUE(lines.last().endsWith(QStringLiteral("m…")));
}

TEST(TextLines, NeverPartTheHalvesOfACharacter)
{
    const QStringList lines = linesOf(QStringLiteral("\U0001F600").repeated(100), 1);
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines.first().endsWith(u'…'));
    EXPECT_TRUE(lines.first().chopped(1).isValidUtf16());
}

TEST(TextLines, LookOnlyAtTheBeginningOfAnEndlessText)
{
    const TextLines fitted = fitText({QString(5'000'000, u'i'), {}}, QApplication::font(), kWidth, 2);
    EXPECT_TRUE(fitted.isCut);
    EXPECT_LT(fitted.layout->text().size(), 400);
}

TEST(TextLines, SetRightToLeftTextFromTheRight)
{
    const QString hebrew = QString::fromUtf8("שלום");
    const TextLines fitted = fitText({hebrew, {}}, QApplication::font(), kWidth, 1);
    const QRectF used = fitted.layout->lineAt(0).naturalTextRect();
    EXPECT_GT(used.left(), kWidth / 2);
}

TEST(TextLines, StandAsFarApartAsTheFontsOwnLines)
{
    const QFontMetrics metrics(QApplication::font());
    const TextLines fitted =
        fitText({QStringLiteral("words \u4e2d\u6587 and words and \u4e2d\u6587 words again and again"), {}},
                QApplication::font(), kWidth, 3);
    for (int i = 0; i < fitted.layout->lineCount(); ++i) {
        const QTextLine line = fitted.layout->lineAt(i);
        EXPECT_DOUBLE_EQ(line.y() + line.ascent(), i * metrics.height() + metrics.ascent());
    }
}
