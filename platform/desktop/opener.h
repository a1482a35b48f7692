#pragma once

#include <string>

namespace platform {

/// Hands a document, folder or address to the desktop's opener, as one argument of the program, never
/// to a command shell. Answers an `OpenResult`.
int openByDesktop(const std::wstring& target);

}  // namespace platform
