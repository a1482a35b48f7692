#include "brx/db_calls.h"
#include "brx/editor_input.h"
#include "brx/lisp_calls.h"
#include "host/bridge/values.h"
#include "host/documents/variables.h"
#include "host/editor/entity_pick.h"
#include "host/editor/selection_request.h"

namespace {

using host::Pick;
using host::SelectionRequest;

void givePoint(const AcGePoint3d& from, ads_point to) {
  if (to) to[0] = from.x, to[1] = from.y, to[2] = from.z;
}

std::wstring textOr(const ACHAR* text, const wchar_t* otherwise) { return text ? text : otherwise; }

/// Points of a chain; other buffers, such as list marks, are stepped over.
std::vector<AcGePoint3d> pointsOf(const resbuf* chain) {
  std::vector<AcGePoint3d> points;
  for (; chain; chain = chain->rbnext) {
    if (chain->restype == RTPOINT || chain->restype == RT3DPOINT) {
      points.push_back(asPnt3d(chain->resval.rpoint));
    }
  }
  return points;
}

/// What the two arguments of `acedSSGet` are depends on the mode.
void takeArguments(SelectionRequest& request, const void* first, const void* second) {
  const auto corner = [](const void* point) { return asPnt3d(static_cast<const ads_real*>(point)); };
  if (request.mode.needsPoints()) {
    request.points = pointsOf(static_cast<const resbuf*>(first));
  } else if (request.mode.needsCorners()) {
    if (first && second) request.points = {corner(first), corner(second)};
  } else if (request.mode.prompts && first) {
    const auto* const prompts = static_cast<const ACHAR* const*>(first);
    request.wish.addPrompt = textOr(prompts[0], L"");
    request.wish.removePrompt = textOr(prompts[1], L"");
  } else if (first && !request.mode.keywords) {
    request.points = {corner(first)};
  }
  if (request.mode.keywords && second) {
    request.wish.keywords = host::KeywordList(static_cast<const ACHAR*>(second));
  }
}

/// A code with a point in the plane comes through buffers as a point in space.
lisp::Value withCode(const lisp::Value& pair) {
  const bool isPoint = pair.isCons() && lisp::car(pair).isReal();
  return isPoint ? lisp::cons(static_cast<int32_t>(lisp::car(pair).real()), lisp::cdr(pair)) : pair;
}

/// A program's own groups, or the list of pairs that LISP has handed to it. Nil is no filter.
host::EntityFilter filterOf(const resbuf* groups) {
  if (groups && groups->restype == RTNIL) groups = nullptr;
  if (!groups || groups->restype != RTLB) return host::EntityFilter(groups);
  const lisp::Value list = host::takeValue(groups, {});
  lisp::ListBuilder pairs;
  for (const lisp::Value& each : lisp::Elements(list)) pairs.add(withCode(each));
  return host::EntityFilter(pairs.take());
}

host::SelectionSet* setNamed(const ads_name set) {
  return set ? host::selectionSets().find(set[0]) : nullptr;
}

int giveNewSet(host::SelectionSet set, ads_name name) {
  name[0] = host::selectionSets().add(std::move(set));
  name[1] = 0;
  return RTNORM;
}

AcDbObjectId idNamed(const ads_name entity) {
  AcDbObjectId id;
  if (entity) acdbGetObjectId(id, entity);
  return id;
}

}  // namespace

int acedEntSel(const ACHAR* prompt, ads_name entity, ads_point point) {
  if (!entity) return RTERROR;
  const Pick pick = host::pickEntity(textOr(prompt, L"\nSelect object: "));
  if (pick.status != RTNORM) return pick.status;
  acdbGetAdsName(entity, pick.hit.entity);
  givePoint(pick.point, point);
  return RTNORM;
}

int acedNEntSelP(const ACHAR* prompt, ads_name entity, ads_point point, ads_real matrix[4][4],
                 resbuf** chain) {
  if (!entity) return RTERROR;
  if (chain) *chain = nullptr;
  const Pick pick = host::pickEntity(textOr(prompt, L"\nSelect object: "));
  if (pick.status != RTNORM) return pick.status;
  const host::OutlineSource& innermost = pick.hit.innermost;
  acdbGetAdsName(entity, innermost.entity);
  givePoint(pick.point, point);
  for (unsigned row = 0; matrix && row < 4; ++row) {
    for (unsigned column = 0; column < 4; ++column) matrix[row][column] = innermost.toWorld(row, column);
  }
  for (const AcDbObjectId& reference : innermost.references) {
    if (!chain) break;
    *chain = acutNewRb(RTENAME);
    acdbGetAdsName((*chain)->resval.rlname, reference);
    chain = &(*chain)->rbnext;
  }
  return RTNORM;
}

int acedSSGet(const ACHAR* mode, const void* first, const void* second, const resbuf* filter, ads_name set) {
  const auto parsed = host::parseSelectionMode(mode ? mode : L"");
  if (!set || !parsed) return RTREJ;
  try {
    SelectionRequest request{*parsed, host::wishOf(*parsed), {}};
    takeArguments(request, first, second);
    host::EntityFilter parsedFilter = filterOf(filter);
    request.wish.filter = &parsedFilter;
    host::Selected selected = host::select(request);
    return selected.status == RTNORM ? giveNewSet(std::move(selected.set), set) : selected.status;
  } catch (const host::FilterError& problem) {
    host::setVariable(L"ERRNO", problem.number);
    return RTREJ;
  }
}

int acedSSFree(const ads_name set) { return set && host::selectionSets().free(set[0]) ? RTNORM : RTERROR; }

int acedSSLength(const ads_name set, Adesk::Int32* length) {
  const host::SelectionSet* const found = setNamed(set);
  if (!found || !length) return RTERROR;
  *length = static_cast<Adesk::Int32>(found->size());
  return RTNORM;
}

int acedSSName(const ads_name set, Adesk::Int32 index, ads_name entity) {
  const host::SelectionSet* const found = setNamed(set);
  const bool isIn = found && index >= 0 && static_cast<size_t>(index) < found->size();
  if (!isIn || !entity) return RTERROR;
  return acdbGetAdsName(entity, found->at(static_cast<size_t>(index))) == Acad::eOk ? RTNORM : RTERROR;
}

int acedSSAdd(const ads_name entity, const ads_name set, ads_name result) {
  host::SelectionSet* const found = setNamed(set);
  const AcDbObjectId id = idNamed(entity);
  if (!result || (set && !found) || (entity && !id.isValid())) return RTERROR;
  if (found) {
    if (!id.isNull()) found->add(id);
    ads_name_set(set, result);
    return RTNORM;
  }
  host::SelectionSet made;
  if (!id.isNull()) made.add(id);
  return giveNewSet(std::move(made), result);
}

int acedSSDel(const ads_name entity, const ads_name set) {
  host::SelectionSet* const found = setNamed(set);
  return found && found->remove(idNamed(entity)) ? RTNORM : RTERROR;
}

int acedSSMemb(const ads_name entity, const ads_name set) {
  const host::SelectionSet* const found = setNamed(set);
  return found && found->contains(idNamed(entity)) ? RTNORM : RTERROR;
}
