#include "ui/WrappedText.h"

#include "support/Printing.h"
#include "ui/WrappedLabel.h"

#include <QFontMetrics>
#include <gtest/gtest.h>

namespace
{
WrappedText textOf(const QString &text, int maximumLines = 0, Qt::TextElideMode elide = Qt::ElideRight)
{
    return {.text = text, .font = QFont(), .maximumLines = maximumLines, .elide = elide};
}

int lineHeight()
{
    return QFontMetrics(QFont()).lineSpacing();
}
} // namespace

TEST(WrappedText, TakesOneLineWhereItFits)
{
    EXPECT_EQ(textOf(QStringLiteral("short")).heightForWidth(300), lineHeight());
    EXPECT_EQ(textOf(QString()).heightForWidth(300), 0);
}

TEST(WrappedText, BreaksAWordThatIsWiderThanTheLine)
{
    const WrappedText text = textOf(QString(200, u'm'));
    EXPECT_GT(text.heightForWidth(100), 10 * lineHeight());
}

TEST(WrappedText, KeepsToItsLimitOfLines)
{
    for (const auto elide : {Qt::ElideRight, Qt::ElideMiddle}) {
        const WrappedText text = textOf(QString(300, u'm'), 3, elide);
        EXPECT_EQ(text.heightForWidth(100), 3 * lineHeight());
        EXPECT_FALSE(text.fits(100));
        EXPECT_TRUE(text.fits(100'000));
    }
}

TEST(WrappedText, SurvivesEveryWidth)
{
    for (const auto elide : {Qt::ElideRight, Qt::ElideMiddle}) {
        for (int width = -5; width < 60; ++width)
            EXPECT_LE(textOf(QString(300, u'm'), 3, elide).heightForWidth(width), 3 * lineHeight());
    }
}

TEST(WrappedText, BeginsALineWhereTheTextDoes)
{
    EXPECT_EQ(textOf(QStringLiteral("one\ntwo")).heightForWidth(300), 2 * lineHeight());
}

TEST(WrappedLabel, HidesWhileItIsEmpty)
{
    QWidget parent;
    WrappedLabel label(&parent);
    EXPECT_TRUE(label.isHidden());
    label.setWrappedText(QStringLiteral("text"));
    EXPECT_FALSE(label.isHidden());
}

TEST(WrappedLabel, HasTheWholeTextInItsToolTipOnlyWhereItDoesNotShow)
{
    WrappedLabel label;
    label.setMaximumLines(1);
    label.resize(60, 20);
    label.setWrappedText(QStringLiteral("a text that is <b>too</b> long"));
    EXPECT_EQ(label.toolTip(), QStringLiteral("<p>a text that is &lt;b&gt;too&lt;/b&gt; long</p>"));
    label.setWrappedText(QStringLiteral("a"));
    EXPECT_EQ(label.toolTip(), QString());
}

TEST(WrappedLabel, NeedsLittleWidthHoweverLongAWordIs)
{
    WrappedLabel label;
    label.setWrappedText(QString(1000, u'm'));
    EXPECT_LT(label.minimumSizeHint().width(), 100);
}
