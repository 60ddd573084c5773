#pragma once

#include "app/SingleInstance.h"
#include "base/Result.h"
#include "reader/PDFOpenRequest.h"

#include <QApplication>
#include <memory>

/// The program `quirevault-desktop`: joins services, view model, application and windows, and runs them.
/// One a process, on the main thread.
class DesktopProgram
{
public:
    /// Makes the desktop's application. Where there is no display to open windows on, the process says so and
    /// ends with status 1.
    DesktopProgram(int &argc, char **argv);

    QApplication &application() { return *m_application; }

    /// Opens reader windows for the requests among the arguments, or else the library window, and runs until
    /// the last window is closed. When the program runs already, only asks that one for the same. Answers the
    /// exit status: 2 when the arguments are no requests. Started by the bus, it opens what it is asked for
    /// over the bus and nothing else.
    int run();

private:
    ActivationToken m_activationToken;
    std::unique_ptr<QApplication> m_application;
    bool m_isService;                         ///< started by the bus, for a call that is about to come
    Result<QList<PDFOpenRequest>> m_requests; ///< of the arguments that are not Qt's
};
