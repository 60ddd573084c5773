#pragma once

#include "base/Clock.h"

#include <QAbstractButton>

struct WrappedText;

/// A file's path in at most three lines; a click copies it whole, and the button says so for a moment.
class PathButton : public QAbstractButton
{
    Q_OBJECT

public:
    /// `clock` must outlive the button.
    explicit PathButton(const Clock &clock, QWidget *parent = nullptr);

    void setPath(const QString &path);
    /// Whether it says now that it has copied.
    bool saysCopied() const { return m_saying != nullptr; }

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void copy();
    WrappedText wrapped() const;

    const Clock &m_clock;
    QString m_path;
    std::unique_ptr<PendingCall> m_saying; ///< ends the message
};
