#include "host/app/help.h"

#include <algorithm>
#include <filesystem>
#include <map>

#include "host/bridge/document_lisp.h"
#include "host/commands/commands.h"
#include "host/console/command_line.h"
#include "host/documents/variables.h"
#include "host/lisp/builtins.h"
#include "host/lisp/code.h"
#include "host/lisp/printer.h"
#include "host/rx/modules.h"
#include "platform/text/letters.h"
#include "platform/text/utf.h"

namespace host {
namespace {

using lisp::Function;
using Names = std::vector<std::wstring>;

std::wstring argumentsOf(const Function& function) {
  const auto counted = [](int count) {
    return std::to_wstring(count) + (count == 1 ? L" argument" : L" arguments");
  };
  if (function.most == 0) return L"no arguments";
  if (function.most == lisp::anyCount) {
    return function.fewest == 0 ? L"any arguments" : counted(function.fewest) + L" or more";
  }
  if (function.fewest == function.most) return counted(function.most);
  return std::to_wstring(function.fewest) + L" to " + counted(function.most);
}

std::wstring moduleOf(const Function& function) {
  const auto& application = *static_cast<const Application*>(function.context);
  return fromUtf8(std::filesystem::path(toUtf8(application.fileName)).stem().string());
}

/// What the module tells of its function, where it tells something.
std::wstring toldByModule(const std::wstring& name, const Function& function) {
  const FunctionHelp* const told = static_cast<const Application*>(function.context)->helpOn(name);
  if (!told) return {};
  const std::wstring arguments = *told->arguments ? std::wstring(L" ") + told->arguments : std::wstring();
  return std::wstring(L"\n  (") + told->name + arguments + L") -> " + told->result + L"\n  " + told->meaning;
}

std::wstring meaningOf(const std::wstring& name, const Function& function) {
  switch (function.kind) {
    case Function::Kind::specialForm:
      return L"special form of the language";
    case Function::Kind::external:
      return L"function of the module " + moduleOf(function) + toldByModule(name, function);
    case Function::Kind::usubr: {
      const lisp::Value parameters = lisp::car(function.lambda->source);
      return L"function of the program, " + printed(parameters, lisp::Style::readable);
    }
    case Function::Kind::subr:
      break;
  }
  return L"function, " + argumentsOf(function);
}

std::wstring shownValue(const VariableValue& value) {
  if (const auto* text = std::get_if<std::wstring>(&value)) return L"\"" + *text + L"\"";
  if (const auto* whole = std::get_if<int>(&value)) return std::to_wstring(*whole);
  if (const auto* real = std::get_if<double>(&value))
    return printed(lisp::Value(*real), lisp::Style::readable);
  return L"a point";
}

/// All that a name means.
Names meaningsOf(const std::wstring& name) {
  Names found;
  const lisp::Symbol* const symbol = currentInterpreter().find(name);
  if (symbol && symbol->value.isFunction()) {
    found.push_back(meaningOf(name, *symbol->value.function()));
  } else if (symbol && symbol->value.isTrue()) {
    found.push_back(L"symbol with the value " + printed(symbol->value, lisp::Style::readable));
  }
  if (findCommand(name)) found.push_back(L"command");
  const lisp::Symbol* const own = currentInterpreter().find(L"C:" + name);
  if (own && own->value.isFunction()) found.push_back(L"command of the program");
  if (const auto value = getVariable(name))
    found.push_back(L"variable of the host, now " + shownValue(*value));
  return found;
}

Names namesHolding(const std::wstring& part) {
  Names found;
  const auto take = [&](const std::wstring& name) {
    if (name.find(part) != std::wstring::npos) found.push_back(name);
  };
  for (const lisp::Symbol* each : currentInterpreter().symbols()) {
    if (each->value.isTrue()) take(each->name);
  }
  for (const std::wstring& each : commandNames()) take(each);
  for (const std::wstring& each : variableNames()) take(each);
  return found;
}

void show(const std::wstring& line) { commandLine().print(line + L"\n"); }

/// In lines no longer than a terminal's.
void showNames(const std::wstring& title, Names names) {
  constexpr size_t width = 78;
  if (names.empty()) return;
  std::sort(names.begin(), names.end());
  names.erase(std::unique(names.begin(), names.end()), names.end());
  show(title + L" (" + std::to_wstring(names.size()) + L"):");
  std::wstring line = L" ";
  for (const std::wstring& each : names) {
    if (line.size() + 1 + each.size() > width) show(std::exchange(line, L" "));
    line += L" " + each;
  }
  show(line);
}

void showAll() {
  std::map<std::wstring, Names> groups;
  for (const lisp::Symbol* each : currentInterpreter().symbols()) {
    if (!each->value.isFunction()) continue;
    const Function& function = *each->value.function();
    const bool external = function.kind == Function::Kind::external;
    groups[external                                 ? L"Functions of the module " + moduleOf(function)
           : function.kind == Function::Kind::usubr ? L"Functions of the program"
                                                    : L"Functions of the language and the host"]
        .push_back(lowerCased(each->name));
  }
  for (auto& [title, names] : groups) showNames(title, std::move(names));
  showNames(L"Commands", commandNames());
  showNames(L"Variables", variableNames());
  show(L"(help \"name\") tells what a name means, or which names hold a part of one.");
}

lisp::Value help(const lisp::Call& call) {
  commandLine().print(L"\n");
  if (!call.has(0) || call[0].isNil()) return showAll(), lisp::Value();
  const std::wstring name = call[0].isSymbol() ? call[0].symbol()->name : upperCased(call.text(0));
  const Names meanings = meaningsOf(name);
  for (const std::wstring& each : meanings) show(name + L": " + each);
  if (!meanings.empty()) return {};
  Names similar = namesHolding(name);
  if (similar.empty()) show(name + L": nothing has this name");
  showNames(L"Names that hold " + name, std::move(similar));
  return {};
}

}  // namespace

void defineHelp(lisp::Interpreter& interpreter) { interpreter.define(L"help", help, 0, 1); }

}  // namespace host
