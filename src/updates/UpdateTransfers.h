#pragma once

#include <QUrl>
#include <chrono>

/// How long what an update needs may take.
struct UpdateTimeouts {
    std::chrono::milliseconds feed = std::chrono::seconds(30);  ///< chosen: a person may be waiting
    std::chrono::milliseconds package = std::chrono::hours(2);  ///< chosen: 50 MB at 7 kB a second
    std::chrono::milliseconds stall = std::chrono::seconds(30); ///< for a while in which nothing arrives
};

/// Whether updates may come from `address`: over HTTPS, or from a server on this machine, as in tests.
bool isUpdateAddress(const QUrl &address);
