#pragma once

#include <QString>

/// A text as an action shows it: "&" would mark a key.
inline QString asActionText(QString text)
{
    return text.replace(u'&', QLatin1String("&&"));
}
