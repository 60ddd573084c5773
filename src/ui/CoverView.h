#pragma once

#include <QWidget>

class CoverCache;

/// A large cover, fitted into the widget with a soft border; a sheet with the document symbol where there is
/// none, or none yet.
class CoverView : public QWidget
{
    Q_OBJECT

public:
    /// `covers` must outlive the widget.
    explicit CoverView(CoverCache &covers, QWidget *parent = nullptr);

    void setCoverPath(const QString &coverPath);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void paintPlaceholder(QPainter &painter) const;

    CoverCache &m_covers;
    QString m_coverPath;
};
