#pragma once

/// The next of the steps people know (50 %, 75 %, 100 %, ...) beyond `scale`, where 1 is the actual size; the
/// last step's end is the end.
double nextLargerScale(double scale);
double nextSmallerScale(double scale);
