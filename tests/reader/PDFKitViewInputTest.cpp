#include "reader/ReaderViewFixture.h"

#include <QClipboard>
#include <QHelpEvent>
#include <QMenu>
#include <QNativeGestureEvent>
#include <QPointingDevice>
#include <QProxyStyle>
#include <QToolTip>
#include <QWheelEvent>

namespace
{
class PDFKitViewInputTest : public ReaderViewTest
{
protected:
    static constexpr double kPageOfKeys = kHeight - 40;

    struct Wheel {
        QPointF at = {312, 250};
        QPoint pixels = {};
        QPoint angle = {};
        Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    };

    void turn(const Wheel &wheel)
    {
        QWheelEvent event(wheel.at, view.viewport()->mapToGlobal(wheel.at), wheel.pixels, wheel.angle,
                          Qt::NoButton, wheel.modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(view.viewport(), &event);
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&view, key, modifiers);
        rest();
    }
};

/// A desktop that asks for as little motion as can be.
class StillStyle : public QProxyStyle
{
public:
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *data) const override
    {
        return hint == SH_Widget_Animation_Duration ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
    }
};

} // namespace

TEST_F(PDFKitViewInputTest, ScrollsByKeys)
{
    showPages();
    press(Qt::Key_Space);
    EXPECT_EQ(top(), kPageOfKeys);
    press(Qt::Key_PageDown);
    EXPECT_EQ(top(), 2 * kPageOfKeys);
    press(Qt::Key_Space, Qt::ShiftModifier);
    press(Qt::Key_PageUp);
    EXPECT_EQ(top(), 0);
    press(Qt::Key_Down);
    press(Qt::Key_J);
    EXPECT_EQ(top(), 120);
    press(Qt::Key_K);
    press(Qt::Key_Up);
    EXPECT_EQ(top(), 0);
    press(Qt::Key_End);
    EXPECT_EQ(top(), viewpoint().offsets().bottom());
    press(Qt::Key_Home);
    EXPECT_EQ(top(), 0);
}

TEST_F(PDFKitViewInputTest, ScrollsSidewaysByKeys)
{
    showPages();
    view.zoomBy(3, {312, 250});
    const double left = viewpoint().offset().x();
    press(Qt::Key_Right);
    EXPECT_EQ(viewpoint().offset().x(), left + 60);
    press(Qt::Key_Left);
    EXPECT_EQ(viewpoint().offset().x(), left);
}

TEST_F(PDFKitViewInputTest, LeavesKeysWithModifiersToTheWindow)
{
    showPages();
    press(Qt::Key_J, Qt::ControlModifier);
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(top(), 0);
}

TEST_F(PDFKitViewInputTest, GlidesWhereTheWheelTurns)
{
    showPages();
    turn({.angle = {0, -120}});
    EXPECT_EQ(top(), 0);
    clock.advance(std::chrono::milliseconds(48));
    const double onTheWay = top();
    EXPECT_GT(onTheWay, 0);
    turn({.angle = {0, -120}});
    rest();
    const double notch = QApplication::wheelScrollLines() * 26.0;
    EXPECT_EQ(top(), 2 * notch) << "a turn goes on from where the last one was to end";
    EXPECT_LT(onTheWay, notch);
    EXPECT_FALSE(clock.hasPendingCalls());
}

TEST_F(PDFKitViewInputTest, FollowsATouchpadAtOnce)
{
    showPages();
    turn({.pixels = {0, -37}, .angle = {0, -40}});
    EXPECT_EQ(top(), 37);
}

TEST_F(PDFKitViewInputTest, DoesNotGlideWhereTheDesktopAsksForLittleMotion)
{
    StillStyle style;
    view.setStyle(&style);
    showPages();
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_EQ(top(), kPageOfKeys);
    EXPECT_FALSE(clock.hasPendingCalls());
    view.setStyle(nullptr);
}

TEST_F(PDFKitViewInputTest, ZoomsAboutThePointerByWheel)
{
    showPages();
    view.goToPage(4);
    const PDFPosition before = viewpoint().positionAt({400, 300});
    turn({.at = {400, 300}, .angle = {0, 480}, .modifiers = Qt::ControlModifier});
    EXPECT_NEAR(viewpoint().scale(), 2, 1e-9);
    const PDFPosition after = viewpoint().positionAt({400, 300});
    EXPECT_NEAR(after.point.x(), before.point.x(), 1e-6);
    EXPECT_NEAR(after.point.y(), before.point.y(), 1e-6);
}

TEST_F(PDFKitViewInputTest, ZoomsAboutThePointerByPinching)
{
    showPages();
    const PDFPosition before = viewpoint().positionAt({200, 300});
    const QPointF global = view.viewport()->mapToGlobal(QPointF(200, 300));
    QNativeGestureEvent pinch(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2, {200, 300},
                              {200, 300}, global, 0.5, {});
    QApplication::sendEvent(view.viewport(), &pinch);
    EXPECT_NEAR(viewpoint().scale(), 1.5, 1e-9);
    EXPECT_NEAR(viewpoint().positionAt({200, 300}).point.y(), before.point.y(), 1e-6);
}

TEST_F(PDFKitViewInputTest, DragsThePagesWithTheMiddleButton)
{
    showPages();
    QTest::mousePress(view.viewport(), Qt::MiddleButton, {}, {300, 400});
    EXPECT_EQ(view.viewport()->cursor().shape(), Qt::ClosedHandCursor);
    QTest::mouseMove(view.viewport(), {300, 250});
    QTest::mouseMove(view.viewport(), {300, 200});
    EXPECT_EQ(top(), 200);
    QTest::mouseRelease(view.viewport(), Qt::MiddleButton, {}, {300, 200});
    EXPECT_EQ(view.viewport()->cursor().shape(), Qt::ArrowCursor);
    QTest::mouseMove(view.viewport(), {300, 100});
    EXPECT_EQ(top(), 200);
}

TEST_F(PDFKitViewInputTest, GoesBackAndForwardWithTheOuterButtons)
{
    showPages();
    view.goToPage(5);
    QTest::mouseClick(view.viewport(), Qt::BackButton);
    EXPECT_EQ(view.currentPageIndex(), 0);
    QTest::mouseClick(view.viewport(), Qt::ForwardButton);
    EXPECT_EQ(view.currentPageIndex(), 5);
}

TEST_F(PDFKitViewInputTest, FollowsALinkInTheDocumentAndComesBack)
{
    pages.links[0] = {{QRectF(100, 100, 50, 20), PDFDestination{6, {0, 200}}}};
    showPages();
    const QPoint link = pointOf(0, {120, 110});
    QTest::mouseMove(view.viewport(), link);
    EXPECT_EQ(view.viewport()->cursor().shape(), Qt::PointingHandCursor);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, link);
    EXPECT_NEAR(viewpoint().pageRect(6).top(), -200, 1e-6);
    EXPECT_EQ(view.viewport()->cursor().shape(), Qt::ArrowCursor);
    view.goBack();
    EXPECT_EQ(top(), 0);
}

TEST_F(PDFKitViewInputTest, TellsOfALinkToTheWeb)
{
    const QUrl address(QStringLiteral("https://example.org/paper"));
    pages.links[0] = {{QRectF(100, 100, 50, 20), address}};
    showPages();
    QSignalSpy activated(&view, &PDFKitView::linkActivated);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, pointOf(0, {120, 110}));
    ASSERT_EQ(activated.count(), 1);
    EXPECT_EQ(activated.first().first().toUrl(), address);
    EXPECT_FALSE(view.canGoBack());
}

TEST_F(PDFKitViewInputTest, ShowsWhereALinkLeads)
{
    pages.links[0] = {{QRectF(100, 100, 50, 20), QUrl(QStringLiteral("https://example.org/paper"))}};
    showPages();
    const QPoint at = pointOf(0, {120, 110});
    QHelpEvent event(QEvent::ToolTip, at, view.viewport()->mapToGlobal(at));
    QApplication::sendEvent(view.viewport(), &event);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("https://example.org/paper"));
}

TEST_F(PDFKitViewInputTest, DoesNotFollowALinkThatWasDragged)
{
    pages.links[0] = {{QRectF(100, 100, 200, 20), PDFDestination{6, {}}}};
    showPages();
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, pointOf(0, {120, 110}));
    QTest::mouseMove(view.viewport(), pointOf(0, {220, 110}));
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, pointOf(0, {220, 110}));
    EXPECT_EQ(view.currentPageIndex(), 0);
}

TEST_F(PDFKitViewInputTest, FollowsTheLinksOfATurnedPage)
{
    pages.links[0] = {{QRectF(100, 100, 50, 20), PDFDestination{6, {}}}};
    showPages();
    view.rotatePages(PDFKitView::Turn::Right);
    view.goToPage(0);
    pages.answerAll();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, pointOf(0, {120, 110}));
    EXPECT_EQ(view.currentPageIndex(), 6);
}

TEST_F(PDFKitViewInputTest, SelectsByDragDoubleAndTripleClick)
{
    pages.texts[0] = placedLines({QStringLiteral("first words"), QStringLiteral("second line")});
    showPages();
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, pointOf(0, {51, 110}));
    QTest::mouseMove(view.viewport(), pointOf(0, {99, 110}));
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, pointOf(0, {99, 110}));
    EXPECT_EQ(view.currentSelection()->string(), QStringLiteral("first"));
    if (QApplication::clipboard()->supportsSelection()) {
        EXPECT_EQ(QApplication::clipboard()->text(QClipboard::Selection), QStringLiteral("first"));
    }

    const QPoint word = pointOf(0, {125, 110});
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, word);
    EXPECT_EQ(view.currentSelection()->string(), QStringLiteral("words"));
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, word);
    EXPECT_EQ(view.currentSelection()->string(), QStringLiteral("first words"));
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, word);
}

TEST_F(PDFKitViewInputTest, SelectsAcrossPagesByDragging)
{
    pages.usualSize = {600, 220};
    pages.texts[0] = placedLines({QStringLiteral("first words")});
    pages.texts[1] = placedLines({QStringLiteral("other words")});
    showPages();
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, pointOf(0, {111, 110}));
    QTest::mouseMove(view.viewport(), pointOf(1, {99, 110}));
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, pointOf(1, {99, 110}));
    EXPECT_EQ(view.currentSelection()->string().simplified(), QStringLiteral("words other"));
    EXPECT_EQ(view.currentSelection()->pages(), (QList<qint64>{0, 1}));
}

TEST_F(PDFKitViewInputTest, ExtendsTheSelectionWithShift)
{
    pages.texts[0] = placedLines({QStringLiteral("first words")});
    showPages();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, pointOf(0, {51, 110}));
    EXPECT_EQ(view.currentSelection(), std::nullopt);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::ShiftModifier, pointOf(0, {99, 110}));
    EXPECT_EQ(view.currentSelection()->string(), QStringLiteral("first"));
}

TEST_F(PDFKitViewInputTest, ScrollsWhileASelectionIsDraggedBeyondTheEdge)
{
    showPages();
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, {300, 400});
    QTest::mouseMove(view.viewport(), {300, kHeight + 40});
    clock.advance(std::chrono::milliseconds(160));
    const double scrolled = top();
    EXPECT_GT(scrolled, 50);
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, {300, kHeight + 40});
    clock.advance(std::chrono::milliseconds(160));
    EXPECT_EQ(top(), scrolled);
}

TEST_F(PDFKitViewInputTest, ShowsACursorForText)
{
    pages.texts[0] = placedLines({QStringLiteral("first words")});
    showPages();
    QTest::mouseMove(view.viewport(), pointOf(0, {75, 110}));
    EXPECT_EQ(view.viewport()->cursor().shape(), Qt::IBeamCursor);
    QTest::mouseMove(view.viewport(), pointOf(0, {75, 300}));
    EXPECT_EQ(view.viewport()->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(PDFKitViewInputTest, OffersItsCommandsInAMenu)
{
    pages.texts[0] = placedLines({QStringLiteral("first words")});
    showPages();
    view.startSelection({0, {75, 110}}, PDFTextUnit::Line);
    QContextMenuEvent event(QContextMenuEvent::Mouse, {100, 100},
                            view.viewport()->mapToGlobal(QPoint(100, 100)));
    QApplication::sendEvent(view.viewport(), &event);
    const auto *menu = view.findChild<QMenu *>(QStringLiteral("pageMenu"));
    ASSERT_NE(menu, nullptr);
    QStringList texts;
    for (const QAction *action : menu->actions()) {
        if (!action->isSeparator())
            texts.append(action->text());
    }
    EXPECT_EQ(texts, (QStringList{QStringLiteral("Copy"), QStringLiteral("Bookmark Selection"),
                                  QStringLiteral("Search in Library"), QStringLiteral("Select All")}));

    QSignalSpy bookmarks(&view, &PDFKitView::bookmarkRequested);
    QSignalSpy searches(&view, &PDFKitView::librarySearchRequested);
    view.bookmarkAction()->trigger();
    view.searchInLibraryAction()->trigger();
    view.copyAction()->trigger();
    EXPECT_EQ(bookmarks.count(), 1);
    ASSERT_EQ(searches.count(), 1);
    EXPECT_EQ(searches.first().first().toString(), QStringLiteral("first words"));
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("first words"));
}

TEST_F(PDFKitViewInputTest, OffersTheAddressOfALink)
{
    pages.links[0] = {{QRectF(100, 100, 50, 20), QUrl(QStringLiteral("https://example.org/"))}};
    showPages();
    const QPoint at = pointOf(0, {120, 110});
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, view.viewport()->mapToGlobal(at));
    QApplication::sendEvent(view.viewport(), &event);
    const auto *menu = view.findChild<QMenu *>(QStringLiteral("pageMenu"));
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->actions().first()->text(), QStringLiteral("Copy Link Address"));
    menu->actions().first()->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("https://example.org/"));
}

TEST_F(PDFKitViewInputTest, OffersNothingToDoWithoutASelection)
{
    showPages();
    EXPECT_FALSE(view.copyAction()->isEnabled());
    EXPECT_FALSE(view.bookmarkAction()->isEnabled());
    EXPECT_FALSE(view.searchInLibraryAction()->isEnabled());
}

TEST_F(PDFKitViewInputTest, CopiesByShortcut)
{
    pages.texts[0] = placedLines({QStringLiteral("first words")});
    showPages();
    QApplication::setActiveWindow(&view);
    view.setFocus();
    QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
    pages.answerAll();
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("first words\n"));
}
