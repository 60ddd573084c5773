#include "PageCache.h"

#include <QFile>
#include <fcntl.h>
#include <unistd.h>

void dropFromPageCache(const QString &path)
{
    const int descriptor = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    fdatasync(descriptor); // what is not written yet cannot be dropped
    posix_fadvise(descriptor, 0, 0, POSIX_FADV_DONTNEED);
    close(descriptor);
}
