#include "platform/com/com_error.h"

#include <cstdio>

#include "platform/com/automation.h"
#include "platform/text/utf.h"

ComError::ComError(HRESULT result, const IID& iid) : result_(result), iid_(iid) {
  wchar_t name[40];
  StringFromGUID2(iid, name, 40);
  char code[16];
  std::snprintf(code, sizeof code, "%08X", static_cast<unsigned>(result));
  text_ = std::string("COM error 0x") + code + " from interface " + toUtf8(name);
}

void throwComError(HRESULT result, const IID& iid) { throw ComError(result, iid); }
