#pragma once

#include <QFrame>

class QToolButton;

/// A tag as a rounded chip with a button that removes it. Delete and Backspace remove it too while it has the
/// focus. A long name is cut short, whole in the tool tip.
class TagChip : public QFrame
{
    Q_OBJECT

public:
    explicit TagChip(const QString &label, QWidget *parent = nullptr);

    QString label() const { return m_label; }
    QSize sizeHint() const override;

Q_SIGNALS:
    void removeRequested();

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    int textWidth() const; ///< what the label wants, within the limit

    QString m_label;
    QToolButton *m_remove;
};
