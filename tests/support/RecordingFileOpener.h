#pragma once

#include "app/FileOpener.h"

#include <QStringList>

/// An opener that opens nothing, remembers what it was asked for, and fails when told to.
class RecordingFileOpener : public FileOpener
{
public:
    void open(const QString &path, Done done) override
    {
        opened.append(path);
        done(problem);
    }
    void showInFolder(const QString &path, Done done) override
    {
        shown.append(path);
        done(problem);
    }

    QStringList opened;
    QStringList shown;
    std::optional<Error> problem;
};
