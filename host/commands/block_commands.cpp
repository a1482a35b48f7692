#include "brx/db_attributes.h"
#include "host/commands/block_files.h"
#include "host/commands/commands.h"
#include "host/commands/drawing_edit.h"
#include "host/documents/variables.h"

namespace host {
namespace {

constexpr int noNull = 1, noZero = 2;

struct Placing {
  AcGeScale3d scale;
  double rotation = 0;
  /// Prompts that an option has answered already.
  bool scaled = false, rotated = false;
};

/// Options before the insertion point answer later prompts.
Task<AcGePoint3d> askInsertionPoint(CommandInput& input, Placing& placing) {
  while (true) {
    const Answer at = co_await input.point(L"\nSpecify insertion point or [Scale/X/Y/Z/Rotate]: ", {},
                                           L"Scale X Y Z Rotate", noNull);
    if (at.given()) co_return at.point;
    if (at.text == L"Rotate") {
      const Answer turn = co_await input.number(Wanted::orientation, L"\nSpecify rotation angle <0>: ");
      placing.rotation = turn.given() ? turn.real : 0;
      placing.rotated = true;
      continue;
    }
    const Answer factor =
        co_await input.number(Wanted::real, L"\nSpecify scale factor <1>: ", {}, {}, noZero);
    const double value = factor.given() ? factor.real : 1;
    if (at.text == L"Scale" || at.text == L"X") placing.scale.sx = value;
    if (at.text == L"Scale" || at.text == L"Y") placing.scale.sy = value;
    if (at.text == L"Scale" || at.text == L"Z") placing.scale.sz = value;
    placing.scaled = true;
  }
}

Task<> askScale(CommandInput& input, Placing& placing, AcGePoint3d at) {
  const Answer x = co_await input.number(
      Wanted::real, L"\nEnter X scale factor, specify opposite corner, or [XYZ] <1>: ", at, L"XYZ", noZero);
  placing.scale.sx = x.given() ? x.real : 1;
  const Answer y =
      co_await input.number(Wanted::real, L"\nEnter Y scale factor <use X scale factor>: ", at, {}, noZero);
  placing.scale.sy = y.given() ? y.real : placing.scale.sx;
  placing.scale.sz = placing.scale.sx;
  if (x.status != RTKWORD) co_return;
  const Answer z =
      co_await input.number(Wanted::real, L"\nEnter Z scale factor <use X scale factor>: ", at, {}, noZero);
  if (z.given()) placing.scale.sz = z.real;
}

bool asksForAttributes() {
  const auto value = getVariable(L"ATTREQ");
  const int* const asks = value ? std::get_if<int>(&*value) : nullptr;
  return !asks || *asks != 0;
}

/// The definitions of a block that each reference fills in.
Entities variableDefinitions(AcDbObjectId block) {
  Entities found;
  AcDbObjectPointer<AcDbBlockTableRecord> record(block);
  if (!record.object()) return found;
  for (const AcDbObjectId& id : record->entityIds()) {
    AcDbObjectPointer<AcDbAttributeDefinition> definition(id);
    if (definition.object() && !definition->isConstant()) found.push_back(id);
  }
  return found;
}

bool addAttribute(AcDbObjectId reference, AcDbObjectId definition, const std::wstring& text) {
  AcDbObjectPointer<AcDbBlockReference> owner(reference, AcDb::kForWrite);
  AcDbObjectPointer<AcDbAttributeDefinition> pattern(definition);
  if (!owner.object() || !pattern.object()) return false;
  auto attribute = std::make_unique<AcDbAttribute>();
  attribute->setPropertiesFrom(pattern);
  if (attribute->setAttributeFromBlock(pattern, owner->blockTransform()) != Acad::eOk) return false;
  if (!text.empty()) attribute->setTextString(text.c_str());
  if (owner->appendAttribute(attribute.get()) != Acad::eOk) return false;
  attribute.release()->close();
  return true;
}

/// Enter takes the definition's own text.
Task<> fillInAttributes(CommandInput& input, AcDbObjectId reference, AcDbObjectId block) {
  const bool asks = asksForAttributes();
  for (const AcDbObjectId& id : variableDefinitions(block)) {
    std::wstring prompt, text;
    {
      AcDbObjectPointer<AcDbAttributeDefinition> definition(id);
      prompt = definition->prompt().empty() ? definition->tag() : definition->prompt();
      prompt = L"\n" + prompt + L" <" + definition->textString() + L">: ";
    }
    if (asks) text = co_await input.text(prompt);
    if (!addAttribute(reference, id, text)) input.say(L"\nAn attribute of the block can't be placed.");
  }
}

Task<> insert(CommandInput& input) {
  const std::wstring name = co_await input.text(L"\nEnter block name: ");
  std::wstring problem;
  const AcDbObjectId block = findOrLoadBlock(name, problem);
  if (block.isNull()) input.fail(problem);
  Placing placing;
  const AcGePoint3d at = co_await askInsertionPoint(input, placing);
  if (!placing.scaled) co_await askScale(input, placing, at);
  if (!placing.rotated) {
    const Answer turn = co_await input.number(Wanted::orientation, L"\nSpecify rotation angle <0>: ", at);
    placing.rotation = turn.given() ? turn.real : 0;
  }
  auto made = std::make_unique<AcDbBlockReference>(at, block);
  made->setScaleFactors(placing.scale);
  made->setRotation(placing.rotation);
  const AcDbObjectId reference = addEntity(std::move(made));
  if (reference.isNull()) input.fail(L"The block can't be inserted here.");
  co_await fillInAttributes(input, reference, block);
}

AcDbObjectId newBlock(const std::wstring& name, const AcGePoint3d& origin) {
  AcDbObjectPointer<AcDbBlockTable> table(acdbHostWorkingDatabase()->tableId(AcDbBlockTable::desc()),
                                          AcDb::kForWrite);
  auto record = std::make_unique<AcDbBlockTableRecord>();
  AcDbObjectId id;
  if (!table.object() || record->setName(name.c_str()) != Acad::eOk) return {};
  record->setOrigin(origin);
  if (table->add(id, record.get()) != Acad::eOk) return {};
  record.release()->close();
  return id;
}

/// The chosen entities become the block, and leave the drawing.
Task<> block(CommandInput& input) {
  const std::wstring name = co_await input.text(L"\nEnter block name: ");
  if (name.empty() || !findBlock(name).isNull())
    input.fail(L"Block \"" + name + L"\" already exists or has no name.");
  const Answer base = co_await input.point(L"\nSpecify insertion base point: ", {}, {}, noNull);
  const Entities chosen = co_await input.objects();
  const AcDbObjectId id = newBlock(name, base.point);
  if (id.isNull()) input.fail(L"Invalid block name.");
  copyAll(chosen, id);
  eraseAll(chosen);
}

constexpr Command rows[] = {{L"INSERT", insert}, {L"BLOCK", block}};

}  // namespace

std::span<const Command> blockCommands() { return rows; }

}  // namespace host
