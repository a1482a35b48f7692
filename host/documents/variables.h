#pragma once

#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace host {

/// Values of the host's variables, which LISP and modules read and set by name, case ignored.
struct Point {
  double x = 0, y = 0, z = 0;
};
using VariableValue = std::variant<int, double, std::wstring, Point>;

/// Nothing for an unknown name.
std::optional<VariableValue> getVariable(std::wstring_view name);
enum class SetVariable { done, unknown, readOnly, wrongType };
/// An integer suits a real variable.
SetVariable setVariable(std::wstring_view name, const VariableValue& value);
/// Of all variables, in no order.
std::vector<std::wstring> variableNames();
/// For the host's own parts: sets a variable that is read-only to programs.
void setHostVariable(std::wstring_view name, const VariableValue& value);
/// The variable is asked of a part of the host whenever it is read, and given to it when it is set; read-only
/// without `set`.
void defineComputedVariable(std::wstring_view name, std::function<VariableValue()> value,
                            std::function<SetVariable(const VariableValue&)> set = {});

/// Folders of the host's search path, in order; "ACADPREFIX" shows them.
const std::vector<std::wstring>& supportPath();
void setSupportPath(std::vector<std::wstring> folders);
/// The full path of a file: as given, in the current folder, beside the current drawing, or on the
/// search path; "" when it is nowhere.
std::wstring findSupportFile(const std::wstring& name);

}  // namespace host
