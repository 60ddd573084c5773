#include "updates/InstalledProgram.h"

#include <gnu/libc-version.h>

InstalledProgram InstalledProgram::ofThisBuild(const QString &version)
{
    const QString library = QString::fromLatin1(gnu_get_libc_version());
    return {.version = DottedVersion::fromText(version).value_or(DottedVersion()),
            .system = DottedVersion::fromText(library).value_or(DottedVersion()),
            .key = Ed25519PublicKey::fromBase64(QUIREVAULT_UPDATE_PUBLIC_KEY)};
}

QString builtInFeedAddress()
{
    return QStringLiteral(QUIREVAULT_UPDATE_FEED_URL);
}
