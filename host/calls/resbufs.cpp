#include <cstdarg>
#include <cstring>
#include <cwchar>
#include <memory>
#include <vector>

#include "brx/lisp_calls.h"
#include "host/database/group_codes.h"

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool pooled = false;  // the sanitizer sees each buffer's life
#else
constexpr bool pooled = true;
#endif

/// Free buffers, linked by `rbnext`. Buffers come and go with every LISP call, all on one thread.
class Pool {
 public:
  resbuf* take() {
    if (!pooled) return new resbuf;
    if (!free_) grow();
    resbuf* const taken = free_;
    free_ = taken->rbnext;
    return taken;
  }
  void give(resbuf* buffer) {
    if (!pooled) {
      delete buffer;
      return;
    }
    buffer->rbnext = free_;
    free_ = buffer;
  }

 private:
  static constexpr size_t blockLength = 256;
  void grow() {
    blocks_.push_back(std::make_unique<resbuf[]>(blockLength));
    for (size_t i = 0; i < blockLength; ++i) give(&blocks_.back()[i]);
  }
  std::vector<std::unique_ptr<resbuf[]>> blocks_;
  resbuf* free_ = nullptr;
};

Pool& pool() {
  static Pool* const instance = new Pool;  // outlives the statics of unloading modules
  return *instance;
}

using host::GroupKind;
using host::groupKind;

bool isTextCode(int type) {
  if (type >= RTNONE) return type == RTSTR || type == RTDXF0;
  return groupKind(type) == GroupKind::text;
}
bool isBinaryCode(int type) { return groupKind(type) == GroupKind::binary; }
bool isPointCode(int type) {
  return type == RTPOINT || type == RT3DPOINT || groupKind(type) == GroupKind::point;
}
bool isRealCode(int type) {
  return type == RTREAL || type == RTANG || type == RTORINT || groupKind(type) == GroupKind::real;
}
bool isLongCode(int type) { return type == RTLONG || groupKind(type) == GroupKind::int32; }
bool isNameCode(int type) {
  return type == RTENAME || type == RTPICKS || groupKind(type) == GroupKind::handle;
}

bool standsAlone(int type) {
  return type == RTLB || type == RTLE || type == RTDOTE || type == RTNIL || type == RTT || type == RTVOID;
}

void readValue(resbuf& buffer, va_list& values) {
  const int type = buffer.restype;
  if (standsAlone(type)) return;
  if (isTextCode(type)) {
    acutNewString(va_arg(values, const ACHAR*), buffer.resval.rstring);
  } else if (isPointCode(type)) {
    std::memcpy(buffer.resval.rpoint, va_arg(values, const ads_real*), sizeof(ads_point));
  } else if (isRealCode(type)) {
    buffer.resval.rreal = va_arg(values, ads_real);
  } else if (isLongCode(type)) {
    buffer.resval.rlong = va_arg(values, int);
  } else if (isBinaryCode(type)) {
    const ads_binary& given = *va_arg(values, const ads_binary*);
    buffer.resval.rbinary = {given.clen, new char[static_cast<size_t>(given.clen) + 1]};
    std::memcpy(buffer.resval.rbinary.buf, given.buf, static_cast<size_t>(given.clen));
  } else if (isNameCode(type)) {
    std::memcpy(buffer.resval.rlname, va_arg(values, const int64_t*), sizeof(ads_name));
  } else {
    buffer.resval.rint = static_cast<int16_t>(va_arg(values, int));
  }
}

}  // namespace

resbuf* acutNewRb(int type) {
  resbuf* const made = pool().take();
  *made = {};
  made->restype = static_cast<int16_t>(type);
  return made;
}

int acutRelRb(resbuf* list) {
  if (!list) return RTERROR;
  while (list) {
    resbuf* const next = list->rbnext;
    if (isTextCode(list->restype)) acutDelString(list->resval.rstring);
    if (isBinaryCode(list->restype)) delete[] list->resval.rbinary.buf;
    pool().give(list);
    list = next;
  }
  return RTNORM;
}

int acutNewString(const ACHAR* source, ACHAR*& copy) {
  const size_t length = source ? std::wcslen(source) : 0;
  copy = new ACHAR[length + 1];
  if (length) std::wmemcpy(copy, source, length);
  copy[length] = 0;
  return RTNORM;
}

void acutDelString(ACHAR*& text) {
  delete[] text;
  text = nullptr;
}

resbuf* acutBuildList(int type, ...) {
  resbuf* head = nullptr;
  resbuf** end = &head;
  va_list values;
  va_start(values, type);
  while (type != RTNONE && !(type == 0 && head)) {
    *end = acutNewRb(type);
    readValue(**end, values);
    end = &(*end)->rbnext;
    type = va_arg(values, int);
  }
  va_end(values);
  return head;
}
