#include "host/bridge/source_text.h"

#include <regex>

#include "host/console/command_line.h"
#include "host/documents/variables.h"
#include "host/text/code_page.h"
#include "platform/text/utf.h"

namespace host {
namespace {

std::string namedByFirstLine(const std::string& bytes) {
  const std::string line = bytes.substr(0, bytes.find_first_of("\r\n"));
  static const std::regex naming("coding[:=][ \t]*([-_.A-Za-z0-9]+)");
  std::smatch found;
  return std::regex_search(line, found, naming) ? found[1].str() : std::string();
}

bool hasUtf16Mark(const std::string& bytes) {
  return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
}

void tell(const std::wstring& fileName, const std::wstring& what) {
  commandLine().print(L"\n" + fileName + L": " + what + L"\n");
}

std::string pageOfDrawing() {
  const auto value = getVariable(L"DWGCODEPAGE");
  const auto* const name = value ? std::get_if<std::wstring>(&*value) : nullptr;
  const std::string page = name ? toUtf8(*name) : std::string();
  return text::CodePage(page).isKnown() ? page : "ANSI_1252";
}

}  // namespace

std::string sourceAsUtf8(std::string bytes, const std::wstring& fileName) {
  if (isValidUtf8(bytes)) return bytes;
  if (hasUtf16Mark(bytes)) return toUtf8(text::CodePage("utf-16").decode(bytes));
  const std::string named = namedByFirstLine(bytes);
  if (const text::CodePage page(named); page.isKnown()) return toUtf8(page.decode(bytes));
  if (!named.empty()) tell(fileName, L"the code page " + fromUtf8(named) + L" isn't known");
  const std::string taken = pageOfDrawing();
  tell(fileName, L"this isn't UTF-8; read as " + fromUtf8(taken));
  return toUtf8(text::CodePage(taken).decode(bytes));
}

}  // namespace host
