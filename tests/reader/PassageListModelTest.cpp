#include "reader/PassageRow.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTextDocument>
#include <gtest/gtest.h>

TEST(PassageListModel, TellsAScreenReaderPageTitleAndText)
{
    PassageListModel model;
    const QAbstractItemModelTester tester(&model);
    model.setRows({{.title = QStringLiteral("Lemma"),
                    .text = {{QStringLiteral("all "), false}, {QStringLiteral("trees"), true}},
                    .place = QStringLiteral("Page 4")},
                   {.title = {}, .text = {{QStringLiteral("knots")}}, .place = QStringLiteral("Page 5")}});
    EXPECT_EQ(model.index(0).data().toString(), u"Page 4. Lemma. all trees");
    EXPECT_EQ(model.index(1).data(Qt::AccessibleTextRole).toString(), u"Page 5. knots");
}

TEST(PassageListModel, ShowsWhatLooksLikeMarkupAsItStands)
{
    PassageListModel model;
    const QString text = QStringLiteral("a <b>bold</b> claim & more");
    model.setRows({{.title = {}, .text = {{text}}, .place = QStringLiteral("Page 1")}});
    QTextDocument toolTip; // as Qt shows it
    toolTip.setHtml(model.index(0).data(Qt::ToolTipRole).toString());
    EXPECT_EQ(toolTip.toPlainText(), text);
}

TEST(PassageListModel, MarksOneRowAndTellsOfThoseThatChange)
{
    PassageListModel model;
    model.setRows(QList<PassageRow>(3));
    model.setCurrent(1);
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    model.setCurrent(2);
    EXPECT_EQ(changes.size(), 2);
    EXPECT_FALSE(model.row(model.index(1)).isCurrent);
    EXPECT_TRUE(model.row(model.index(2)).isCurrent);
    model.setCurrent(-1);
    EXPECT_FALSE(model.row(model.index(2)).isCurrent);
}
