#pragma once

#include <QWidget>

class CoverCache;
class CoverView;
class WrappedLabel;
struct Paper;

/// The cover and title of a paper.
class PaperHeader : public QWidget
{
    Q_OBJECT

public:
    explicit PaperHeader(CoverCache &covers, QWidget *parent = nullptr);

    void setPaper(const Paper &paper); ///< shows the title
    void setTitleShown(bool isShown);  ///< not while the title is being edited

private:
    CoverView *m_cover;
    WrappedLabel *m_title;
};
