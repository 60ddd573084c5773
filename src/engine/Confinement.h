#pragma once

#include <optional>
#include <string>

// The descriptors with which the engine is started. Everything beyond them is closed.
inline constexpr int kSocketDescriptor = 3;
inline constexpr int kDocumentDescriptor = 4;
// Takes turns: the memory file that came beside a request, until it is mapped.
inline constexpr int kMemoryDescriptor = 5;

/// Gives up, for every thread of the process and for good, all that reading a document does not need: files,
/// network, processes, executable memory, more than 2 GiB of address space and 10 minutes of processor; a
/// limit that was inherited lower stays. What is forbidden fails with EPERM; nobody is killed for trying.
/// Answers why it could not, in which case no document may be read.
std::optional<std::string> confine();
