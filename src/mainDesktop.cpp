// The composition root of the program `quirevault-desktop`.
#include "desktop/DesktopProgram.h"

#include <csignal>

int main(int argc, char **argv)
{
    // A file that outgrows a limit is a write error to report, not a reason to die in the middle of a write.
    std::signal(SIGXFSZ, SIG_IGN);
    return DesktopProgram(argc, argv).run();
}
