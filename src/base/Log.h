#pragma once

#include <QString>

/// Where background components leave their one-line messages.
enum class LogTarget {
    StandardOutput, ///< the program with windows
    StandardError,  ///< the command line, whose standard output holds only the answer
};

/// Chooses the target for the whole process. Call before other threads start; the default is standard output.
void setLogTarget(LogTarget target);

/// Writes one line, whole, from any thread. What `onOneLine` takes out of it cannot forge a second one.
void logLine(const QString &line);
