#include "host/filing/known_codes.h"

#include <algorithm>

#include "platform/text/utf.h"

namespace host {

/// Notes the codes that an object writes.
class KnownCodes::Probe : public AcDbDxfFiler {
 public:
  Probe(Sections& sections, AcDbDatabase* database) : sections_(sections), database_(database) {}
  Acad::ErrorStatus filerStatus() const override { return status_; }
  void setError(Acad::ErrorStatus status) override { status_ = status; }
  AcDbDatabase* database() const override { return database_; }
  Acad::ErrorStatus readItem(resbuf*) override { return Acad::eNotApplicable; }
  Acad::ErrorStatus pushBackItem() override { return Acad::eNotApplicable; }
  bool atSubclassData(const ACHAR*) override { return false; }
  Acad::ErrorStatus writeItem(const resbuf& item) override {
    if (item.restype == 100) {
      at_ = find(toUtf8(sectionName(item.resval.rstring)));
    } else if (item.restype >= 0 && item.restype <= lastGroupCode) {
      if (at_ == none) at_ = find("");
      sections_[at_].codes.set(static_cast<size_t>(item.restype));
    }
    return status_;
  }

 private:
  static constexpr size_t none = static_cast<size_t>(-1);
  size_t find(const std::string& name) {
    const auto found = std::find_if(sections_.begin(), sections_.end(),
                                    [&](const Section& each) { return each.name == name; });
    const auto index = static_cast<size_t>(found - sections_.begin());
    if (found == sections_.end()) sections_.push_back({name, {}});
    return index;
  }

  Sections& sections_;
  AcDbDatabase* database_;
  size_t at_ = none;
  Acad::ErrorStatus status_ = Acad::eOk;
};

namespace {

bool isMark(const DxfGroup& group) { return group.code == 100 || group.code == 101; }

/// The second and third coordinates go with the first.
bool isLaterCoordinate(const std::vector<DxfGroup>& groups, size_t index) {
  const int code = groups[index].code;
  for (size_t back = 1; back <= 2 && back <= index; ++back) {
    const int first = groups[index - back].code;
    if (startsPoint(first) && code == first + 10 * static_cast<int>(back)) return true;
  }
  return false;
}

/// Subclass of a group; the text of an embedded object's mark is no subclass that a class could know.
std::string_view sectionOf(const DxfGroup& mark) {
  return mark.code == 100 ? mark.raw : std::string_view("\x01");
}

constexpr std::string_view anySection("\x02");

}  // namespace

bool KnownCodes::knows(const Sections& known, std::string_view section, int code) {
  return std::any_of(known.begin(), known.end(), [&](const Section& each) {
    return (section == anySection || each.name == section) &&
           (code == 100 || each.codes.test(static_cast<size_t>(code)));
  });
}

bool KnownCodes::knowsAll(const Sections& known, const DxfRecord& record) {
  std::string_view section = anySection;
  for (size_t i = 0; i < record.body.size(); ++i) {
    const DxfGroup& group = record.body[i];
    if (isMark(group)) section = sectionOf(group);
    const int code = isMark(group) ? 100 : group.code;
    if (!knows(known, section, code) && !isLaterCoordinate(record.body, i)) return false;
  }
  return true;
}

void KnownCodes::keepUnknown(const AcDbObject& object, const DxfRecord& record, DxfInFiler& filer,
                             GroupList& kept) {
  Sections& known = classes_[object.isA()];
  if (knowsAll(known, record)) return;
  Probe probe(known, filer.database());
  object.dxfOutFields(&probe);
  if (knowsAll(known, record)) return;
  std::string_view section = anySection;
  const DxfGroup* mark = nullptr;  // of the section at hand, until something of it is kept
  const auto keep = [&](size_t index) {
    resbuf item{};
    const size_t used = filer.takeItem(record.body, index, true, item);
    kept.append(item);
    return used;
  };
  for (size_t i = 0; i < record.body.size();) {
    const DxfGroup& group = record.body[i];
    size_t used = 1;
    if (isMark(group)) {
      section = sectionOf(group);
      mark = &group;
    }
    if (!knows(known, section, isMark(group) ? 100 : group.code) && !isLaterCoordinate(record.body, i)) {
      if (mark && mark != &group) keep(static_cast<size_t>(mark - record.body.data()));
      mark = nullptr;
      used = keep(i);
    }
    i += used;
  }
}

}  // namespace host
