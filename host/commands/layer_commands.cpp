#include "host/commands/colour_names.h"
#include "host/commands/commands.h"
#include "host/commands/drawing_edit.h"
#include "host/documents/variables.h"
#include "host/lisp/wildcard.h"
#include "platform/text/letters.h"

namespace host {
namespace {

using Layer = AcDbLayerTableRecord;

AcDbObjectId layerTable() { return acdbHostWorkingDatabase()->tableId(AcDbLayerTable::desc()); }

AcDbObjectId findLayer(const std::wstring& name) {
  AcDbObjectId id;
  AcDbObjectPointer<AcDbLayerTable> table(layerTable());
  if (!table.object() || table->getAt(name.c_str(), id) != Acad::eOk) return {};
  return id;
}

AcDbObjectId makeLayer(CommandInput& input, const std::wstring& name) {
  if (const AcDbObjectId found = findLayer(name); !found.isNull()) return found;
  auto layer = std::make_unique<Layer>();
  AcDbObjectId id;
  AcDbObjectPointer<AcDbLayerTable> table(layerTable(), AcDb::kForWrite);
  if (name.empty() || layer->setName(name.c_str()) != Acad::eOk || !table.object() ||
      table->add(id, layer.get()) != Acad::eOk) {
    input.say(L"\nInvalid layer name.");
    return {};
  }
  layer->setLinetypeObjectId(acdbHostWorkingDatabase()->continuousLinetype());
  layer.release()->close();
  return id;
}

std::vector<std::wstring> namesIn(const std::wstring& list) {
  std::vector<std::wstring> names;
  for (size_t at = 0; at <= list.size();) {
    const size_t comma = std::min(list.find(L',', at), list.size());
    if (comma > at) names.push_back(list.substr(at, comma - at));
    at = comma + 1;
  }
  return names;
}

/// All layers whose names a list of names and wildcards matches.
Entities matchingLayers(const std::wstring& list) {
  Entities found;
  AcDbObjectPointer<AcDbLayerTable> table(layerTable());
  if (!table.object()) return found;
  const std::wstring pattern = upperCased(list);
  for (const AcDbObjectId& id : table->recordIds()) {
    AcDbObjectPointer<Layer> layer(id);
    if (layer.object() && lisp::matchesWildcard(upperCased(layer->getName()), pattern)) found.push_back(id);
  }
  return found;
}

template <class Change>
void changeLayers(CommandInput& input, const std::wstring& list, Change change) {
  const Entities layers = matchingLayers(list);
  if (layers.empty()) input.say(L"\nNo matching layer names found.");
  for (const AcDbObjectId& id : layers) {
    AcDbObjectPointer<Layer> layer(id, AcDb::kForWrite);
    if (layer.object()) change(*layer.object());
  }
}

void setCurrent(AcDbObjectId layer) {
  if (layer.isNull()) return;
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  drawing->setClayer(layer);
  AcDbObjectPointer<Layer> record(layer);
  if (record.object()) setVariable(L"CLAYER", record->getName());
}

std::wstring currentName() {
  AcDbObjectPointer<Layer> record(acdbHostWorkingDatabase()->clayer());
  return record.object() ? record->getName() : L"0";
}

/// Enter means the current layer.
Task<std::wstring> askNames(CommandInput& input, std::wstring what) {
  const std::wstring current = currentName();
  const std::wstring names =
      co_await input.text(L"\nEnter name list of layer(s) " + what + L" <" + current + L">: ");
  co_return names.empty() ? current : names;
}

Task<> colourLayers(CommandInput& input) {
  const std::wstring text = co_await input.text(L"\nNew color [Truecolor] : ");
  auto colour = parseColour(text);
  if (!colour && upperCased(text).starts_with(L"T")) {
    colour = parseColour(co_await input.text(L"\nRed,Green,Blue: "));
  }
  if (!colour) {
    input.say(L"\nInvalid color.");
    co_return;
  }
  const std::wstring names = co_await askNames(input, L"for color");
  changeLayers(input, names, [&](Layer& layer) { layer.setColor(*colour); });
}

AcDbObjectId findLinetype(const std::wstring& name) {
  AcDbObjectId id;
  AcDbObjectPointer<AcDbLinetypeTable> table(acdbHostWorkingDatabase()->tableId(AcDbLinetypeTable::desc()));
  if (table.object()) table->getAt(name.c_str(), id);
  return id;
}

Task<> setLinetypes(CommandInput& input) {
  const std::wstring name = co_await input.text(L"\nEnter loaded linetype name: ");
  const AcDbObjectId linetype = findLinetype(name.empty() ? L"Continuous" : name);
  if (linetype.isNull()) {
    input.say(L"\nLinetype \"" + name + L"\" not found.");
    co_return;
  }
  const std::wstring names = co_await askNames(input, L"for linetype");
  changeLayers(input, names, [&](Layer& layer) { layer.setLinetypeObjectId(linetype); });
}

Task<> makeLayers(CommandInput& input) {
  const std::wstring list = co_await input.text(L"\nEnter name list for new layer(s): ");
  for (const std::wstring& name : namesIn(list)) makeLayer(input, name);
}

/// The current layer can't be frozen.
void freeze(CommandInput& input, Layer& layer) {
  if (layer.setIsFrozen(true) != Acad::eOk || layer.objectId() == acdbHostWorkingDatabase()->clayer()) {
    layer.setIsFrozen(false);
    input.say(L"\nCannot freeze layer \"" + layer.getName() + L"\".  It is the CURRENT layer.");
  }
}

Task<> changeState(CommandInput& input, std::wstring option) {
  const std::wstring names = co_await askNames(input, L"to change");
  changeLayers(input, names, [&](Layer& layer) {
    if (option == L"ON") layer.setIsOff(false);
    if (option == L"OFF") layer.setIsOff(true);
    if (option == L"Freeze") freeze(input, layer);
    if (option == L"Thaw") layer.setIsFrozen(false);
    if (option == L"LOck") layer.setIsLocked(true);
    if (option == L"Unlock") layer.setIsLocked(false);
  });
}

Task<> setLayer(CommandInput& input, bool makes) {
  const std::wstring current = currentName();
  std::wstring name = co_await input.text((makes ? L"\nEnter name for new layer (becomes the current layer) <"
                                                 : L"\nEnter layer name to make current <") +
                                          current + L">: ");
  if (name.empty()) name = current;
  const AcDbObjectId layer = makes ? makeLayer(input, name) : findLayer(name);
  if (layer.isNull() && !makes) input.say(L"\nCannot find layer \"" + name + L"\".");
  setCurrent(layer);
}

Task<> layer(CommandInput& input) {
  const wchar_t* const options = L"Make Set New ON OFF Color Colour Ltype Freeze Thaw LOck Unlock";
  while (true) {
    const Answer answer = co_await input.keyword(
        L"\nEnter an option [Make/Set/New/ON/OFF/Color/Ltype/Freeze/Thaw/LOck/Unlock]: ", options);
    if (answer.status != RTKWORD) co_return;
    if (answer.text == L"Make" || answer.text == L"Set") {
      co_await setLayer(input, answer.text == L"Make");
    } else if (answer.text == L"New") {
      co_await makeLayers(input);
    } else if (answer.text == L"Color" || answer.text == L"Colour") {
      co_await colourLayers(input);
    } else if (answer.text == L"Ltype") {
      co_await setLinetypes(input);
    } else {
      co_await changeState(input, answer.text);
    }
  }
}

constexpr Command rows[] = {{L"LAYER", layer}, {L"LA", layer}};

}  // namespace

std::span<const Command> layerCommands() { return rows; }

}  // namespace host
