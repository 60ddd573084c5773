#pragma once

#include <QFrame>
#include <QPointer>
#include <QWidget>

class QLabel;
class QProgressBar;
class QVBoxLayout;

/// Dims the widget it lies on and shows how far something has come. While it is shown the widgets below
/// cannot be used, by mouse or by keyboard; afterwards the focus is where it was.
class ProgressOverlay : public QWidget
{
    Q_OBJECT

public:
    /// Covers `covered`, a sibling to be, hidden at first.
    ProgressOverlay(const QString &title, QWidget *covered);

    void setShown(bool isShown);
    void setProgress(double fraction, int done, int total);

protected:
    QVBoxLayout *cardLayout() const { return m_cardLayout; } ///< below the bar, for what is particular
    QLabel *addLine(const QString &name);
    int lineWidth() const; ///< room for a line, in pixels
    virtual QWidget *focusTarget() { return this; }

    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void layOut(const QString &title);
    bool isCoveredByAnother() const;

    QWidget *m_covered;
    QFrame *m_card;
    QVBoxLayout *m_cardLayout;
    QProgressBar *m_bar;
    QLabel *m_count = nullptr;
    QPointer<QWidget> m_focusBefore;
};
