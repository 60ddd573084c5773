#include "ui/FlowLayout.h"

#include <QWidget>
#include <gtest/gtest.h>

namespace
{
constexpr int kSpacing = 6;

class FlowLayoutTest : public testing::Test
{
protected:
    QWidget *add(QSize size)
    {
        auto *item = new QWidget(&m_parent);
        item->setFixedSize(size);
        m_rows->insertWidget(m_rows->count(), item);
        item->show();
        return item;
    }

    QWidget m_parent;
    FlowLayout *m_rows = new FlowLayout(&m_parent, kSpacing);
};
} // namespace

TEST_F(FlowLayoutTest, WrapsAt240WhenNoWidthIsProposed)
{
    for (int i = 0; i < 3; ++i)
        add({76, 20}); // three and two gaps are 240
    EXPECT_EQ(m_rows->sizeHint(), QSize(240, 20));
    add({1, 20});
    EXPECT_EQ(m_rows->sizeHint(), QSize(240, 46));
}

TEST_F(FlowLayoutTest, AnswersTheHeightOfAWidth)
{
    add({70, 20});
    add({70, 20});
    ASSERT_TRUE(m_rows->hasHeightForWidth());
    EXPECT_EQ(m_rows->heightForWidth(146), 20);
    EXPECT_EQ(m_rows->heightForWidth(145), 46);
}

TEST_F(FlowLayoutTest, PlacesItsItemsInsideTheBounds)
{
    const QWidget *first = add({70, 20});
    const QWidget *second = add({70, 20});
    m_rows->setGeometry({10, 5, 100, 60});
    EXPECT_EQ(first->geometry(), QRect(10, 5, 70, 20));
    EXPECT_EQ(second->geometry(), QRect(10, 31, 70, 20));
}

TEST_F(FlowLayoutTest, BeginsAtTheRightWherePeopleReadThatWay)
{
    m_parent.setLayoutDirection(Qt::RightToLeft);
    const QWidget *item = add({70, 20});
    m_rows->setGeometry({0, 0, 100, 60});
    EXPECT_EQ(item->geometry(), QRect(30, 0, 70, 20));
}

TEST_F(FlowLayoutTest, LeavesNoPlaceForHiddenItems)
{
    add({70, 20})->hide();
    const QWidget *second = add({70, 20});
    m_rows->setGeometry({0, 0, 240, 60});
    EXPECT_EQ(second->pos(), QPoint(0, 0));
}

TEST_F(FlowLayoutTest, ForgetsAnItemThatIsDeleted)
{
    delete add({70, 20});
    EXPECT_EQ(m_rows->count(), 0);
    EXPECT_EQ(m_rows->itemAt(0), nullptr);
    EXPECT_EQ(m_rows->takeAt(0), nullptr);
}
