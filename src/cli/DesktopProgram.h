#pragma once

#include "cli/Command.h"
#include "reader/PDFOpenRequest.h"

#include <QList>

/// Becomes the program that shows windows, those of `requests` or else the library window: a program of its
/// own, because the libraries of windows would slow every command down. Answers only when it cannot be
/// started, and has said why then.
ExitStatus becomeDesktopProgram(const QList<PDFOpenRequest> &requests = {});
