#pragma once

#include "base/Error.h"

#include <QString>
#include <functional>
#include <optional>

/// Hands files to other programs of the desktop. Main thread.
class FileOpener
{
public:
    /// Says on the main thread, later, what went wrong; nothing when nothing did.
    using Done = std::function<void(const std::optional<Error> &problem)>;

    virtual ~FileOpener() = default;

    /// Opens the file in the desktop's default viewer.
    virtual void open(const QString &path, Done done) = 0;
    /// Shows the file in its folder.
    virtual void showInFolder(const QString &path, Done done) = 0;
};
