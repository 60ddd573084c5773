#pragma once

#include <linux/capability.h>
#include <sys/prctl.h>

/// Root may read and write everything unless these rights are taken away; for others this does nothing. For
/// `Program::setChildSetup`: what the process starts afterwards cannot have them back.
inline void loseRightsOfRoot()
{
    prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
    prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
}
