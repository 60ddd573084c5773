#include "reader/ReaderWindowFixture.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>

namespace
{

class PDFViewerWindowBookmarks : public ReaderWindowTest
{
protected:
    PDFViewerWindowBookmarks()
    {
        path = writePdf(QStringLiteral("two.pdf"),
                        {{QStringLiteral("first page")}, {QStringLiteral("second leaf")}});
        addPaper(QStringLiteral("p"), path);
    }

    PDFOpenRequest paper() const
    {
        PDFOpenRequest request = requestFor(path);
        request.paperId = QStringLiteral("p");
        return request;
    }

    /// Opens a window in which `text` of that page is selected.
    void openWithSelection(PDFOpenRequest request, const QString &text, qint64 pageNumber)
    {
        request.page = pageNumber;
        request.highlightText = text;
        openAndArrive(request);
        awaitValue(reader().hasSelection, true);
        rest();
    }

    QDialog *alert() const { return window->findChild<QDialog *>(QStringLiteral("bookmarkAlert")); }
    void click(QDialogButtonBox::StandardButton button) const
    {
        QPushButton *found = alert()->findChild<QDialogButtonBox *>()->button(button);
        QTest::mouseClick(found, Qt::LeftButton);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void awaitCount(qsizetype count)
    {
        awaitThat(reader().bookmarks, [&] { return reader().bookmarks.value().size() == count; });
    }

    QString path;
};

} // namespace

TEST_F(PDFViewerWindowBookmarks, AsksForALabel)
{
    openWithSelection(paper(), QStringLiteral("first"), 1);
    actions().bookmarkSelection->trigger();
    ASSERT_TRUE(alert());
    EXPECT_TRUE(alert()->isVisible());
    EXPECT_EQ(alert()->windowTitle(), u"Bookmark Selection");
    QStringList texts;
    for (const QLabel *label : alert()->findChildren<QLabel *>())
        texts.append(label->text());
    EXPECT_EQ(texts, (QStringList{QStringLiteral("Bookmark Selection"),
                                  QStringLiteral("Add a label for this bookmark, or leave blank.")}));
    EXPECT_EQ(alert()->findChild<QLineEdit *>()->placeholderText(), u"Label (optional)");
    const auto *buttons = alert()->findChild<QDialogButtonBox *>();
    EXPECT_EQ(buttons->button(QDialogButtonBox::Save)->text(), u"Save");
    EXPECT_EQ(buttons->button(QDialogButtonBox::Cancel)->text(), u"Cancel");
}

TEST_F(PDFViewerWindowBookmarks, SavesTheSelectionOfTheFirstPageAsPageOne)
{
    openWithSelection(paper(), QStringLiteral("first"), 1);
    QTest::keyClick(&window->view(), Qt::Key_D, Qt::ControlModifier);
    QTest::keyClicks(alert()->findChild<QLineEdit *>(), QStringLiteral(" my label "));
    click(QDialogButtonBox::Save);
    EXPECT_FALSE(alert());
    awaitCount(1);
    const Bookmark stored = reader().bookmarks.value().first();
    EXPECT_EQ(stored.text, u"first");
    EXPECT_EQ(stored.page, 1);
    EXPECT_EQ(stored.label, u"my label");
    const auto *list = find<QListView>("bookmarks");
    ASSERT_EQ(list->model()->rowCount(), 1);
    EXPECT_EQ(list->model()->index(0, 0).data().toString(), u"Page 1. my label. first");
}

TEST_F(PDFViewerWindowBookmarks, StartsTheNextPromptBlank)
{
    openWithSelection(paper(), QStringLiteral("first"), 1);
    actions().bookmarkSelection->trigger();
    QTest::keyClicks(alert()->findChild<QLineEdit *>(), QStringLiteral("dropped"));
    click(QDialogButtonBox::Cancel);
    EXPECT_FALSE(alert());
    actions().bookmarkSelection->trigger();
    EXPECT_TRUE(alert()->findChild<QLineEdit *>()->text().isEmpty());
    click(QDialogButtonBox::Cancel);
    EXPECT_EQ(library.count(QStringLiteral("bookmarks")), 0);
}

TEST_F(PDFViewerWindowBookmarks, SavesNothingForAPDFThatIsNotInTheLibraryAndSaysSo)
{
    const QString stray = writePdf(QStringLiteral("stray.pdf"), {{QStringLiteral("first page")}});
    openWithSelection(requestFor(stray), QStringLiteral("first"), 1);
    actions().bookmarkSelection->trigger();
    EXPECT_EQ(alert()->findChildren<QLabel *>().last()->text(),
              u"Only papers of the library keep bookmarks.");
    click(QDialogButtonBox::Save);
    EXPECT_EQ(library.count(QStringLiteral("bookmarks")), 0);
}

TEST_F(PDFViewerWindowBookmarks, SavesNothingWithoutASelectionAndSaysSo)
{
    openAndArrive(paper());
    actions().bookmarkSelection->trigger();
    EXPECT_EQ(alert()->findChildren<QLabel *>().last()->text(), u"No text is selected.");
    click(QDialogButtonBox::Save);
    EXPECT_EQ(library.count(QStringLiteral("bookmarks")), 0);
}

TEST_F(PDFViewerWindowBookmarks, OpensTheBookmarkThatIsClickedWithItsTextLit)
{
    openWithSelection(paper(), QStringLiteral("leaf"), 2);
    QCoro::waitFor(reader().bookmarkSelection({}));
    awaitCount(1);
    openAndArrive(paper());
    awaitCount(1);
    find<QTabWidget>("readerSidebar")->setCurrentIndex(2);
    auto *list = find<QListView>("bookmarks");
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualRect(list->model()->index(0, 0)).center());
    awaitValue(reader().hasSelection, true);
    rest();
    EXPECT_EQ(window->view().currentSelection()->string(), u"leaf");
    EXPECT_EQ(reader().currentPage, 2);
}

TEST_F(PDFViewerWindowBookmarks, ListsTheStartOfALongOneAndOpensItWhole)
{
    const Bookmark longOne{.id = newBookmarkId(),
                           .paperId = QStringLiteral("p"),
                           .text = QString(100'000, u'x'),
                           .page = 1,
                           .label = {},
                           .createdAt = QStringLiteral("2024-03-05T14:07:09Z")};
    EXPECT_TRUE(library.service.createBookmark(longOne).result());
    open(paper());
    awaitCount(1);
    EXPECT_EQ(reader().bookmarks.value().first().text, longOne.text);
    const QString shown = find<QListView>("bookmarks")->model()->index(0, 0).data().toString();
    EXPECT_GE(shown.size(), 1000);
    EXPECT_LE(shown.size(), 1100);
}

TEST_F(PDFViewerWindowBookmarks, SavesABlankLabelAsNone)
{
    openWithSelection(paper(), QStringLiteral("first"), 1);
    actions().bookmarkSelection->trigger();
    QTest::keyClicks(alert()->findChild<QLineEdit *>(), QStringLiteral("  \t "));
    QTest::keyClick(alert()->findChild<QLineEdit *>(), Qt::Key_Return);
    awaitCount(1);
    EXPECT_EQ(reader().bookmarks.value().first().label, QString());
    EXPECT_EQ(find<QListView>("bookmarks")->model()->index(0, 0).data().toString(), u"Page 1. first");
}

TEST_F(PDFViewerWindowBookmarks, LogsOneThatCannotBeStored)
{
    openWithSelection(paper(), QStringLiteral("first"), 1);
    library.run(QStringLiteral("DROP TABLE bookmarks"));
    actions().bookmarkSelection->trigger();
    ::testing::internal::CaptureStdout();
    click(QDialogButtonBox::Save);
    static_cast<void>(library.service.paperById(QString()).result().has_value());
    QCoreApplication::processEvents();
    EXPECT_TRUE(::testing::internal::GetCapturedStdout().starts_with("Failed to create bookmark: "));
    EXPECT_FALSE(alert());
    EXPECT_TRUE(reader().bookmarks.value().isEmpty());
}

TEST_F(PDFViewerWindowBookmarks, DeletesOneByKeyAndByMenu)
{
    openWithSelection(paper(), QStringLiteral("leaf"), 2);
    QCoro::waitFor(reader().bookmarkSelection({}));
    QCoro::waitFor(reader().bookmarkSelection({}));
    awaitCount(2);
    auto *list = find<QListView>("bookmarks");
    list->setCurrentIndex(list->model()->index(0, 0));
    QTest::keyClick(list, Qt::Key_Delete);
    awaitCount(1);
    list->setCurrentIndex(list->model()->index(0, 0));
    find<QAction>("deleteBookmark")->trigger();
    awaitCount(0);
    EXPECT_EQ(find<QWidget>("bookmarksPane")->findChild<QLabel *>(QStringLiteral("hint"))->text(),
              u"No bookmarks yet");
}
