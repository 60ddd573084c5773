#pragma once

#include <QString>

/// Has the system forget what it holds of the file in memory, so that reading it waits for the disk again.
void dropFromPageCache(const QString &path);
