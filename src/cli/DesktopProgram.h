#pragma once

#include "cli/Command.h"

/// Becomes the program that shows the library window: a program of its own, because the libraries of windows
/// would slow every command down. Answers only when it cannot be started, and has said why then.
ExitStatus becomeDesktopProgram();
