#include "zarbo/drawing/selection_functions.h"

#include "brx/editor_input.h"
#include "brx/ge_point.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/frame/list_builder.h"

namespace {

/// A set of the host's, freed with this.
class SelectedSet {
 public:
  SelectedSet(const ACHAR* mode, const void* first, const void* second, const resbuf* filter)
      : status_(acedSSGet(mode, first, second, filter, name_)) {}
  ~SelectedSet() {
    if (status_ == RTNORM) acedSSFree(name_);
  }
  SelectedSet(const SelectedSet&) = delete;
  SelectedSet& operator=(const SelectedSet&) = delete;

  /// 0 when nothing was selected.
  Adesk::Int32 length() const {
    Adesk::Int32 count = 0;
    return status_ == RTNORM && acedSSLength(name_, &count) == RTNORM ? count : 0;
  }
  bool entityAt(Adesk::Int32 index, ads_name entity) const {
    return acedSSName(name_, index, entity) == RTNORM;
  }

 private:
  ads_name name_ = {};
  int status_;
};

void returnEntities(const SelectedSet& set) {
  const Adesk::Int32 count = set.length();
  if (count == 0) return;
  LispList list;
  beginList(list);
  ads_name entity;
  for (Adesk::Int32 i = 0; i < count; ++i) {
    if (set.entityAt(i, entity)) appendValue(list, LispAtom::entity(entity));
  }
  endListAndReturn(list);
}

/// A place for a text; any other value in it is stepped over.
bool takeText(ArgCursor& cursor, std::wstring& text) {
  if (getString(cursor, text)) return true;
  skipItem(cursor);
  return false;
}

/// ERRNO of a pick that hit nothing.
constexpr int pickMissed = 7;

bool lastPickMissed() {
  resbuf errorNumber{};
  if (acedGetVar(L"ERRNO", &errorNumber) != RTNORM) return false;
  return errorNumber.restype == RTSHORT && errorNumber.resval.rint == pickMissed;
}

void returnPick(const ads_name entity, const ads_point point) {
  LispList list;
  beginList(list);
  appendValue(list, LispAtom::entity(entity));
  appendValue(list, LispAtom::point(point[0], point[1], point[2]));
  endListAndReturn(list);
}

}  // namespace

int ssgetPk() {
  acedRetNil();
  LispArgs args;
  std::wstring mode, addPrompt, removePrompt, keywords;
  if (takeText(args.cursor, addPrompt)) mode += L":$";
  takeText(args.cursor, removePrompt);
  if (takeText(args.cursor, keywords)) mode += L":K";
  const ACHAR* const prompts[] = {addPrompt.c_str(), removePrompt.c_str()};
  const bool hasFilter = args.cursor && args.cursor->restype != RTNIL;
  returnEntities(SelectedSet(mode.c_str(), addPrompt.empty() ? nullptr : prompts,
                             keywords.empty() ? nullptr : keywords.c_str(),
                             hasFilter ? args.cursor : nullptr));
  return done;
}

int ssgetCp() {
  acedRetNil();
  const LispArgs args;
  returnEntities(SelectedSet(L"_CP", args.first(), nullptr, nullptr));
  return done;
}

int ssgetC() {
  acedRetNil();
  LispArgs args;
  double first[3], second[3];
  if (!getPoint3d(args.cursor, first) || !getPoint3d(args.cursor, second)) return wrongType;
  returnEntities(SelectedSet(L"_C", first, second, args.cursor));
  return done;
}

int kvEntsel() {
  acedRetNil();
  LispArgs args;
  std::wstring prompt, keywords;
  if (!getString(args.cursor, prompt)) return wrongType;
  getString(args.cursor, keywords);
  if (!keywords.empty()) acedInitGet(0, keywords.c_str());
  ads_name entity;
  ads_point point;
  ACHAR keyword[132];
  switch (acedEntSel(prompt.c_str(), entity, point)) {
    case RTNORM:
      returnPick(entity, point);
      break;
    case RTCAN:
      break;
    case RTKWORD:
      if (acedGetInput(keyword) == RTNORM) acedRetStr(keyword);
      break;
    default:
      if (lastPickMissed()) acedRetT();
  }
  return done;
}
