// The composition root of the program `quirevault`.
#include "cli/CommandLine.h"

#include <csignal>

int main(int argc, char **argv)
{
    // A file that outgrows a limit is a write error to report, not a reason to die in the middle of a write.
    std::signal(SIGXFSZ, SIG_IGN);
    return runCommandLine(argc, argv);
}
