#pragma once

#include <curl/curl.h>

/// The few functions of libcurl that are used, found in the library when it is first asked for.
struct CurlLibrary {
    decltype(&::curl_easy_init) easyInit = nullptr;
    decltype(&::curl_easy_setopt) setOption = nullptr;
    decltype(&::curl_easy_perform) perform = nullptr;
    decltype(&::curl_easy_getinfo) information = nullptr;
    decltype(&::curl_easy_strerror) describe = nullptr;
    decltype(&::curl_easy_cleanup) cleanUp = nullptr;

    /// Loads and initialises the library once a process; null when this machine has none.
    static const CurlLibrary *loaded();
};
