#pragma once

#include <string>

/// Upper and lower case of single characters, for all of Unicode and whatever the process's locale is.
wchar_t upperLetter(wchar_t c);
wchar_t lowerLetter(wchar_t c);
std::wstring upperCased(std::wstring text);
std::wstring lowerCased(std::wstring text);
