#include "host/commands/block_files.h"

#include <filesystem>

#include "brx/db_database.h"
#include "host/documents/variables.h"
#include "platform/text/utf.h"

namespace host {
namespace {

/// The name without folder and ending.
std::wstring blockName(const std::wstring& file) {
  return fromUtf8(std::filesystem::path(toUtf8(file)).stem().string());
}

std::wstring findDrawing(const std::wstring& name) {
  std::wstring found = findSupportFile(name);
  return found.empty() ? findSupportFile(name + L".dwg") : found;
}

}  // namespace

AcDbObjectId findBlock(const std::wstring& name) {
  AcDbObjectId id;
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  AcDbObjectPointer<AcDbBlockTable> table(drawing ? drawing->tableId(AcDbBlockTable::desc())
                                                  : AcDbObjectId());
  if (!table.object() || table->getAt(name.c_str(), id) != Acad::eOk) return {};
  return id;
}

AcDbObjectId findOrLoadBlock(const std::wstring& text, std::wstring& problem) {
  const size_t equals = text.find(L'=');
  const bool named = equals != std::wstring::npos;
  const std::wstring source = named ? text.substr(equals + 1) : text;
  const std::wstring name = named ? text.substr(0, equals) : blockName(text);
  if (!named) {
    if (const AcDbObjectId found = findBlock(text); !found.isNull()) return found;
    if (const AcDbObjectId found = findBlock(name); !found.isNull()) return found;
  }
  const std::wstring file = findDrawing(source);
  if (file.empty()) {
    problem = L"\"" + source + L".dwg\": Can't find file in search path.";
    return {};
  }
  AcDbDatabase drawing(false, false);
  AcDbObjectId block;
  const Acad::ErrorStatus read = drawing.readDwgFile(file.c_str());
  if (read != Acad::eOk || acdbHostWorkingDatabase()->insert(block, name.c_str(), &drawing) != Acad::eOk) {
    problem = L"\"" + file + L"\": can't be read as a block";
    return {};
  }
  return block;
}

}  // namespace host
