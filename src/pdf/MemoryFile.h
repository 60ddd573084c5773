#pragma once

#include "pdf/protocol/FileDescriptor.h"

#include <cstddef>
#include <optional>

/// Memory with a descriptor, to be filled by the engine. Its size is sealed from the start: who holds the
/// descriptor can neither cut nor lengthen it, so that a mapping of it never ends this process.
class MemoryFile
{
public:
    /// A file of zeros, of at least 1 byte. Nothing, with the cause in errno, when that fails.
    static std::optional<MemoryFile> create(std::size_t bytes);

    int descriptor() const { return m_descriptor.get(); }

    /// Makes sure that nobody can change the content any more, and whoever tries gets an error. False when
    /// somebody still holds it mapped for writing.
    bool seal();

private:
    explicit MemoryFile(FileDescriptor descriptor);

    FileDescriptor m_descriptor;
};
