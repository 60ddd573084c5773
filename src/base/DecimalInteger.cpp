#include "base/DecimalInteger.h"

#include <algorithm>

std::optional<qint64> decimalInteger(const QString &text)
{
    const qsizetype signs = text.startsWith(u'+') || text.startsWith(u'-') ? 1 : 0;
    const auto isDigit = [](QChar c) {
        return c >= u'0' && c <= u'9';
    };
    if (!std::all_of(text.begin() + signs, text.end(), isDigit))
        return std::nullopt;
    bool isInteger = false;
    const qint64 number = text.toLongLong(&isInteger);
    return isInteger ? std::optional(number) : std::nullopt;
}
