#include "ui/ReleaseNotesView.h"

#include "support/Printing.h"
#include "support/TemporaryFolder.h"
#include "updates/Appcast.h"

#include <QImage>
#include <QSignalSpy>
#include <QTextBlock>
#include <gtest/gtest.h>

namespace
{
class ReleaseNotesViewTest : public testing::Test
{
protected:
    void showMarkdown(const QString &text) { m_view.setNotes({text, ReleaseNotes::Format::Markdown}); }

    ReleaseNotesView m_view;
};
} // namespace

TEST_F(ReleaseNotesViewTest, ShowsPlainTextAsItIs)
{
    m_view.setNotes({QStringLiteral("# 2.0\n<b>* faster</b> &amp; smaller"), ReleaseNotes::Format::Plain});
    EXPECT_EQ(m_view.toPlainText(), u"# 2.0\n<b>* faster</b> &amp; smaller");
}

TEST_F(ReleaseNotesViewTest, ShowsMarkdown)
{
    showMarkdown(QStringLiteral("# New\n\n- faster\n- **smaller**\n"));
    EXPECT_EQ(m_view.toPlainText(), u"New\nfaster\nsmaller");
    EXPECT_EQ(m_view.document()->firstBlock().blockFormat().headingLevel(), 1);
    EXPECT_NE(m_view.document()->firstBlock().next().textList(), nullptr);
}

TEST_F(ReleaseNotesViewTest, TakesNoHtml)
{
    showMarkdown(QStringLiteral("a <b onclick=\"x\">bold</b> word\n\n<script>alert(1)</script>"));
    EXPECT_TRUE(m_view.toPlainText().contains(u"<b onclick"));
    EXPECT_TRUE(m_view.toPlainText().contains(u"<script>"));
}

TEST_F(ReleaseNotesViewTest, LoadsNoPictureFromAnywhere)
{
    const TemporaryFolder folder;
    const QString path = folder.path(QStringLiteral("picture.png"));
    QImage picture(300, 300, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(path));
    for (const QString &address :
         {path, QUrl::fromLocalFile(path).toString(), QStringLiteral("https://updates.example/picture.png"),
          QStringLiteral("data:image/png;base64,iVBORw0KGgo=")}) {
        showMarkdown(QString(u"![picture](" + address + u')'));
        EXPECT_LT(m_view.document()->size().height(), 100) << address.toStdString();
        EXPECT_EQ(
            m_view.document()->resource(QTextDocument::ImageResource, QUrl(address)).value<QImage>().size(),
            QSize(1, 1));
    }
}

TEST_F(ReleaseNotesViewTest, LoadsNothingElseEither)
{
    EXPECT_FALSE(
        m_view.loadResource(QTextDocument::HtmlResource, QUrl(QStringLiteral("file:///etc/hostname")))
            .isValid());
    EXPECT_FALSE(
        m_view.loadResource(QTextDocument::StyleSheetResource, QUrl(QStringLiteral("a.css"))).isValid());
}

TEST_F(ReleaseNotesViewTest, TellsOfLinksToTheWebThatAreFollowed)
{
    showMarkdown(QStringLiteral("[all](https://updates.example/all)"));
    QSignalSpy followed(&m_view, &ReleaseNotesView::webLinkFollowed);
    Q_EMIT m_view.anchorClicked(QUrl(QStringLiteral("https://updates.example/all")));
    Q_EMIT m_view.anchorClicked(QUrl(QStringLiteral("http://updates.example/all")));
    EXPECT_EQ(followed.size(), 2);
    EXPECT_EQ(m_view.toPlainText(), u"all") << "it shows what it showed";
}

TEST_F(ReleaseNotesViewTest, FollowsNoLinkToAnythingElse)
{
    QSignalSpy followed(&m_view, &ReleaseNotesView::webLinkFollowed);
    for (const QString &address :
         {QStringLiteral("file:///usr/bin/true"), QStringLiteral("/usr/bin/true"), QStringLiteral("#top"),
          QStringLiteral("mailto:a@updates.example"), QStringLiteral("javascript:alert(1)")})
        Q_EMIT m_view.anchorClicked(QUrl(address));
    EXPECT_TRUE(followed.isEmpty());
}

TEST_F(ReleaseNotesViewTest, SurvivesNotesThatAreNestedWithoutEnd)
{
    m_view.show();
    for (const QChar mark : {u'>', u'[', u'*', u'-', u'`', u'|'}) {
        showMarkdown(QString(kMaxNotesCharacters, mark));
        showMarkdown(QString(QString(mark) + u' ').repeated(kMaxNotesCharacters / 2));
    }
    showMarkdown(QStringLiteral("fine"));
    EXPECT_EQ(m_view.toPlainText(), u"fine");
}
