#include "cli/ArgumentText.h"

#include <QStringList>

namespace
{
constexpr char kShield = '\x1f';
} // namespace

std::string shielded(const std::string &argument)
{
    return argument.starts_with('[') ? kShield + argument : argument;
}

std::string unshielded(const std::string &argument)
{
    return argument.starts_with(kShield) ? argument.substr(1) : argument;
}

QString toText(const std::string &argument)
{
    return QString::fromStdString(unshielded(argument));
}

std::optional<QString> toText(const std::optional<std::string> &argument)
{
    return argument ? std::optional(toText(*argument)) : std::nullopt;
}

QString toText(const std::vector<std::string> &words)
{
    QStringList texts;
    for (const std::string &word : words)
        texts.append(toText(word));
    return texts.join(u' ');
}
