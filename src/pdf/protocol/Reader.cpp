#include "pdf/protocol/Reader.h"

#include "pdf/protocol/Limits.h"
#include "pdf/protocol/Utf8.h"

#include <bit>
#include <cmath>

Reader::Reader(std::span<const std::uint8_t> bytes)
    : m_rest(bytes)
{
}

void Reader::refuse()
{
    m_isGood = false;
    m_rest = {};
}

std::uint32_t Reader::number(std::uint32_t max)
{
    std::uint32_t value = 0;
    if (m_rest.size() < sizeof value) {
        refuse();
        return 0;
    }
    for (std::size_t i = 0; i < sizeof value; ++i)
        value |= static_cast<std::uint32_t>(m_rest[i]) << (8 * i);
    m_rest = m_rest.subspan(sizeof value);
    if (value > max) {
        refuse();
        return 0;
    }
    return value;
}

float Reader::coordinate()
{
    const float value = std::bit_cast<float>(number());
    if (std::abs(value) <= kMaxCoordinate) // not so for what is no number
        return value;
    refuse();
    return 0;
}

std::span<const std::uint8_t> Reader::bytes(std::uint32_t maxBytes)
{
    const std::uint32_t length = number(maxBytes);
    if (length > m_rest.size()) {
        refuse();
        return {};
    }
    const std::span<const std::uint8_t> found = m_rest.first(length);
    m_rest = m_rest.subspan(length);
    return found;
}

std::string Reader::text(std::uint32_t maxBytes)
{
    const std::span<const std::uint8_t> found = bytes(maxBytes);
    std::string text(reinterpret_cast<const char *>(found.data()), found.size());
    if (!isValidUtf8(text)) {
        refuse();
        return {};
    }
    return text;
}

std::optional<std::string> Reader::optionalText(std::uint32_t maxBytes)
{
    if (number(1) == 0)
        return std::nullopt;
    return text(maxBytes);
}
