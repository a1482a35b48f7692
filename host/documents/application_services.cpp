#include <cwchar>

#include "brx/db_services.h"
#include "host/documents/variables.h"

namespace {

class Services final : public AcDbHostApplicationServices {
 public:
  AcDbDatabase* workingDatabase() const override { return acdbHostWorkingDatabase(); }
  void setWorkingDatabase(AcDbDatabase* database) override { acdbSetHostWorkingDatabase(database); }
  Acad::ErrorStatus findFile(ACHAR* path, int length, const ACHAR* name, AcDbDatabase*,
                             FindFileHint) override {
    if (!path || length <= 0 || !name) return Acad::eInvalidInput;
    const std::wstring found = host::findSupportFile(name);
    if (found.empty()) return Acad::eFileNotFound;
    if (found.size() >= static_cast<size_t>(length)) return Acad::eBufferTooSmall;
    std::wmemcpy(path, found.c_str(), found.size() + 1);
    return Acad::eOk;
  }
};

}  // namespace

AcDbHostApplicationServices* acdbHostApplicationServices() {
  static Services services;
  return &services;
}
