#include "reader/PathText.h"

#include <QApplication>
#include <QClipboard>
#include <QTest>
#include <gtest/gtest.h>

namespace
{
const QString kLongPath = QStringLiteral("/home/someone/") + QString(40, u'x') +
                          QStringLiteral("/papers and books/") + QString(200, u'y');
} // namespace

TEST(PathText, IsCopiedAsItIs)
{
    PathText text(300);
    text.setPath(kLongPath);
    text.show();
    text.selectAll();
    QTest::keyClick(&text, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), kLongPath);
}

TEST(PathText, TakesTheLinesThatThePathNeeds)
{
    PathText text(300);
    text.setPath(QStringLiteral("/a.pdf"));
    const int line = text.height();
    EXPECT_GE(line, text.fontMetrics().height());
    text.setPath(kLongPath);
    EXPECT_GT(text.height(), 3 * line);
    EXPECT_EQ(text.width(), 300);
    text.setPath(QStringLiteral("/b.pdf"));
    EXPECT_EQ(text.height(), line);
}

TEST(PathText, TakesMarkupForWhatItIs)
{
    PathText text(300);
    text.setPath(QStringLiteral("/<b>bold</b>.pdf"));
    EXPECT_EQ(text.toPlainText(), u"/<b>bold</b>.pdf");
}
