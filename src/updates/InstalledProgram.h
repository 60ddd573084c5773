#pragma once

#include "platform/Ed25519.h"
#include "updates/DottedVersion.h"

#include <QString>
#include <optional>

/// What an update has to fit.
struct InstalledProgram {
    DottedVersion version;
    /// The version of the system's C library. It decides whether a program that was built elsewhere starts
    /// here; the versions of distributions cannot be compared with each other.
    DottedVersion system;
    /// Signs this program's packages; without it no package is ever accepted.
    std::optional<Ed25519PublicKey> key;

    /// The program of this version as it was built, on this machine.
    static InstalledProgram ofThisBuild(const QString &version);
};

/// Where this build looks for updates unless the preferences say otherwise; empty for nowhere.
QString builtInFeedAddress();
