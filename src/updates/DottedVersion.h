#pragma once

#include <QString>
#include <compare>
#include <optional>
#include <vector>

/// A version such as "1.12": numbers that are compared one after the other, so that 1.12 is newer than 1.9.
/// Components that are not there count as 0.
class DottedVersion
{
public:
    /// The oldest of all, "0".
    DottedVersion() = default;

    /// The version that `text` is: 1 to 8 numbers of 1 to 9 digits with dots between. None for anything else,
    /// since what cannot be compared must not be taken for newer.
    static std::optional<DottedVersion> fromText(const QString &text);

    /// As it was written; digits and dots only, so it may be a part of a file's name.
    const QString &text() const { return m_text; }

    friend bool operator==(const DottedVersion &a, const DottedVersion &b)
    {
        return a.m_numbers == b.m_numbers;
    }
    friend std::strong_ordering operator<=>(const DottedVersion &a, const DottedVersion &b)
    {
        return a.m_numbers <=> b.m_numbers;
    }

private:
    QString m_text = QStringLiteral("0");
    std::vector<int> m_numbers; ///< without zeros at the end
};
