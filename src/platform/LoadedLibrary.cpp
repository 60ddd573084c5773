#include "platform/LoadedLibrary.h"

#include <cstdio>
#include <dlfcn.h>
#include <unistd.h>

LoadedLibrary::LoadedLibrary(std::initializer_list<const char *> names)
{
    for (const char *name : names) {
        if (!m_handle)
            m_handle = ::dlopen(name, RTLD_NOW | RTLD_LOCAL);
    }
}

void *LoadedLibrary::address(const char *name) const
{
    return m_handle ? ::dlsym(m_handle, name) : nullptr;
}

void endWithoutLibrary(const char *name)
{
    std::fprintf(stderr, "quirevault: the shared library %s is missing or too old. Install it again\n", name);
    _exit(1);
}
