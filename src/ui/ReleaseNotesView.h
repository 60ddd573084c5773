#pragma once

#include <QTextBrowser>

struct ReleaseNotes;

/// Shows what is new in a version. The notes come from the network: HTML in them stays text, nothing they
/// name is loaded from anywhere, and a link is told of only when a person follows it.
class ReleaseNotesView : public QTextBrowser
{
    Q_OBJECT

public:
    explicit ReleaseNotesView(QWidget *parent = nullptr);

    void setNotes(const ReleaseNotes &notes);
    QVariant loadResource(int type, const QUrl &name) override;

Q_SIGNALS:
    /// A person follows a link to a page of the web.
    void webLinkFollowed(const QUrl &address);

private:
    QTextDocument *m_filled = nullptr; ///< the document that is shown, once there is one
};
