#include "ui/ReleaseNotesView.h"

#include "updates/AppcastItem.h"

#include <QImage>
#include <utility>

namespace
{
constexpr int kMarginPx = 10;

bool isWebAddress(const QUrl &address)
{
    return address.scheme() == u"https" || address.scheme() == u"http";
}
} // namespace

ReleaseNotesView::ReleaseNotesView(QWidget *parent)
    : QTextBrowser(parent)
{
    setObjectName(QStringLiteral("releaseNotes"));
    setAccessibleName(QStringLiteral("What is new"));
    setOpenLinks(false);
    setTabChangesFocus(true);
    connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl &address) {
        if (isWebAddress(address))
            Q_EMIT webLinkFollowed(address);
    });
    // Where a link leads, before it is followed.
    connect(this, &QTextBrowser::highlighted, this,
            [this](const QUrl &address) { viewport()->setToolTip(address.toDisplayString()); });
}

void ReleaseNotesView::setNotes(const ReleaseNotes &notes)
{
    QTextDocument::MarkdownFeatures features = QTextDocument::MarkdownDialectGitHub;
    features |= QTextDocument::MarkdownNoHTML;
    // Filled before it is shown: a document that is seen is laid out again for each piece.
    auto *filled = new QTextDocument(this);
    filled->setDefaultFont(font());
    filled->setDocumentMargin(kMarginPx);
    if (notes.format == ReleaseNotes::Format::Markdown)
        filled->setMarkdown(notes.text, features);
    else
        filled->setPlainText(notes.text);
    setDocument(filled);
    delete std::exchange(m_filled, filled);
}

QVariant ReleaseNotesView::loadResource(int type, const QUrl &)
{
    if (type != QTextDocument::ImageResource)
        return {};
    // Of a picture that it is denied, Qt would look for a file of that name itself.
    QImage nothing(1, 1, QImage::Format_ARGB32);
    nothing.fill(Qt::transparent);
    return nothing;
}
