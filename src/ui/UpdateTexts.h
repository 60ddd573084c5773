#pragma once

#include <QString>

class Updater;

/// What the update window says.
struct UpdateTexts {
    QString heading;
    QString text; ///< empty for nothing
};

/// In the phase that the updater is in.
UpdateTexts updateTexts(const Updater &updater);

/// "3.1 MB of 12.4 MB".
QString downloadProgressText(qint64 receivedBytes, qint64 sizeBytes);
