#pragma once

#include "updates/DottedVersion.h"

#include <QByteArray>
#include <QUrl>

/// What is new in a version, as its makers wrote it.
struct ReleaseNotes {
    enum class Format { Plain, Markdown };

    QString text;
    Format format = Format::Plain;

    friend bool operator==(const ReleaseNotes &, const ReleaseNotes &) = default;
};

/// One version of the program that an update feed offers.
struct AppcastItem {
    DottedVersion version;
    QString displayVersion;      ///< for people, on one line; never empty
    DottedVersion minimumSystem; ///< see `InstalledProgram::system`
    QString operatingSystem;     ///< the only one that it is for, in small letters; empty for any
    ReleaseNotes notes;
    QUrl url;             ///< of the package
    qint64 sizeBytes = 0; ///< of the package; 0 when the feed does not tell
    QByteArray signature; ///< over the package's bytes; empty when there is none that can be read

    friend bool operator==(const AppcastItem &, const AppcastItem &) = default;
};
