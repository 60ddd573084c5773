// What a screen reader and the keyboard find in the library window as a whole.
#include "ui/RealLibraryWindow.h"

#include <QAccessible>
#include <QSet>
#include <QTest>
#include <gtest/gtest.h>

class LibraryWindowAccessibilityTest : public testing::Test, public RealLibraryWindow
{
protected:
    void SetUp() override
    {
        importPapers({QStringLiteral("Knots"), QStringLiteral("Lattices")});
        Paper knots = vm.papers.value().first();
        waitFor(vm.addTag(knots.id, QStringLiteral("Topology")));
        waitFor(vm.loadTags());
        vm.select(vm.papers.value().first());
    }

    /// The part and everything in it, as a screen reader walks through.
    static void walk(QAccessibleInterface *part, const std::function<void(QAccessibleInterface *)> &visit)
    {
        visit(part);
        for (int i = 0; i < part->childCount(); ++i) {
            if (QAccessibleInterface *child = part->child(i))
                walk(child, visit);
        }
    }

    static std::string describe(QAccessibleInterface *part)
    {
        const QObject *object = part->object();
        return (object
                    ? QString(QLatin1String(object->metaObject()->className()) + u' ' + object->objectName())
                    : QStringLiteral("a part of role %1").arg(part->role()))
            .toStdString();
    }

    QList<QAccessibleInterface *> partsOf(QAccessible::Role role, const QString &words)
    {
        QList<QAccessibleInterface *> parts;
        walk(QAccessible::queryAccessibleInterface(&window), [&](QAccessibleInterface *part) {
            if (part->role() == role && part->text(QAccessible::Name).contains(words))
                parts.append(part);
        });
        return parts;
    }
};

TEST_F(LibraryWindowAccessibilityTest, EveryControlHasANameARoleAndAState)
{
    int controls = 0;
    walk(QAccessible::queryAccessibleInterface(&window), [&](QAccessibleInterface *part) {
        const QAccessible::State state = part->state();
        if (!state.focusable || state.invisible || state.offscreen)
            return;
        ++controls;
        EXPECT_NE(part->role(), QAccessible::NoRole) << describe(part);
        EXPECT_FALSE(part->text(QAccessible::Name).isEmpty()) << describe(part);
        EXPECT_TRUE(part->isValid()) << describe(part);
    });
    constexpr int kLeast = 15; // tool bar, search field, sidebar rows, cards, detail panel
    EXPECT_GE(controls, kLeast);
}

TEST_F(LibraryWindowAccessibilityTest, CardsSayWhatTheyStandForAndWhichIsSelected)
{
    auto *papers = QAccessible::queryAccessibleInterface(part<QWidget>("papers"));
    ASSERT_EQ(papers->childCount(), 2);
    EXPECT_TRUE(papers->child(0)->text(QAccessible::Name).contains(u"Knots"));
    EXPECT_TRUE(papers->child(1)->text(QAccessible::Name).contains(u"Lattices"));
    EXPECT_TRUE(papers->child(0)->state().selectable);
    EXPECT_TRUE(papers->child(0)->state().selected);
    EXPECT_FALSE(papers->child(1)->state().selected);
}

TEST_F(LibraryWindowAccessibilityTest, TagsAreNamedInTheSidebarAndInTheDetails)
{
    EXPECT_FALSE(partsOf(QAccessible::TreeItem, QStringLiteral("Topology")).isEmpty());
    const auto chip = part<QWidget>("tag Topology");
    ASSERT_TRUE(chip);
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(chip)->text(QAccessible::Name).contains(u"Topology"));
}

TEST_F(LibraryWindowAccessibilityTest, TabReachesEveryControl)
{
    QSet<const QWidget *> missed;
    const auto widgets = window.findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        const bool isStop = widget->isVisible() && widget->isEnabled() &&
                            (widget->focusPolicy() & Qt::TabFocus) && !widget->focusProxy();
        if (isStop)
            missed.insert(widget);
    }
    ASSERT_FALSE(missed.isEmpty());
    part<QWidget>("searchField")->setFocus();
    for (qsizetype presses = missed.size() + 5; presses > 0; --presses) {
        missed.remove(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    for (const QWidget *widget : std::as_const(missed))
        ADD_FAILURE() << widget->metaObject()->className() << ' ' << widget->objectName().toStdString();
}
