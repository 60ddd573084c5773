#pragma once

#include <string_view>

/// Whether a text is an address that may be handed to the desktop: of the web or of mail, in printable ASCII,
/// of at most `kMaxAddressBytes`. Every other kind a document could use to start something.
bool isWebAddress(std::string_view address);
