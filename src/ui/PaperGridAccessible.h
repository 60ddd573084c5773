#pragma once

/// Lets screen readers see paper grids as lists of cards. Call before the first grid is shown, as often as
/// one likes. Main thread.
void installPaperGridAccessibility();
