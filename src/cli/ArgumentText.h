#pragma once

#include <QString>
#include <optional>
#include <string>
#include <vector>

// CLI11 would take "[a,b]" for two values wherever several are allowed. No argument here means that, and a
// file may be called so: arguments with a bracket in front are led past it behind a character of no meaning.

/// An argument as typed, ready for CLI11.
std::string shielded(const std::string &argument);
/// The argument as typed, from what CLI11 answers.
std::string unshielded(const std::string &argument);

// The same as text.
QString toText(const std::string &argument);
std::optional<QString> toText(const std::optional<std::string> &argument);
/// The words of a query that was typed without quotes around the whole.
QString toText(const std::vector<std::string> &words);
