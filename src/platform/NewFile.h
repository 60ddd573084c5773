#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>

/// A file that takes its name only once it is whole. Until then it lies hidden beside its later place, and it
/// goes when this dies. Movable; use from one thread at a time.
///
/// Fails in the domain "NewFile" with errno as code and the path and cause as text.
class NewFile
{
public:
    /// Begins a file in `folder`, which is made where it is missing.
    static Result<NewFile> begin(const QString &folder);

    NewFile(NewFile &&other) noexcept;
    NewFile &operator=(NewFile &&other) noexcept;
    ~NewFile();

    /// Appends `bytes`, all of them or none that count: after a failure the file is of no use.
    Result<void> write(const QByteArray &bytes);
    qint64 sizeBytes() const { return m_sizeBytes; }
    /// All that was written, as the disk has it.
    Result<QByteArray> content() const;

    /// Gives the file the name, or "name (2).ending" and so on where that is taken already: no other file is
    /// ever replaced. Answers its path. It reaches the disk before it gets the name.
    Result<QString> keepAs(const QString &baseName, const QString &ending);

private:
    NewFile(const QString &folder, const QString &path, int descriptor);

    QString m_folder;
    QString m_path; ///< of the hidden file; empty once it was kept
    int m_descriptor = -1;
    qint64 m_sizeBytes = 0;
};
