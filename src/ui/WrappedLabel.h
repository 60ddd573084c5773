#pragma once

#include "ui/TextStyles.h"

#include <QLabel>

struct WrappedText;

/// A label of plain text that fits into any width (see `WrappedText`); what does not show is in the tool tip.
/// An empty one hides.
class WrappedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit WrappedLabel(QWidget *parent = nullptr);

    void setWrappedText(const QString &text);
    void setMaximumLines(int lines); ///< 0: no limit
    void setTone(TextTone tone);

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    WrappedText wrapped() const;
    void updateToolTip();

    int m_maximumLines = 0;
    TextTone m_tone = TextTone::Primary;
};
