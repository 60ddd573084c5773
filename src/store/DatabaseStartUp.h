#pragma once

#include <chrono>

struct sqlite3;

enum class StartUp {
    Complete,
    Blocked, ///< another program's lock kept a step from running
};

/// Prepares a connection that was just opened: tunes it, brings the file to the current schema version and
/// creates what is missing. A step that fails is passed over: the file is used as it is, and what needs the
/// missing part reports it. May be run again on the same connection.
///
/// Waits for other programs' locks no longer than `patience` in all, however many steps meet one.
StartUp startUp(sqlite3 *connection, std::chrono::milliseconds patience);
