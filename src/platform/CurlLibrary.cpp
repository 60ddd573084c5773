#include "platform/CurlLibrary.h"

#include "platform/LoadedLibrary.h"

#include <optional>

namespace
{
std::optional<CurlLibrary> load()
{
    // Flavours that differ only in the TLS library below them.
    const LoadedLibrary library({"libcurl.so.4", "libcurl-gnutls.so.4"});
    CurlLibrary curl;
    decltype(&::curl_global_init) globalInit = nullptr;
    const bool found =
        library.find("curl_global_init", globalInit) && library.find("curl_easy_init", curl.easyInit) &&
        library.find("curl_easy_setopt", curl.setOption) && library.find("curl_easy_perform", curl.perform) &&
        library.find("curl_easy_getinfo", curl.information) &&
        library.find("curl_easy_strerror", curl.describe) && library.find("curl_easy_cleanup", curl.cleanUp);
    if (!found || globalInit(CURL_GLOBAL_DEFAULT) != CURLE_OK)
        return {};
    return curl;
}
} // namespace

const CurlLibrary *CurlLibrary::loaded()
{
    static const std::optional<CurlLibrary> library = load();
    return library ? &*library : nullptr;
}
