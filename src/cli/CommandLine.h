#pragma once

/// Runs `quirevault` as a command; answers the exit status of the program.
int runCommandLine(int argc, const char *const *argv);
