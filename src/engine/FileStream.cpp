#include "engine/FileStream.h"

#include <cerrno>
#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
// Measured: MuPDF hops about small files, and with blocks of this size most hops stay inside one.
constexpr std::size_t kBlockBytes = 64 * 1024;

/// What the stream keeps between calls; the block in memory ends at the stream's `pos`.
struct FileState {
    int descriptor;
    int64_t fileBytes;
    unsigned char block[kBlockBytes];
};

FileState *stateOf(fz_stream *stream)
{
    return static_cast<FileState *>(stream->state);
}

ssize_t readAt(int descriptor, unsigned char *into, std::size_t bytes, int64_t position)
{
    ssize_t count;
    do
        count = pread(descriptor, into, bytes, position);
    while (count < 0 && errno == EINTR);
    return count;
}

int readNext(fz_context *context, fz_stream *stream, size_t)
{
    FileState *state = stateOf(stream);
    stream->rp = stream->wp = state->block;
    const ssize_t count = readAt(state->descriptor, state->block, kBlockBytes, stream->pos);
    if (count < 0)
        fz_throw(context, FZ_ERROR_GENERIC, "the file cannot be read: %s", strerror(errno));
    if (count == 0)
        return EOF;
    stream->wp += count;
    stream->pos += count;
    return *stream->rp++;
}

void seekTo(fz_context *, fz_stream *stream, int64_t offset, int whence)
{
    FileState *state = stateOf(stream);
    const int64_t base = whence == SEEK_END ? state->fileBytes : 0;
    const int64_t target = offset < -base ? 0 : base + offset;
    const int64_t blockStart = stream->pos - (stream->wp - state->block);
    if (target >= blockStart && target <= stream->pos) {
        stream->rp = state->block + (target - blockStart);
        return;
    }
    stream->rp = stream->wp = state->block;
    stream->pos = target;
}

void dropState(fz_context *context, void *state)
{
    fz_free(context, state);
}
} // namespace

std::optional<DocumentFile> examined(int descriptor)
{
    struct stat status = {};
    if (fstat(descriptor, &status) != 0)
        return std::nullopt;
    return DocumentFile{descriptor, status.st_size};
}

fz_stream *newFileStream(fz_context *context, DocumentFile file)
{
    FileState *state = static_cast<FileState *>(fz_malloc(context, sizeof(FileState)));
    state->descriptor = file.descriptor;
    state->fileBytes = file.bytes;
    // On failure this frees the state by itself.
    fz_stream *stream = fz_new_stream(context, state, readNext, dropState);
    stream->seek = seekTo;
    stream->rp = stream->wp = state->block;
    return stream;
}
