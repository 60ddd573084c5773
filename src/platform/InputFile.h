#pragma once

#include "base/Result.h"

#include <QString>

#include <sys/stat.h>

/// A regular file, open for reading. Movable; closes its descriptor when it dies.
///
/// One descriptor serves all that is done with a file (hash, engine), so that every step sees the same bytes
/// even when the path is given to another file meanwhile.
class InputFile
{
public:
    /// Opens `path`. Fails in the domain "InputFile" with errno as code and the path and cause as text; a
    /// folder, FIFO, socket or device is refused by name (code EINVAL) without being opened.
    static Result<InputFile> open(const QString &path);

    InputFile(InputFile &&other) noexcept;
    InputFile &operator=(InputFile &&other) noexcept;
    ~InputFile();

    const QString &path() const { return m_path; }
    int descriptor() const { return m_descriptor; }
    qint64 sizeBytes() const;

    /// Whether the file was written to, or its path was given to another file or removed, since it was
    /// opened.
    bool hasChanged() const;

private:
    InputFile(const QString &path, int descriptor, const struct stat &status);

    QString m_path;
    int m_descriptor = -1;
    struct stat m_status = {};
};
