#include "host/lisp/services.h"

#include <cstdlib>
#include <filesystem>

#include "platform/text/utf.h"

namespace lisp {

void Services::print(std::wstring_view) {}
void Services::alert(const std::wstring&) {}
std::optional<std::wstring> Services::readLine() { return {}; }
std::optional<Value> Services::variable(const std::wstring&) { return {}; }
bool Services::setVariable(const std::wstring&, const Value&) { return false; }

std::optional<std::wstring> Services::environment(const std::wstring& name) {
  const char* const value = std::getenv(toUtf8(name).c_str());
  return value ? std::optional(fromUtf8(value)) : std::nullopt;
}

void Services::setEnvironment(const std::wstring& name, const std::wstring& value) {
  setenv(toUtf8(name).c_str(), toUtf8(value).c_str(), 1);
}

std::string Services::decodeSource(std::string bytes, const std::wstring&) { return bytes; }

std::optional<std::wstring> Services::findFile(const std::wstring& name) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(toUtf8(name), ignored)) return {};
  return fromUtf8(std::filesystem::absolute(toUtf8(name), ignored).string());
}

}  // namespace lisp
