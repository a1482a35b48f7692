#pragma once

#include <string>
#include <string_view>

/// UTF-8 text as the content of an XML element or a value in double quotes. What XML can't hold (control
/// characters, ill-formed sequences) becomes U+FFFD.
std::string xmlText(std::string_view utf8);
