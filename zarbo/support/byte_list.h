#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Binary values in LISP: the count of bytes and then each byte, in decimal, separated by ",". Three bytes
/// 1, 2, 255 read "3,1,2,255", none read "0".
std::wstring byteListText(const std::vector<uint8_t>& bytes);

/// As many bytes as the count says at most; what follows is ignored. A number is cut to its low byte.
std::vector<uint8_t> bytesOfListText(std::wstring_view text);

/// One byte for each character; a code above 255 gives 255.
std::vector<uint8_t> bytesOfText(std::wstring_view text);
