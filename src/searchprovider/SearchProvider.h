#pragma once

#include "searchprovider/ApplicationCaller.h"
#include "searchprovider/IdleEnd.h"
#include "systemsearch/ItemSearch.h"

#include <QObject>
#include <QStringList>
#include <QVariantMap>

/// What the desktops' ways of asking have in common: finding published papers, and handing the person on to
/// the application. What comes from outside is bounded here. Never looks into the library. Main thread.
class SearchProvider : public QObject
{
    Q_OBJECT

public:
    /// In UTF-16 units. Chosen: longer than anything a person searches for.
    static constexpr qsizetype kLongestText = 1000;
    /// How many papers are told about in one answer; a desktop asks for as many as a search found.
    static constexpr qsizetype kMostAskedFor = 100;

    struct Collaborators {
        QString itemsPath;    ///< of the published papers
        QString coversFolder; ///< where the cover of a paper is a JPEG named by its id
        const Clock &clock;
        ApplicationCaller &application;
        std::function<void()> end; ///< called when nobody has asked for a while
    };
    explicit SearchProvider(const Collaborators &collaborators);

    /// The ids of the papers that have every term, the best first; at most `ItemSearch::kMostFound`.
    QStringList find(const QStringList &terms);
    QList<FoundPaper> papers(const QStringList &ids);
    /// The paper's cover, or the name of an icon of the desktop's theme.
    QString icon(const FoundPaper &paper) const;

    /// Opens the paper in a reader window.
    void open(const QString &id, const QVariantMap &platformData);
    /// Shows the library with the terms in its search field.
    void showAll(const QStringList &terms, const QVariantMap &platformData);

private:
    ItemSearch m_search;
    QString m_coversFolder;
    ApplicationCaller &m_application;
    IdleEnd m_idleEnd;
};
