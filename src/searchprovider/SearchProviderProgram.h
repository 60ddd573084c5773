#pragma once

/// Name and object on the session bus; the files by which desktops find the provider name them as well.
inline constexpr char kSearchProviderName[] = "org.quirevault.Quirevault.SearchProvider";
inline constexpr char kSearchProviderPath[] = "/org/quirevault/Quirevault/SearchProvider";

/// The program `quirevault-search-provider`: answers the desktop's search over the session bus, which starts
/// it, and ends when nobody has asked for a while. Answers the exit status: 1 without a bus, or when another
/// one answers already.
int runSearchProvider(int argc, char **argv);
