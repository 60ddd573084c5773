#pragma once

#include "app/SingleInstance.h"

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

    /// Opens the library window and runs until the last window is closed; when the program runs already,
    /// only brings its window forward. Answers the exit status.
    int run();

private:
    ActivationToken m_activationToken;
    std::unique_ptr<QApplication> m_application;
};
