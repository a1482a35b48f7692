#include "host/commands/commands.h"
#include "host/documents/documents.h"
#include "host/documents/variables.h"

namespace host {
namespace {

bool hasFile(const Document& document) {
  return std::wstring_view(document.fileName()).find(L'/') != std::wstring_view::npos;
}

std::wstring withEnding(std::wstring path) {
  const size_t dot = path.rfind(L'.'), slash = path.rfind(L'/');
  const bool ended = dot != std::wstring::npos && (slash == std::wstring::npos || dot > slash);
  return ended ? path : path + L".dwg";
}

void saveTo(CommandInput& input, const std::wstring& path) {
  Document* const document = documents().current();
  std::wstring problem;
  if (!documents().save(*document, path, problem)) input.fail(problem);
}

Task<> saveUnderName(CommandInput& input) {
  const std::wstring current = documents().current()->fileName();
  const std::wstring name = co_await input.text(L"\nSave drawing as <" + current + L">: ");
  saveTo(input, name.empty() ? L"" : withEnding(name));
}

/// A drawing that has a file is saved there without a question.
Task<> qsave(CommandInput& input) {
  if (hasFile(*documents().current())) {
    saveTo(input, L"");
  } else {
    co_await saveUnderName(input);
  }
}

Task<> save(CommandInput& input) { return saveUnderName(input); }

/// The file's version comes first, where the answer looks like one; the host writes its own.
Task<> saveAs(CommandInput& input) {
  const std::wstring current = documents().current()->fileName();
  std::wstring name = co_await input.text(
      L"\nEnter file format [2000/2004/2007/2010/2013/2018/Standards/DXF/Template] or name: ");
  const KeywordList formats(L"R14 2000 2004 2007 2010 2013 2018 Standards DXF Template");
  if (name.empty() || formats.match(name)) {
    const bool asText = formats.match(name) == L"DXF";
    name = co_await input.text(L"\nSave drawing as <" + current + L">: ");
    if (asText && !name.empty() && !name.ends_with(L".dxf")) name += L".dxf";
  }
  saveTo(input, name.empty() ? L"" : withEnding(name));
}

Task<> setVar(CommandInput& input) {
  const std::wstring name = co_await input.text(L"\nEnter variable name: ");
  const auto current = getVariable(name);
  if (!current) input.fail(L"Unknown variable name.");
  VariableValue value = *current;
  if (std::holds_alternative<std::wstring>(value)) {
    value = co_await input.text(L"\nEnter new value for " + name + L": ");
  } else if (std::holds_alternative<Point>(value)) {
    const Answer answer = co_await input.point(L"\nEnter new value for " + name + L": ");
    if (answer.given()) value = Point{answer.point.x, answer.point.y, answer.point.z};
  } else {
    const bool whole = std::holds_alternative<int>(value);
    const Answer answer = co_await input.number(whole ? Wanted::integer : Wanted::real,
                                                L"\nEnter new value for " + name + L": ");
    if (answer.given() && whole) value = answer.integer;
    if (answer.given() && !whole) value = answer.real;
  }
  if (setVariable(name, value) != SetVariable::done) input.say(L"\nCannot set " + name + L" to that value.");
}

constexpr Command rows[] = {
    {L"QSAVE", qsave, false}, {L"SAVE", save, false}, {L"SAVEAS", saveAs, false}, {L"SETVAR", setVar, false}};

}  // namespace

std::span<const Command> fileCommands() { return rows; }

}  // namespace host
