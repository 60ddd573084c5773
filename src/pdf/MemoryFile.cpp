#include "pdf/MemoryFile.h"

#include <fcntl.h>
#include <sys/mman.h>

std::optional<MemoryFile> MemoryFile::create(std::size_t bytes)
{
    FileDescriptor file(memfd_create("quirevault", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    if (!file || ftruncate(file.get(), off_t(bytes)) != 0 ||
        fcntl(file.get(), F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW) != 0)
        return std::nullopt;
    return MemoryFile(std::move(file));
}

MemoryFile::MemoryFile(FileDescriptor descriptor)
    : m_descriptor(std::move(descriptor))
{
}

bool MemoryFile::seal()
{
    return fcntl(m_descriptor.get(), F_ADD_SEALS, F_SEAL_WRITE | F_SEAL_SEAL) == 0;
}
