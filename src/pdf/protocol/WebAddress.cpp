#include "pdf/protocol/WebAddress.h"

#include "pdf/protocol/Limits.h"

#include <algorithm>

namespace
{
using namespace std::string_view_literals;

bool isPrintable(char c)
{
    return c > ' ' && c < '\x7f';
}

char lowered(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Whether `address` begins with `start` and goes on.
bool continues(std::string_view address, std::string_view start)
{
    return address.size() > start.size() &&
           std::equal(start.begin(), start.end(), address.begin(),
                      [](char expected, char found) { return expected == lowered(found); });
}
} // namespace

bool isWebAddress(std::string_view address)
{
    return address.size() <= kMaxAddressBytes && std::all_of(address.begin(), address.end(), isPrintable) &&
           (continues(address, "http://"sv) || continues(address, "https://"sv) ||
            continues(address, "mailto:"sv));
}
