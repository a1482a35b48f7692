#include "zarbo/widgets/sql_text.h"

std::wstring sqlText(std::wstring_view text) {
  if (text.empty()) return L"' '";
  std::wstring quoted = L"'";
  for (const wchar_t c : text) quoted.append(c == L'\'' ? 2 : 1, c);
  return quoted + L"'";
}
