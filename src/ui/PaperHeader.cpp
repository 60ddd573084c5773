#include "ui/PaperHeader.h"

#include "store/Paper.h"
#include "ui/CoverView.h"
#include "ui/WrappedLabel.h"

#include <QVBoxLayout>

namespace
{
constexpr int kSpacingPx = 14;
// A title that was read wrongly may hold the whole first page.
constexpr int kTitleLines = 7;
} // namespace

PaperHeader::PaperHeader(CoverCache &covers, QWidget *parent)
    : QWidget(parent)
    , m_cover(new CoverView(covers, this))
    , m_title(new WrappedLabel(this))
{
    m_title->setObjectName(QStringLiteral("title"));
    m_title->setFont(headingFont(font()));
    m_title->setMaximumLines(kTitleLines);
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(kSpacingPx);
    rows->addWidget(m_cover);
    rows->addWidget(m_title);
}

void PaperHeader::setPaper(const Paper &paper)
{
    m_cover->setCoverPath(paper.coverPath);
    m_title->setWrappedText(paper.title);
}

void PaperHeader::setTitleShown(bool isShown)
{
    m_title->setVisible(isShown);
}
