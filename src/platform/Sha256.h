#pragma once

#include <QString>
#include <optional>
#include <stop_token>

class QByteArray;

// Both need libcrypto, and end the program where that is missing (see CryptoLibrary.h).

/// SHA-256 of `bytes` as 64 lowercase hexadecimal digits.
QString sha256Hex(const QByteArray &bytes);

/// SHA-256 of the whole file behind an open descriptor, read from its start in blocks of 1 MiB without moving
/// the descriptor's position. Nothing when a read fails or `stop` fires.
std::optional<QString> sha256HexOfFile(int descriptor, std::stop_token stop = {});
