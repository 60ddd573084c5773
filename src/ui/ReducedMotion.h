#pragma once

/// Whether the desktop asks for as little motion as can be. Ask before each animation: a person may change
/// it at any time. Main thread.
bool prefersReducedMotion();
