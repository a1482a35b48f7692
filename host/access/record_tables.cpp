#include "host/access/record_tables.h"

#include "host/rx/registry.h"
#include "platform/text/letters.h"

namespace host {

AcDbObjectId tableOfRecord(const AcDbDatabase& drawing, const AcRxClass& recordClass) {
  constexpr std::wstring_view suffix = L"Record";
  std::wstring name = recordClass.name();
  if (!name.ends_with(suffix)) return {};
  name.erase(name.size() - suffix.size());
  const AcRxClass* const table = findClass(name);
  return table ? drawing.tableId(table) : AcDbObjectId{};
}

AcDbObjectId tableNamed(const AcDbDatabase& drawing, const std::wstring& name) {
  std::wstring type = upperCased(name);
  if (type == L"BLOCK") type = L"BLOCK_RECORD";
  const AcRxClass* const record = findClassByDxfName(type);
  return record ? tableOfRecord(drawing, *record) : AcDbObjectId{};
}

}  // namespace host
