#include "host/filing/dxf_classes.h"

#include <map>

#include "host/filing/dxf_out_filer.h"
#include "host/filing/object_walk.h"

namespace host {
namespace {

struct CustomClass {
  const AcRxClass* type = nullptr;
  Adesk::Int64 count = 0;
};

/// Classes of modules have the name of an application. In the order of their names.
std::map<std::wstring, CustomClass> customClasses(const AcDbDatabase& drawing) {
  std::map<std::wstring, CustomClass> found;
  const AcRxClass* former = nullptr;
  bool isCustom = false;
  for (const AcDbStub& stub : drawing.imp().stubs) {
    if (!stub.object || stub.erased) continue;
    const AcRxClass* const own = stub.object->isA();
    if (own != former) isCustom = own->appName() && own->dxfName();
    former = own;
    if (!isCustom) continue;
    CustomClass& entry = found[own->name()];
    entry.type = own, ++entry.count;
  }
  return found;
}

}  // namespace

void writeDxfClasses(const AcDbDatabase& drawing, DxfSink& sink) {
  sink.word(0, "SECTION"), sink.word(2, "CLASSES");
  putGroups(drawing.imp().kept.classes.head(), sink);
  for (const auto& [name, entry] : customClasses(drawing)) {
    const AcRxClass* const type = entry.type;
    sink.word(0, "CLASS");
    sink.text(1, type->dxfName());
    sink.text(2, name);
    sink.text(3, type->appName());
    sink.integer(90, type->proxyFlags());
    sink.integer(91, entry.count);
    sink.integer(280, 0);
    sink.integer(281, type->isDerivedFrom(AcDbEntity::desc()));
  }
  sink.word(0, "ENDSEC");
}

}  // namespace host
