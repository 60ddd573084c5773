#pragma once

#include "base/Error.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

/// What the description of every paper begins with, before its authors.
inline constexpr char kPaperDescription[] = "Research paper by ";

/// What the desktop's own search is told of one paper.
struct SearchableItem {
    QString uniqueIdentifier;
    QString domainIdentifier;
    QString contentType; ///< a MIME type
    QString title;
    QStringList authorNames;
    QString contentDescription;
    QStringList keywords;
    std::optional<QDateTime> contentCreationDate;

    friend bool operator==(const SearchableItem &, const SearchableItem &) = default;
};

/// The desktop's index of things that can be found. Calls return at once; `completion` runs on a thread of
/// the index's choosing, with the error when there was one.
class SystemSearchIndex
{
public:
    using Completion = std::function<void(const std::optional<Error> &)>;

    virtual ~SystemSearchIndex() = default;

    /// Whether it keeps anything: where it does not, there is no need to make items.
    virtual bool isPresent() const { return true; }
    /// Adds the items; one of the same identifier is replaced.
    virtual void indexItems(const QList<SearchableItem> &items, Completion completion) = 0;
    /// Makes `items` all that the index holds; for when everything is published at once. May be given up when
    /// the program ends, since the next start publishes everything again.
    virtual void replaceItems(const QList<SearchableItem> &items, Completion completion) = 0;
    virtual void deleteItems(const QStringList &identifiers, Completion completion) = 0;
};

/// A desktop without an index: takes everything and keeps nothing.
class NullSystemSearchIndex : public SystemSearchIndex
{
public:
    bool isPresent() const override { return false; }
    void indexItems(const QList<SearchableItem> &items, Completion completion) override;
    void replaceItems(const QList<SearchableItem> &items, Completion completion) override;
    void deleteItems(const QStringList &identifiers, Completion completion) override;
};
