#pragma once

#include <QByteArray>

/// "w<first> ... w<last>", joined with blanks.
inline QByteArray words(int first, int last)
{
    QByteArray text;
    for (int i = first; i <= last; ++i)
        text += (text.isEmpty() ? "w" : " w") + QByteArray::number(i);
    return text;
}
