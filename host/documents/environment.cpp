#include <cwchar>

#include "brx/lisp_calls.h"
#include "host/documents/variables.h"

namespace {

/// Characters that a caller of `acedFindFile` has room for, the NUL included.
constexpr size_t pathCapacity = 1024;

struct ToBuffer {
  resbuf& buffer;

  void operator()(int value) const {
    const bool isShort = value >= INT16_MIN && value <= INT16_MAX;
    buffer.restype = isShort ? RTSHORT : RTLONG;
    if (isShort) {
      buffer.resval.rint = static_cast<int16_t>(value);
    } else {
      buffer.resval.rlong = value;
    }
  }
  void operator()(double value) const {
    buffer.restype = RTREAL;
    buffer.resval.rreal = value;
  }
  void operator()(const std::wstring& value) const {
    buffer.restype = RTSTR;
    acutNewString(value.c_str(), buffer.resval.rstring);
  }
  void operator()(const host::Point& value) const {
    buffer.restype = RT3DPOINT;
    buffer.resval.rpoint[0] = value.x;
    buffer.resval.rpoint[1] = value.y;
    buffer.resval.rpoint[2] = value.z;
  }
};

std::optional<host::VariableValue> fromBuffer(const resbuf& buffer) {
  switch (buffer.restype) {
    case RTSHORT:
      return int{buffer.resval.rint};
    case RTLONG:
      return int{buffer.resval.rlong};
    case RTREAL:
      return buffer.resval.rreal;
    case RTSTR:
      return std::wstring(buffer.resval.rstring ? buffer.resval.rstring : L"");
    case RTPOINT:
      return host::Point{buffer.resval.rpoint[0], buffer.resval.rpoint[1], 0};
    case RT3DPOINT:
      return host::Point{buffer.resval.rpoint[0], buffer.resval.rpoint[1], buffer.resval.rpoint[2]};
    default:
      return std::nullopt;
  }
}

}  // namespace

int acedGetVar(const ACHAR* name, resbuf* result) {
  const auto value = name ? host::getVariable(name) : std::nullopt;
  if (!value || !result) return RTERROR;
  std::visit(ToBuffer{*result}, *value);
  return RTNORM;
}

int acedSetVar(const ACHAR* name, const resbuf* buffer) {
  const auto value = buffer ? fromBuffer(*buffer) : std::nullopt;
  if (!name || !value) return RTERROR;
  return host::setVariable(name, *value) == host::SetVariable::done ? RTNORM : RTERROR;
}

int acedFindFile(const ACHAR* name, ACHAR* result) {
  const std::wstring found = name ? host::findSupportFile(name) : L"";
  if (found.empty() || found.size() >= pathCapacity || !result) return RTERROR;
  std::wmemcpy(result, found.c_str(), found.size() + 1);
  return RTNORM;
}
