#include "pdf/protocol/WebAddress.h"

#include "pdf/protocol/Limits.h"

#include <gtest/gtest.h>
#include <string>

TEST(WebAddress, IsOfTheWebOrOfMail)
{
    for (const char *address : {"http://a", "https://example.org/path?query#part", "HTTPS://EXAMPLE.ORG",
                                "mailto:someone@example.org", "https://example.org/%C3%A9"})
        EXPECT_TRUE(isWebAddress(address)) << address;
}

TEST(WebAddress, IsNothingElse)
{
    for (const char *address :
         {"", "http:", "http://", "https:/x", "mailto:", "file:///etc/passwd", "javascript:alert(1)",
          "ftp://a", "data:text/html,x", " https://a", "//a", "example.org", "xhttps://a"})
        EXPECT_FALSE(isWebAddress(address)) << address;
}

TEST(WebAddress, IsPrintableAndOfLimitedLength)
{
    EXPECT_FALSE(isWebAddress("https://a b"));
    EXPECT_FALSE(isWebAddress("https://a\nb"));
    EXPECT_FALSE(isWebAddress("https://caf\u00e9"));
    EXPECT_FALSE(isWebAddress(std::string_view("https://a\0b", 11)));
    const std::string longest = "http://" + std::string(kMaxAddressBytes - 7, 'x');
    EXPECT_TRUE(isWebAddress(longest));
    EXPECT_FALSE(isWebAddress(longest + "x"));
}
