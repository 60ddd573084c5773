#pragma once

/// Serves the document on `kDocumentDescriptor` to the program on `kSocketDescriptor` until that goes away.
/// Confines the process before the document's first byte is read. Returns only when the start fails.
int serveDocument();
