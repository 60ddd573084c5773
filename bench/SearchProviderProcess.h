#pragma once
#include <QString>
inline void measureProvider(const QString &) {}
