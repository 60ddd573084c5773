#pragma once

#include "cli/Command.h"
#include "cli/Output.h"

#include <functional>
#include <variant>

/// What the command line asks for.
struct Invocation {
    Output::Form form = Output::Form::Text;
    bool endsCleanly = false; ///< whether Ctrl-C asks the command to stop instead of ending the program
    std::function<ExitStatus(const CommandContext &context)> run;
    std::function<ExitStatus(const Output &output)> runAlone; ///< instead, where no library is needed
};

/// The command asked for, or the exit status when there is nothing to run: the help or version was printed,
/// or the usage was wrong and said so.
std::variant<Invocation, ExitStatus> parseArguments(int argc, const char *const *argv);
