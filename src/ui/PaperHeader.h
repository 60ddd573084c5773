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

    void setPaper(const Paper &paper);
    /// Without its title while that is being edited.
    void setTitleShown(bool isShown);

private:
    CoverView *m_cover;
    WrappedLabel *m_title;
};
