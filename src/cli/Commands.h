#pragma once

#include "app/SidebarItem.h"
#include "cli/Command.h"

#include <QString>
#include <QStringList>
#include <filesystem>
#include <optional>
#include <vector>

// The subcommands, one function each: what a command was asked for in, how it ended out. Every one prints
// readable text, or with --json one document, through the context's output.

struct ImportRequest {
    std::vector<std::filesystem::path> paths; ///< as typed, any bytes
};
ExitStatus runImport(const ImportRequest &request, const CommandContext &context);

ExitStatus runSearch(const QString &query, const CommandContext &context);
/// Shows how a query is understood; searches nothing and touches no library.
ExitStatus runExplain(const QString &query, const Output &output);

struct FindRequest {
    QString paperId; ///< the whole id or a prefix, here and below
    QString query;
};
ExitStatus runFind(const FindRequest &request, const CommandContext &context);

struct ListRequest {
    SidebarItem which;
    QString filter; ///< field filters; empty for none
};
ExitStatus runList(const ListRequest &request, const CommandContext &context);

/// Opens files in reader windows, in the library or not, unless one of them is not there. Touches no library,
/// and answers only when no window could be opened.
ExitStatus runOpenFiles(const std::vector<std::filesystem::path> &paths, const Output &output);

struct OpenRequest {
    QString paperId;
    std::optional<qint64> page;  ///< to show first, 1-based
    std::optional<QString> text; ///< to search for and light
};
/// Asks for a reader window, through the context, with the paper.
ExitStatus runOpen(const OpenRequest &request, const CommandContext &context);

ExitStatus runShow(const QString &paperId, const CommandContext &context);

struct EditRequest {
    QString paperId;
    std::optional<QString> title;
    std::optional<QString> authors;
    std::optional<qint64> year;
};
ExitStatus runEdit(const EditRequest &request, const CommandContext &context);

struct PaperTagRequest {
    QString paperId;
    QString tag;
};
ExitStatus runTag(const PaperTagRequest &request, const CommandContext &context);
ExitStatus runUntag(const PaperTagRequest &request, const CommandContext &context);

ExitStatus runTags(const CommandContext &context);
ExitStatus runTagsCreate(const QString &name, const CommandContext &context);
ExitStatus runTagsRename(const QString &oldName, const QString &newName, const CommandContext &context);
ExitStatus runTagsDelete(const QString &name, const CommandContext &context);

ExitStatus runRetag(const CommandContext &context);

struct BookmarksRequest {
    QString paperId;
    bool isMarkdown = false; ///< whether to write them as quotes instead of listing them
};
ExitStatus runBookmarks(const BookmarksRequest &request, const CommandContext &context);

struct BookmarkRequest {
    QString paperId;
    qint64 page = 1; ///< 1-based
    QString text;
    QString label;
};
ExitStatus runBookmarksAdd(const BookmarkRequest &request, const CommandContext &context);
ExitStatus runBookmarksRemove(const QString &bookmarkId, const CommandContext &context);

ExitStatus runRemove(const QStringList &paperIds, const CommandContext &context);
