#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/lisp/value.h"

namespace lisp {

/// What the interpreter asks of the host. The defaults stand for a bare interpreter: output is dropped,
/// there are no variables, and files are found where they are named.
class Services {
 public:
  virtual ~Services() = default;
  /// Prints on the command line.
  virtual void print(std::wstring_view text);
  /// Shows a message that the user must acknowledge.
  virtual void alert(const std::wstring& message);
  /// A line that the user types; nothing at the end of input.
  virtual std::optional<std::wstring> readLine();
  /// Variables of the host by name (any case). Nothing when there is none such.
  virtual std::optional<Value> variable(const std::wstring& name);
  /// False when there is none such or it can't be set; a wrong type likewise.
  virtual bool setVariable(const std::wstring& name, const Value& value);
  virtual std::optional<std::wstring> environment(const std::wstring& name);
  virtual void setEnvironment(const std::wstring& name, const std::wstring& value);
  /// A source file's text as UTF-8, from bytes that aren't; the name is for what has to be told about it.
  virtual std::string decodeSource(std::string bytes, const std::wstring& fileName);
  /// Full path of a file on the search path; nothing when it isn't there.
  virtual std::optional<std::wstring> findFile(const std::wstring& name);
};

}  // namespace lisp
