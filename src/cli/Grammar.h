#pragma once

#include "cli/Arguments.h"
#include "cli/Commands.h"

#include <CLI/CLI.hpp>
#include <string>

/// The grammar of the command line: each subcommand's arguments, and the function it runs.
///
/// What is common to the commands lies in Arguments.cpp, their declarations in GrammarOfPapers.cpp and
/// GrammarOfTags.cpp (tags and bookmarks).
class Grammar
{
public:
    Grammar();

    /// See `parseArguments`. Once.
    std::variant<Invocation, ExitStatus> parse(int argc, const char *const *argv);

private:
    using Run = std::function<ExitStatus(const CommandContext &)>;
    using RunForOne = ExitStatus (*)(const QString &, const CommandContext &);

    /// Whether the first argument stands for a file to open: commands come first, and a slip of the fingers
    /// in one is not taken for a file.
    bool namesFile(const std::filesystem::path &first) const;

    CLI::App *declare(const std::string &name, const std::string &summary, CLI::App *parent = nullptr);
    void onRun(CLI::App *command, Run run);
    static CLI::Option *declarePaperId(CLI::App *command, std::string &id);
    /// A command with one argument, called `what`.
    void declareForOne(const std::string &what, const std::string &meaning, CLI::App *command, RunForOne run);

    void declareImport();
    void declareSearch();
    void declareFind();
    void declareList();
    void declareOpen();
    void declarePaperCommands();
    void declareForPaperAndTag(const std::string &name, const std::string &summary,
                               ExitStatus (*run)(const PaperTagRequest &, const CommandContext &));
    void declareEdit();

    void declareTags();
    void declareBookmarks();
    void declareBookmarksAdd(CLI::App *bookmarks);

    CLI::App m_app;
    Invocation m_invocation;
};

/// Why the text is no whole number; empty when it is.
std::string objectionToNumber(const std::string &typed);
