#include "reader/OutlineModel.h"

#include <QAbstractItemModelTester>
#include <QTextDocument>
#include <gtest/gtest.h>

namespace
{
OutlineElement element(const QString &label, const QList<OutlineElement> &children = {})
{
    return {QUuid::createUuid(), label, {}, children};
}
} // namespace

TEST(OutlineModel, ShowsATreeOfLabelsInTheDocumentsOrder)
{
    OutlineModel model;
    const QAbstractItemModelTester tester(&model);
    model.setOutline(
        {element(QStringLiteral("One"), {element(QStringLiteral("a")), element(QStringLiteral("b"))}),
         element(QStringLiteral("Two"))});
    ASSERT_EQ(model.rowCount(), 2);
    const QModelIndex one = model.index(0, 0);
    ASSERT_EQ(model.rowCount(one), 2);
    const QModelIndex b = model.index(1, 0, one);
    EXPECT_EQ(b.data().toString(), u"b");
    EXPECT_EQ(b.parent(), one);
    EXPECT_EQ(model.element(model.index(1, 0)).label, u"Two");
    EXPECT_EQ(model.rowCount(model.index(1, 0)), 0);
    model.setOutline({});
    EXPECT_EQ(model.rowCount(), 0);
}

TEST(OutlineModel, ShowsWhatLooksLikeMarkupAsItStands)
{
    OutlineModel model;
    const QString label = QStringLiteral("<img src=x> <b>bold</b>");
    model.setOutline({element(label)});
    const QModelIndex item = model.index(0, 0);
    EXPECT_EQ(item.data().toString(), label);
    QTextDocument toolTip; // as Qt shows it
    toolTip.setHtml(item.data(Qt::ToolTipRole).toString());
    EXPECT_EQ(toolTip.toPlainText(), label);
}
