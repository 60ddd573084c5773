#include "platform/CurlLibrary.h"

#include <dlfcn.h>
#include <optional>

namespace
{
template <typename Function> bool find(void *library, const char *name, Function &function)
{
    function = reinterpret_cast<Function>(::dlsym(library, name));
    return function != nullptr;
}

/// The flavours of the library differ only in the TLS library below them.
void *openLibrary()
{
    for (const char *name : {"libcurl.so.4", "libcurl-gnutls.so.4"}) {
        if (void *library = ::dlopen(name, RTLD_NOW | RTLD_LOCAL))
            return library;
    }
    return nullptr;
}

std::optional<CurlLibrary> load()
{
    void *library = openLibrary();
    if (!library)
        return {};
    CurlLibrary curl;
    decltype(&::curl_global_init) globalInit = nullptr;
    const bool found = find(library, "curl_global_init", globalInit) &&
                       find(library, "curl_easy_init", curl.easyInit) &&
                       find(library, "curl_easy_setopt", curl.setOption) &&
                       find(library, "curl_easy_perform", curl.perform) &&
                       find(library, "curl_easy_getinfo", curl.information) &&
                       find(library, "curl_easy_strerror", curl.describe) &&
                       find(library, "curl_easy_cleanup", curl.cleanUp);
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
