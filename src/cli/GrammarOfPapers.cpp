// The commands on papers.
#include "cli/Grammar.h"

#include "base/DecimalInteger.h"
#include "cli/ArgumentText.h"

#include <memory>

void Grammar::declareImport()
{
    CLI::App *command = declare("import", "Add PDF files, and those inside folders, to the library");
    auto paths = std::make_shared<std::vector<std::string>>();
    command->add_option("PATH", *paths, "Files and folders")->required();
    command->callback([this, paths] {
        m_invocation.endsCleanly = true;
        m_invocation.run = [paths](const CommandContext &context) {
            ImportRequest request;
            for (const std::string &path : *paths)
                request.paths.emplace_back(unshielded(path));
            return runImport(request, context);
        };
    });
}

void Grammar::declareSearch()
{
    CLI::App *command =
        declare("search", "Find papers by words in them, and by author:, title:, filename:, year:");
    auto words = std::make_shared<std::vector<std::string>>();
    auto explain = std::make_shared<bool>(false);
    command->add_option("QUERY", *words, "What to look for, as in the search field")->required();
    command->add_flag("--explain", *explain, "Show how the query is understood; search nothing");
    command->callback([this, words, explain] {
        const QString query = toText(*words);
        if (*explain)
            m_invocation.runAlone = [query](const Output &output) {
                return runExplain(query, output);
            };
        else
            m_invocation.run = [query](const CommandContext &context) {
                return runSearch(query, context);
            };
    });
}

void Grammar::declareFind()
{
    CLI::App *command = declare("find", "Find passages inside one paper, by page");
    auto id = std::make_shared<std::string>();
    auto words = std::make_shared<std::vector<std::string>>();
    declarePaperId(command, *id);
    command->add_option("QUERY", *words, "What to look for")->required();
    onRun(command, [id, words](const CommandContext &context) {
        return runFind({.paperId = toText(*id), .query = toText(*words)}, context);
    });
}

void Grammar::declareList()
{
    struct Typed {
        std::optional<std::string> tag;
        bool reading = false;
        bool recent = false;
        std::string filter;
    };
    CLI::App *command = declare("list", "List papers");
    auto typed = std::make_shared<Typed>();
    CLI::Option_group *which = command->add_option_group("which");
    which->add_option("--tag", typed->tag, "Those that carry this tag")->type_name("NAME");
    which->add_flag("--reading", typed->reading, "Those on the reading list");
    which->add_flag("--recent", typed->recent, "Those of the last import, newest first");
    which->require_option(0, 1);
    command->add_option("--filter", typed->filter, "Only those that pass these field filters")
        ->type_name("QUERY");
    onRun(command, [typed](const CommandContext &context) {
        using Kind = SidebarItem::Kind;
        SidebarItem item;
        if (typed->tag)
            item = SidebarItem::ofTag(toText(*typed->tag));
        else if (typed->reading || typed->recent)
            item.kind = typed->reading ? Kind::CurrentlyReading : Kind::RecentlyImported;
        return runList({.which = item, .filter = toText(typed->filter)}, context);
    });
}

void Grammar::declareOpen()
{
    struct Typed {
        std::string id;
        std::optional<std::string> page, text;
    };
    CLI::App *open = declare("open", "Open a paper in a reader window");
    auto typed = std::make_shared<Typed>();
    declarePaperId(open, typed->id);
    open->add_option("--page", typed->page, "The page to show, counted from 1")->check(objectionToNumber);
    open->add_option("--text", typed->text, "What to search the paper for");
    onRun(open, [typed](const CommandContext &context) {
        return runOpen({.paperId = toText(typed->id),
                        .page = typed->page ? decimalInteger(toText(*typed->page)) : std::nullopt,
                        .text = toText(typed->text)},
                       context);
    });
}

void Grammar::declarePaperCommands()
{
    CLI::App *show = declare("show", "Show everything about a paper");
    auto shown = std::make_shared<std::string>();
    declarePaperId(show, *shown);
    onRun(show, [shown](const CommandContext &context) { return runShow(toText(*shown), context); });

    declareForPaperAndTag("tag", "Give a paper a tag", runTag);
    declareForPaperAndTag("untag", "Take a tag from a paper", runUntag);

    CLI::App *remove = declare("remove", "Remove papers from the library; their files stay");
    auto ids = std::make_shared<std::vector<std::string>>();
    remove->add_option("PAPER-ID", *ids, "Their ids, or at least the first 4 characters of each")->required();
    onRun(remove, [ids](const CommandContext &context) {
        QStringList texts;
        for (const std::string &id : *ids)
            texts.append(toText(id));
        return runRemove(texts, context);
    });
}

void Grammar::declareForPaperAndTag(const std::string &name, const std::string &summary,
                                    ExitStatus (*run)(const PaperTagRequest &, const CommandContext &))
{
    CLI::App *command = declare(name, summary);
    auto id = std::make_shared<std::string>();
    auto tag = std::make_shared<std::string>();
    declarePaperId(command, *id);
    command->add_option("NAME", *tag, "The tag")->required();
    onRun(command, [id, tag, run](const CommandContext &context) {
        return run({.paperId = toText(*id), .tag = toText(*tag)}, context);
    });
}

void Grammar::declareEdit()
{
    CLI::App *command = declare("edit", "Change a paper's title, authors or year");
    auto id = std::make_shared<std::string>();
    auto title = std::make_shared<std::optional<std::string>>();
    auto authors = std::make_shared<std::optional<std::string>>();
    auto year = std::make_shared<std::optional<std::string>>();
    declarePaperId(command, *id);
    command->add_option("--title", *title, "The new title");
    command->add_option("--authors", *authors, "The new authors; may be empty");
    command->add_option("--year", *year, "The new year")->check(objectionToNumber);
    onRun(command, [id, title, authors, year](const CommandContext &context) {
        return runEdit({.paperId = toText(*id),
                        .title = toText(*title),
                        .authors = toText(*authors),
                        .year = *year ? decimalInteger(toText(**year)) : std::nullopt},
                       context);
    });
}
