#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Bytes of a message under construction: numbers little-endian, coordinates as the bits of a
/// 32-bit float, texts and byte strings after their length.
class Writer
{
public:
    void number(std::uint32_t value);
    void coordinate(float value);
    void bytes(std::span<const std::uint8_t> bytes);
    void text(std::string_view text);
    /// A number that says whether there is one, then the text.
    void optionalText(const std::optional<std::string> &text);

    /// Writes over the number at `offset`, which was written before.
    void replaceNumber(std::size_t offset, std::uint32_t value);

    std::size_t size() const { return m_bytes.size(); }
    std::vector<std::uint8_t> take() { return std::move(m_bytes); }

private:
    std::vector<std::uint8_t> m_bytes;
};
