#include "zarbo/support/utilities.h"

#include <cmath>

#include "brx/lisp_calls.h"
#include "platform/desktop/desktop.h"
#include "platform/text/letters.h"
#include "zarbo/frame/application_call.h"

namespace {

/// The first row that holds the code decides.
struct GroupRange {
  int first, last, type;
};
constexpr GroupRange groupRanges[] = {
    {0, 9, RTSTR},           {10, 17, RT3DPOINT},  {38, 59, RTREAL},      {60, 79, RTSHORT},
    {90, 99, RTLONG},        {100, 102, RTSTR},    {105, 105, RTSTR},     {110, 112, RTSTR},
    {140, 149, RTREAL},      {170, 179, RTSHORT},  {210, 219, RT3DPOINT}, {270, 299, RTSHORT},
    {300, 309, RTSTR},       {310, 369, RTENAME},  {370, 389, RTSHORT},   {390, 399, RTENAME},
    {400, 409, RTSHORT},     {410, 419, RTSTR},    {1004, 1004, 1004},    {999, 1009, RTSTR},
    {1010, 1013, RT3DPOINT}, {1038, 1059, RTREAL}, {1060, 1070, RTSHORT}, {1071, 1071, RTLONG},
};

}  // namespace

bool equalNoCase(std::wstring_view a, std::wstring_view b) {
  return upperCased(std::wstring(a)) == upperCased(std::wstring(b));
}

int resultTypeOfGroupCode(int groupCode) {
  if (groupCode < 0 || groupCode >= 5000) return groupCode;
  for (const GroupRange& range : groupRanges) {
    if (groupCode >= range.first && groupCode <= range.last) return range.type;
  }
  return RTNONE;
}

std::wstring rtosRound(double value, int mode, int precision) {
  ApplicationCall call(L"rtosRound");
  call.real(value).longInteger(mode).longInteger(precision).invoke();
  return call.textAnswer().value_or(L"");
}

void timerMark(const std::wstring& name, bool start) {
  ApplicationCall(start ? L"clocks-start" : L"clocks-end").text(name).invoke();
}

int echoOff() {
  resbuf value{};
  if (acedGetVar(L"cmdecho", &value) != RTNORM) return 0;
  const int former = value.restype == RTLONG ? value.resval.rlong : value.resval.rint;
  echoRestore(0);
  return former;
}

int echoRestore(int former) {
  resbuf value{};
  value.restype = RTSHORT;
  value.resval.rint = static_cast<int16_t>(former);
  return acedSetVar(L"cmdecho", &value);
}

int fontHeightToLogical(int pointSize, int dotsPerInch) {
  return -static_cast<int>(std::lround(static_cast<double>(pointSize) * dotsPerInch / 72.0));
}

int sendKeyPress(int virtualKey) { return platform::desktop().sendKeyPress(virtualKey); }
