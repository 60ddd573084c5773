#pragma once

#include <QString>

/// Times the search provider over a session bus of its own, which starts it: with what was published below
/// `dataHome`, as XDG_DATA_HOME names it. Prints figures in the form that bench/run reads.
void measureProvider(const QString &dataHome);
