#pragma once

#include <QStackedWidget>

class QAbstractItemView;
class QLabel;

/// A list of the sidebar, or a sentence in its place that says why there is none.
class ListOrHint : public QStackedWidget
{
    Q_OBJECT

public:
    explicit ListOrHint(QAbstractItemView *list, QWidget *parent = nullptr);

    /// Shows the list when `text` is empty.
    void setHint(const QString &text);
    QString hint() const;

private:
    QAbstractItemView *m_list;
    QLabel *m_hint;
};
