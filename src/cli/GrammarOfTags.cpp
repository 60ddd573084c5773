// The commands on tags and on bookmarks.
#include "cli/Grammar.h"

#include "base/DecimalInteger.h"
#include "cli/ArgumentText.h"

#include <memory>

void Grammar::declareTags()
{
    CLI::App *tags = declare("tags", "List, create, rename and delete tags");
    tags->require_subcommand(0, 1);
    onRun(tags, runTags);
    declareForOne("NAME", "The tag", declare("create", "Create a tag", tags), runTagsCreate);
    declareForOne("NAME", "The tag", declare("delete", "Delete a tag; its papers stay", tags), runTagsDelete);

    CLI::App *rename = declare("rename", "Rename a tag everywhere, merging it into one of that name", tags);
    auto names = std::make_shared<std::pair<std::string, std::string>>();
    rename->add_option("OLD", names->first, "The tag")->required();
    rename->add_option("NEW", names->second, "Its new name")->required();
    onRun(rename, [names](const CommandContext &context) {
        return runTagsRename(toText(names->first), toText(names->second), context);
    });

    CLI::App *retag = declare("retag", "Recompute the topic tags of every paper");
    retag->callback([this] {
        m_invocation.endsCleanly = true;
        m_invocation.run = runRetag;
    });
}

void Grammar::declareBookmarks()
{
    CLI::App *bookmarks = declare("bookmarks", "List a paper's bookmarks, add and remove bookmarks");
    bookmarks->require_subcommand(0, 1);
    auto id = std::make_shared<std::string>();
    auto isMarkdown = std::make_shared<bool>(false);
    declarePaperId(bookmarks, *id)->required(false); // a subcommand does without
    bookmarks->add_flag("--markdown", *isMarkdown, "Write them as quotes with their pages, in Markdown")
        ->excludes(bookmarks->get_option("--json"));
    bookmarks->callback([this, bookmarks, id, isMarkdown] {
        if (!bookmarks->get_subcommands().empty())
            return;
        if (id->empty())
            throw CLI::RequiredError("PAPER-ID");
        m_invocation.run = [id, isMarkdown](const CommandContext &context) {
            return runBookmarks({.paperId = toText(*id), .isMarkdown = *isMarkdown}, context);
        };
    });
    declareBookmarksAdd(bookmarks);
    declareForOne("BOOKMARK-ID", "The bookmark's id, or at least the first 4 characters of it",
                  declare("remove", "Remove a bookmark", bookmarks), runBookmarksRemove);
}

void Grammar::declareBookmarksAdd(CLI::App *bookmarks)
{
    struct Typed {
        std::string id, page, text, label;
    };
    CLI::App *add = declare("add", "Bookmark a passage of a paper", bookmarks);
    auto typed = std::make_shared<Typed>();
    declarePaperId(add, typed->id);
    add->add_option("--page", typed->page, "The page, counted from 1")->required()->check(objectionToNumber);
    add->add_option("--text", typed->text, "The passage")->required();
    add->add_option("--label", typed->label, "What to call it");
    onRun(add, [typed](const CommandContext &context) {
        return runBookmarksAdd({.paperId = toText(typed->id),
                                .page = decimalInteger(toText(typed->page)).value_or(0),
                                .text = toText(typed->text),
                                .label = toText(typed->label)},
                               context);
    });
}
