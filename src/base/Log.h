#pragma once

#include <QString>

/// Where background components leave their one-line messages.
enum class LogTarget {
    StandardOutput, ///< the program with windows
    StandardError,  ///< the command line, whose standard output holds only the answer
};

/// Chooses the target for the whole process. Call before other threads start; the default is standard output.
void setLogTarget(LogTarget target);

/// Writes one line, whole, from any thread. Line breaks and control characters inside it become blanks, so
/// a file name can never forge a second line.
void logLine(const QString &line);
