#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

/// Reads what `Writer` wrote and trusts none of it. After the first thing that does not fit, every further
/// call answers an empty value; ask `isWhole` once at the end.
class Reader
{
public:
    explicit Reader(std::span<const std::uint8_t> bytes);

    /// A number of at most `max`.
    std::uint32_t number(std::uint32_t max = UINT32_MAX);
    /// A finite number of at most `kMaxCoordinate` either way.
    float coordinate();
    /// A byte string of at most `maxBytes`; a view into the message.
    std::span<const std::uint8_t> bytes(std::uint32_t maxBytes);
    /// UTF-8 of at most `maxBytes`.
    std::string text(std::uint32_t maxBytes);
    std::optional<std::string> optionalText(std::uint32_t maxBytes);

    /// Notes that a value read does not make sense.
    void refuse();
    /// Whether everything so far made sense.
    bool isGood() const { return m_isGood; }
    /// Whether everything made sense and nothing is left over.
    bool isWhole() const { return m_isGood && m_rest.empty(); }

private:
    std::span<const std::uint8_t> m_rest;
    bool m_isGood = true;
};
