#pragma once

/// One line on a LISP function, for the reference and for a person at a prompt.
struct FunctionHelp {
  const wchar_t* name;
  const wchar_t* arguments;  ///< in order; those in brackets may be missing, `…` repeats the one before
  const wchar_t* result;
  const wchar_t* meaning;
};

/// What a module may export to tell of its functions: the help on one, upper and lower case alike, or null.
using FunctionHelpEntry = const FunctionHelp* (*)(const wchar_t* name);
inline constexpr const char* functionHelpEntry = "functionHelp";
