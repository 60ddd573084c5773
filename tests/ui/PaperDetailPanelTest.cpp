#include "ui/PanelFixture.h"

#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>

class PaperDetailPanelTest : public PanelFixture
{
protected:
    QString textOf(const char *label) { return find<QLabel>(label)->text(); }
};

TEST_F(PaperDetailPanelTest, AsksToChooseAPaperWithoutOne)
{
    show({});
    EXPECT_EQ(textOf("emptyStateTitle"), u"Select a Paper");
    EXPECT_EQ(textOf("emptyStateText"), u"Choose a paper from the library to see details.");
    EXPECT_TRUE(find("emptyStateTitle")->isVisible());
    EXPECT_FALSE(find("details")->isVisible());
}

TEST_F(PaperDetailPanelTest, ShowsTheSelectedPaper)
{
    library.run(QStringLiteral("INSERT INTO papers (id, title, authors, year, page_count, filepath) "
                               "VALUES ('q', 'On Trees', 'Bo Fen', 2001, 12, '/papers/q.pdf')"));
    show(paper(QStringLiteral("q")));
    EXPECT_FALSE(find("emptyStateTitle")->isVisible());
    EXPECT_EQ(textOf("title"), u"On Trees");
    EXPECT_EQ(textOf("authors"), u"Bo Fen");
    EXPECT_EQ(textOf("yearAndPages"), u"2001 · 12 pages");
    EXPECT_EQ(find("path")->accessibleDescription(), u"/papers/q.pdf");
}

TEST_F(PaperDetailPanelTest, SaysNothingOfWhatIsNotKnown)
{
    show(addPaper(QStringLiteral("p"), QStringLiteral("On Graphs")));
    EXPECT_FALSE(find("authors")->isVisible());
    EXPECT_FALSE(find("yearAndPages")->isVisible());
    EXPECT_TRUE(find("cover")->isVisible());
}

TEST_F(PaperDetailPanelTest, FollowsTheSelection)
{
    showPaper();
    vm().select(std::nullopt);
    EXPECT_TRUE(find("emptyStateTitle")->isVisible());
    vm().select(addPaper(QStringLiteral("q"), QStringLiteral("On Trees")));
    EXPECT_EQ(textOf("title"), u"On Trees");
}

TEST_F(PaperDetailPanelTest, CopiesThePathAndSaysSoForAMoment)
{
    showPaper();
    QGuiApplication::clipboard()->clear();
    click("path");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"/papers/p.pdf");
    EXPECT_EQ(find("path")->accessibleDescription(), u"Copied");
    clock.advance(std::chrono::milliseconds(1500));
    EXPECT_EQ(find("path")->accessibleDescription(), u"/papers/p.pdf");
}

TEST_F(PaperDetailPanelTest, CopiesThePathByTheKeyboardToo)
{
    showPaper();
    QGuiApplication::clipboard()->clear();
    QTest::keyClick(find("path"), Qt::Key_Space);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"/papers/p.pdf");
}

TEST_F(PaperDetailPanelTest, HandsTheFileToOtherPrograms)
{
    showPaper();
    click("Open in Preview");
    click("Show in Finder");
    EXPECT_EQ(files.opened, QStringList{QStringLiteral("/papers/p.pdf")});
    EXPECT_EQ(files.shown, QStringList{QStringLiteral("/papers/p.pdf")});
    EXPECT_FALSE(vm().errorMessage.value());
}

TEST_F(PaperDetailPanelTest, SaysWhenTheFileCannotBeHandedOn)
{
    showPaper();
    files.problem =
        Error{QStringLiteral("FileOpener"), 1, QStringLiteral("gone"), QStringLiteral("/papers/p.pdf")};
    click("Open in Preview");
    EXPECT_EQ(vm().errorMessage.value(), QStringLiteral("gone: /papers/p.pdf"));
    vm().errorMessage = std::nullopt;
    click("Show in Finder");
    EXPECT_EQ(vm().errorMessage.value(), QStringLiteral("gone: /papers/p.pdf"));
}

TEST_F(PaperDetailPanelTest, NamesItsControlsForScreenReaders)
{
    showPaper({QStringLiteral("graphs")});
    const auto nameOf = [&](const char *widget) {
        return QAccessible::queryAccessibleInterface(find(widget))->text(QAccessible::Name);
    };
    EXPECT_EQ(nameOf("path"), u"Copy path");
    EXPECT_EQ(nameOf("tagField"), u"Add tag");
    EXPECT_EQ(nameOf("tag graphs"), u"tag graphs");
    EXPECT_EQ(nameOf("Edit Info"), u"Edit Info");
    EXPECT_EQ(nameOf("title"), u"On Graphs");
    const auto roleOf = [&](const char *widget) {
        return QAccessible::queryAccessibleInterface(find(widget))->role();
    };
    EXPECT_EQ(roleOf("path"), QAccessible::Button);
    EXPECT_EQ(roleOf("tags"), QAccessible::List);
    EXPECT_EQ(roleOf("tag graphs"), QAccessible::ListItem);
    EXPECT_EQ(roleOf("title"), QAccessible::StaticText);
}

TEST_F(PaperDetailPanelTest, LeadsTheTabKeyThroughItsControlsAsTheyStand)
{
    showPaper({QStringLiteral("a"), QStringLiteral("b")});
    waitFor(vm().addTag(QStringLiteral("p"), QStringLiteral("aa"))); // between them, and made last
    find("path")->setFocus();
    QStringList order;
    for (int i = 0; i < 8; ++i) {
        order.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(order.first(7),
              (QStringList{QStringLiteral("path"), QStringLiteral("tag a"), QStringLiteral("tag aa"),
                           QStringLiteral("tag b"), QStringLiteral("tagField"), QStringLiteral("Edit Info"),
                           QStringLiteral("Open in Preview")}));
}

TEST_F(PaperDetailPanelTest, ScrollsOnlyUpAndDownHoweverLongAPaperIs)
{
    QStringList authors;
    QStringList tags;
    for (int i = 0; i < 60; ++i) {
        authors.append(QString(u"Author Number " + QString::number(i)));
        tags.append(QString(QString(40, u'x') + QString::number(i)));
    }
    Paper paper = addPaper(QStringLiteral("p"), QString(u"Word " + QString(500, u'w')), tags,
                           authors.join(QStringLiteral(", ")));
    paper.filepath = u'/' + QString(300, u'p');
    show(paper);
    ASSERT_EQ(find("path")->accessibleDescription().size(), 301);
    const auto *details = find<QScrollArea>("details");
    for (const int width : {320, 240}) {
        panel->resize(width, 500);
        QCoreApplication::processEvents();
        EXPECT_LE(details->widget()->width(), details->viewport()->width());
        EXPECT_LE(details->widget()->minimumSizeHint().width(), details->viewport()->width());
        EXPECT_GT(details->verticalScrollBar()->maximum(), 0);
        for (const char *name : {"title", "authors", "path", "tags"})
            EXPECT_EQ(find(name)->height(), find(name)->heightForWidth(find(name)->width())) << name;
    }
}
