#include "cli/Arguments.h"

#include "app/PDFDiscovery.h"
#include "base/DecimalInteger.h"
#include "cli/ArgumentText.h"
#include "cli/Grammar.h"

#include <QJsonObject>
#include <algorithm>
#include <memory>

namespace
{

Invocation openingOf(std::vector<std::filesystem::path> files)
{
    Invocation invocation;
    invocation.runAlone = [files = std::move(files)](const Output &output) {
        return runOpenFiles(files, output);
    };
    return invocation;
}

void printError(const std::string &text)
{
    Output(Output::Form::Json).json(QJsonDocument(QJsonObject{{QStringLiteral("error"), toText(text)}}));
}

} // namespace

std::string objectionToNumber(const std::string &typed)
{
    return decimalInteger(toText(typed)) ? std::string() : "not a whole number: " + typed;
}

Grammar::Grammar()
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

std::variant<Invocation, ExitStatus> Grammar::parse(int argc, const char *const *argv)
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

bool Grammar::namesFile(const std::filesystem::path &first) const
{
    const auto isCommand = [&](const CLI::App *command) {
        return command->get_name() == first.native();
    };
    if (first.native().starts_with('-') || !m_app.get_subcommands(isCommand).empty())
        return false;
    return hasPDFExtension(first) || first.has_parent_path() || std::filesystem::exists(first);
}

CLI::App *Grammar::declare(const std::string &name, const std::string &summary, CLI::App *parent)
{
    CLI::App *command = (parent ? parent : &m_app)->add_subcommand(name, summary);
    command->add_flag_callback(
        "--json", [this] { m_invocation.form = Output::Form::Json; }, "Print one JSON document");
    return command;
}

void Grammar::onRun(CLI::App *command, Run run)
{
    // CLI11 calls a command after the subcommand that was chosen of it.
    command->callback([this, command, run = std::move(run)] {
        if (command->get_subcommands().empty())
            m_invocation.run = run;
    });
}

CLI::Option *Grammar::declarePaperId(CLI::App *command, std::string &id)
{
    return command->add_option("PAPER-ID", id, "The paper's id, or at least the first 4 characters of it")
        ->required();
}

void Grammar::declareForOne(const std::string &what, const std::string &meaning, CLI::App *command,
                            RunForOne run)
{
    auto typed = std::make_shared<std::string>();
    command->add_option(what, *typed, meaning)->required();
    onRun(command, [typed, run](const CommandContext &context) { return run(toText(*typed), context); });
}

std::variant<Invocation, ExitStatus> parseArguments(int argc, const char *const *argv)
{
    return Grammar().parse(argc, argv);
}
