#pragma once

#include "base/Error.h"

/// Codes of the errors in the domain "Updater".
enum class UpdateErrorCode {
    BadFeed = 1,    ///< what the feed's address answers is no update feed, or too long
    NoKey,          ///< this build has no key to check a signature with
    NotSigned,      ///< the newest version has no signature
    BadLength,      ///< the package is not as long as the feed says, or the feed says no acceptable length
    WrongSignature, ///< the package is not what its makers signed
};

inline Error updateError(UpdateErrorCode code, const QString &description, const QString &reason = {})
{
    return {QStringLiteral("Updater"), static_cast<int>(code), description, reason};
}
