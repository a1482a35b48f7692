#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

/// The encodings in which mail carries text and files over lines of ASCII.

std::string base64(std::string_view bytes);

/// Bytes of a file that make one line of 76 characters in base64.
inline constexpr size_t bytesOfBase64Line = 57;
/// In lines that end in CR LF. All pieces of a file but the last must be whole lines.
std::string base64Lines(std::string_view bytes);
size_t sizeOfBase64Lines(size_t bytes);

/// Each line break, of whatever kind, as CR LF.
std::string withMailLineEnds(std::string_view text);
/// Quoted-printable (RFC 2045); line breaks are CR LF before and after.
std::string quotedPrintable(std::string_view text);

}  // namespace platform
