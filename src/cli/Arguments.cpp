// The grammar of the command line, in one place: each subcommand's arguments, and the function it runs.
#include "cli/Arguments.h"

#include "app/PDFDiscovery.h"
#include "base/DecimalInteger.h"
#include "cli/ArgumentText.h"
#include "cli/Commands.h"

#include <CLI/CLI.hpp>
#include <QJsonObject>
#include <algorithm>
#include <memory>

namespace
{

using Run = std::function<ExitStatus(const CommandContext &)>;

std::string objectionToNumber(const std::string &typed)
{
    return decimalInteger(toText(typed)) ? std::string() : "not a whole number: " + typed;
}

class Grammar
{
public:
    Grammar()
        : m_app("A fast, native PDF library and reader for researchers", "quirevault")
    {
        m_app.set_version_flag("--version", "quirevault " QUIREVAULT_VERSION);
        m_app.require_subcommand(1);
        m_app.footer("Without a command, quirevault opens the library window. With PDF files in place of a "
                     "command, it opens them to read.");
        m_app.get_formatter()->column_width(34);
        declareImport();
        declareSearch();
        declareFind();
        declareList();
        declareOpen();
        declarePaperCommands();
        declareEdit();
        declareTags();
        declareBookmarks();
    }

    std::variant<Invocation, ExitStatus> parse(int argc, const char *const *argv)
    {
        if (namesFile(argv[1]))
            return openingOf({argv + 1, argv + argc});
        std::vector<std::string> arguments;
        for (int i = argc - 1; i > 0; --i) // CLI11 takes them from the back
            arguments.push_back(shielded(argv[i]));
        const bool isJson = std::find(arguments.begin(), arguments.end(), "--json") != arguments.end();
        try {
            m_app.parse(std::move(arguments));
        } catch (const CLI::ParseError &end) {
            // Help and version come this way too, with the status of success.
            if (m_app.exit(end) == 0)
                return ExitStatus::Done;
            if (isJson)
                printError(end.what());
            return ExitStatus::WrongUsage;
        }
        return std::move(m_invocation);
    }

private:
    /// Whether the first argument stands for a file to open: commands come first, and a slip of the fingers
    /// in one is not taken for a file.
    bool namesFile(const std::filesystem::path &first) const
    {
        const auto isCommand = [&](const CLI::App *command) {
            return command->get_name() == first.native();
        };
        if (first.native().starts_with('-') || !m_app.get_subcommands(isCommand).empty())
            return false;
        return hasPDFExtension(first) || first.has_parent_path() || std::filesystem::exists(first);
    }

    static Invocation openingOf(std::vector<std::filesystem::path> files)
    {
        Invocation invocation;
        invocation.runAlone = [files = std::move(files)](const Output &output) {
            return runOpenFiles(files, output);
        };
        return invocation;
    }

    static void printError(const std::string &text)
    {
        Output(Output::Form::Json).json(QJsonDocument(QJsonObject{{QStringLiteral("error"), toText(text)}}));
    }

    CLI::App *declare(const std::string &name, const std::string &summary, CLI::App *parent = nullptr)
    {
        CLI::App *command = (parent ? parent : &m_app)->add_subcommand(name, summary);
        command->add_flag_callback(
            "--json", [this] { m_invocation.form = Output::Form::Json; }, "Print one JSON document");
        return command;
    }

    void onRun(CLI::App *command, Run run)
    {
        // CLI11 calls a command after the subcommand that was chosen of it.
        command->callback([this, command, run = std::move(run)] {
            if (command->get_subcommands().empty())
                m_invocation.run = run;
        });
    }

    static CLI::Option *declarePaperId(CLI::App *command, std::string &id)
    {
        return command->add_option("PAPER-ID", id, "The paper's id, or at least the first 4 characters of it")
            ->required();
    }

    void declareImport()
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

    void declareSearch()
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

    void declareFind()
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

    void declareList()
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
            using Which = ListRequest::Which;
            ListRequest request{.filter = toText(typed->filter)};
            if (typed->tag)
                request = {.which = Which::Tag, .tag = toText(*typed->tag), .filter = request.filter};
            else if (typed->reading || typed->recent)
                request.which = typed->reading ? Which::Reading : Which::Recent;
            return runList(request, context);
        });
    }

    void declareOpen()
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

    void declarePaperCommands()
    {
        declareForPaper("show", "Show everything about a paper", runShow);
        declareForPaperAndTag("tag", "Give a paper a tag", runTag);
        declareForPaperAndTag("untag", "Take a tag from a paper", runUntag);

        CLI::App *remove = declare("remove", "Remove papers from the library; their files stay");
        auto ids = std::make_shared<std::vector<std::string>>();
        remove->add_option("PAPER-ID", *ids, "Their ids, or at least the first 4 characters of each")
            ->required();
        onRun(remove, [ids](const CommandContext &context) {
            QStringList texts;
            for (const std::string &id : *ids)
                texts.append(toText(id));
            return runRemove(texts, context);
        });
    }

    void declareForPaper(const std::string &name, const std::string &summary,
                         ExitStatus (*run)(const QString &, const CommandContext &))
    {
        CLI::App *command = declare(name, summary);
        auto id = std::make_shared<std::string>();
        declarePaperId(command, *id);
        onRun(command, [id, run](const CommandContext &context) { return run(toText(*id), context); });
    }

    void declareForPaperAndTag(const std::string &name, const std::string &summary,
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

    void declareEdit()
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

    void declareTags()
    {
        CLI::App *tags = declare("tags", "List, create, rename and delete tags");
        tags->require_subcommand(0, 1);
        onRun(tags, runTags);
        declareForOne("NAME", "The tag", declare("create", "Create a tag", tags), runTagsCreate);
        declareForOne("NAME", "The tag", declare("delete", "Delete a tag; its papers stay", tags),
                      runTagsDelete);

        CLI::App *rename =
            declare("rename", "Rename a tag everywhere, merging it into one of that name", tags);
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

    void declareBookmarks()
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

    void declareBookmarksAdd(CLI::App *bookmarks)
    {
        struct Typed {
            std::string id, page, text, label;
        };
        CLI::App *add = declare("add", "Bookmark a passage of a paper", bookmarks);
        auto typed = std::make_shared<Typed>();
        declarePaperId(add, typed->id);
        add->add_option("--page", typed->page, "The page, counted from 1")
            ->required()
            ->check(objectionToNumber);
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

    void declareForOne(const std::string &what, const std::string &meaning, CLI::App *command,
                       ExitStatus (*run)(const QString &, const CommandContext &))
    {
        auto typed = std::make_shared<std::string>();
        command->add_option(what, *typed, meaning)->required();
        onRun(command, [typed, run](const CommandContext &context) { return run(toText(*typed), context); });
    }

    CLI::App m_app;
    Invocation m_invocation;
};

} // namespace

std::variant<Invocation, ExitStatus> parseArguments(int argc, const char *const *argv)
{
    return Grammar().parse(argc, argv);
}
