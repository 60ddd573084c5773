#include "pdf/protocol/Writer.h"

#include <bit>

void Writer::number(std::uint32_t value)
{
    m_bytes.resize(m_bytes.size() + sizeof value);
    replaceNumber(m_bytes.size() - sizeof value, value);
}

void Writer::coordinate(float value)
{
    number(std::bit_cast<std::uint32_t>(value));
}

void Writer::bytes(std::span<const std::uint8_t> bytes)
{
    number(static_cast<std::uint32_t>(bytes.size()));
    m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
}

void Writer::text(std::string_view text)
{
    bytes({reinterpret_cast<const std::uint8_t *>(text.data()), text.size()});
}

void Writer::optionalText(const std::optional<std::string> &text)
{
    number(text ? 1 : 0);
    if (text)
        this->text(*text);
}

void Writer::replaceNumber(std::size_t offset, std::uint32_t value)
{
    for (std::size_t i = 0; i < sizeof value; ++i)
        m_bytes[offset + i] = static_cast<std::uint8_t>(value >> (8 * i));
}
