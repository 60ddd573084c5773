#pragma once

#include "reader/PDFOpenRequest.h"

#include <QList>
#include <stop_token>

class Output;
class Services;

/// How a command ended, as the exit status of the program.
enum class ExitStatus {
    Done = 0,
    Failed = 1,        ///< something failed and was named; the rest was done
    WrongUsage = 2,    ///< nothing was done
    Interrupted = 130, ///< stopped by Ctrl-C; the library is consistent
};

/// What every command works with.
struct CommandContext {
    Services &services;
    const Output &output;
    std::stop_token stop; ///< fires on Ctrl-C, for the commands that end cleanly
    QList<PDFOpenRequest>
        &toOpen; ///< reader windows to open once the command is done and has let the library go
};
