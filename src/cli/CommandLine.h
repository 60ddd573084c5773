#pragma once

/// Runs `quirevault` as a command; answers the exit status of the program. Without arguments it becomes the
/// desktop program.
int runCommandLine(int argc, const char *const *argv);
