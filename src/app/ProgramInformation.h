#pragma once

#include <QString>

/// "0.1.0".
QString programVersion();
/// Which build of the version this is: the number of commits behind it and the last one's hash, such as
/// "312 (9320603)"; "unknown" when it was not built in a checkout.
QString programBuild();
