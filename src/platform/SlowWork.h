#pragma once

class QThreadPool;

/// Threads for what takes as long as a disk or another program does. From any thread; the end of the
/// application waits for them.
///
/// Never those of QThreadPool::globalInstance(): Qt fills and scales pictures on them and waits for it, so a
/// window that is painted would wait for the disk.
QThreadPool *slowWork();
