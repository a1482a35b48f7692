#include <algorithm>
#include <cwchar>

#include "brx/editor_input.h"
#include "host/editor/acquisition.h"

namespace {

using host::Answer;
using host::Request;
using host::Wanted;

std::optional<AcGePoint3d> baseOf(const ads_point base) {
  return base ? std::optional(asPnt3d(base)) : std::nullopt;
}

Request requestOf(Wanted wanted, const ads_point base, const ACHAR* prompt) {
  return {wanted, prompt ? prompt : L"", baseOf(base), host::takePromptRules()};
}

int givePoint(const Answer& answer, ads_point result) {
  if (answer.given()) result[0] = answer.point.x, result[1] = answer.point.y, result[2] = answer.point.z;
  return answer.status;
}

int giveReal(Request request, ads_real* result) {
  if (!result) return RTERROR;
  const Answer answer = host::ask(std::move(request));
  if (answer.given()) *result = answer.real;
  return answer.status;
}

int giveText(const std::wstring& text, ACHAR* result, size_t size) {
  if (!result || size == 0) return RTERROR;
  const size_t length = std::min(text.size(), size - 1);
  std::wmemcpy(result, text.c_str(), length);
  result[length] = 0;
  return RTNORM;
}

}  // namespace

int acedInitGet(int bits, const ACHAR* keywords) {
  host::setPromptRules({bits, host::KeywordList(keywords ? keywords : L"")});
  return RTNORM;
}

int acedGetInput(ACHAR* text, size_t size) { return giveText(host::lastKeyword(), text, size); }

int acedGetPoint(const ads_point base, const ACHAR* prompt, ads_point result) {
  if (!result) return RTERROR;
  return givePoint(host::ask(requestOf(Wanted::point, base, prompt)), result);
}

int acedGetCorner(const ads_point base, const ACHAR* prompt, ads_point result) {
  if (!base || !result) return RTERROR;
  Request request = requestOf(Wanted::point, base, prompt);
  request.rubberBox = true;
  const int status = givePoint(host::ask(std::move(request)), result);
  if (status == RTNORM) result[2] = base[2];
  return status;
}

int acedGetDist(const ads_point base, const ACHAR* prompt, ads_real* result) {
  return giveReal(requestOf(Wanted::distance, base, prompt), result);
}
int acedGetAngle(const ads_point base, const ACHAR* prompt, ads_real* result) {
  return giveReal(requestOf(Wanted::angle, base, prompt), result);
}
int acedGetOrient(const ads_point base, const ACHAR* prompt, ads_real* result) {
  return giveReal(requestOf(Wanted::orientation, base, prompt), result);
}
int acedGetReal(const ACHAR* prompt, ads_real* result) {
  return giveReal(requestOf(Wanted::real, nullptr, prompt), result);
}

int acedGetInt(const ACHAR* prompt, int* result) {
  if (!result) return RTERROR;
  const Answer answer = host::ask(requestOf(Wanted::integer, nullptr, prompt));
  if (answer.given()) *result = answer.integer;
  return answer.status;
}

int acedGetString(bool blanks, const ACHAR* prompt, ACHAR* result, size_t size) {
  if (!result || size == 0) return RTERROR;
  host::takePromptRules();
  const Answer answer = host::ask({blanks ? Wanted::text : Wanted::word, prompt ? prompt : L"", {}, {}});
  return answer.given() ? giveText(answer.text, result, size) : answer.status;
}

int acedGetKword(const ACHAR* prompt, ACHAR* result, size_t size) {
  if (!result || size == 0) return RTERROR;
  Request request = requestOf(Wanted::keyword, nullptr, prompt);
  if (request.rules.keywords.empty() && (request.rules.bits & RSG_OTHER) == 0) return RTERROR;
  const Answer answer = host::ask(std::move(request));
  // What elsewhere is an answer beside the value is the value here.
  return answer.status == RTKWORD ? giveText(answer.text, result, size) : answer.status;
}
