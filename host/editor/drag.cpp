#include "host/editor/drag.h"

#include <cmath>
#include <cstdio>

#include "brx/db_database.h"
#include "brx/editor_input.h"
#include "host/access/coordinate_systems.h"
#include "host/documents/documents.h"
#include "host/documents/variables.h"
#include "host/editor/acquisition.h"
#include "host/editor/interpretation.h"
#include "host/editor/user_input.h"
#include "host/root/host.h"
#include "host/view/recorder.h"

namespace host {
namespace {

using Status = AcEdJig::DragStatus;

constexpr size_t mostRecords = 64;

bool orthoIsOn() {
  const auto value = getVariable(L"ORTHOMODE");
  const int* const number = value ? std::get_if<int>(&*value) : nullptr;
  return number && *number != 0;
}

/// The nearer of the two lines through the base along the axes.
AcGePoint3d boundByOrtho(const AcGePoint3d& point, const AcGePoint3d& base) {
  const AcGeVector3d way = point - base;
  return std::abs(way.x) >= std::abs(way.y) ? AcGePoint3d{point.x, base.y, point.z}
                                            : AcGePoint3d{base.x, point.y, point.z};
}

std::wstring layerName(AcDbObjectId id) {
  const AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForRead, true);
  return layer.object() ? layer->getName() : L"0";
}

std::vector<ImagePart> partsOf(const view::DisplayList& list) {
  std::vector<ImagePart> parts;
  for (const view::Item& item : list.items) {
    const view::Style& style = list.styles[item.style];
    ImagePart part{item.kind, layerName(style.layer), style.colour, {}, {}};
    if (item.kind == view::Item::letters) {
      const view::Letters& letters = list.letters[item.first];
      part.points = {letters.origin}, part.text = letters.letters;
    } else if (item.kind == view::Item::arc) {
      const view::Arc& arc = list.arcs[item.first];
      const auto at = [&](double t) { return arc.centre + arc.u * std::cos(t) + arc.v * std::sin(t); };
      part.points = {arc.centre, at(0), at(arc.sweep)};
    } else {
      const auto first = list.points.begin() + item.first;
      part.points.assign(first, first + item.count);
    }
    parts.push_back(std::move(part));
  }
  return parts;
}

}  // namespace

std::deque<DragRecord>& dragRecords() { return theOne<std::deque<DragRecord>>(); }

Drag::Drag(AcEdJig& jig) : jig_(jig), around_(std::exchange(jig.drag_, this)) {}

Drag::~Drag() { jig_.drag_ = around_; }

Status Drag::run() {
  const DocumentManager::Held held(documents());
  shown_ = jig_.dispPrompt();
  while (true) {
    asked_ = false;
    const Status sampled = jig_.sampler();
    // A sampler that asks for nothing would run for ever.
    if (!asked_) end_ = sampled == AcEdJig::kNoChange ? AcEdJig::kNormal : sampled;
    if (end_ && *end_ != AcEdJig::kNormal) break;
    const bool endedByJig = sampled != AcEdJig::kNormal && sampled != AcEdJig::kNoChange;
    if (endedByJig) {
      end_ = sampled;
      break;
    }
    ++samples_;
    bool changed = images_ == 0;
    if (sampled == AcEdJig::kNormal) ++updates_, changed = jig_.update() || changed;
    if (changed) draw();
    if (end_) break;
  }
  log();
  return *end_;
}

Request Drag::requestFor(Wanted wanted, const AcGePoint3d* base) const {
  Request request{wanted, shown_, first_, {0, KeywordList(jig_.keywordList())}};
  if (base) request.base = userSystem().inverse() * *base;
  request.followsCursor = true;
  request.ortho = (jig_.userInputControls() & AcEdJig::kGovernedByOrthoMode) != 0 && orthoIsOn();
  request.rubberBand = jig_.specialCursorType() == AcEdJig::kRubberBand;
  return request;
}

Status Drag::acquire(Wanted wanted, const AcGePoint3d* base, Answer& answer) {
  asked_ = true;
  if (end_) return *end_;
  UserInput& input = userInput();
  while (true) {
    Request request = requestFor(wanted, base);
    if (!std::exchange(prompted_, true)) input.prompt(shown_);
    InputItem item = input.take(request);
    const Moved* const moved = std::get_if<Moved>(&item);
    const bool accepted = !moved;
    if (moved) item = AcGePoint3d(moved->to);
    if (auto* const point = std::get_if<AcGePoint3d>(&item); point && request.ortho && request.base) {
      *point = boundByOrtho(*point, *request.base);
    }
    const auto meaning = interpret(request, item, CoordinateRules::current());
    if (const auto* given = std::get_if<Answer>(&meaning)) return take(*given, accepted, answer);
    if (!accepted) continue;
    prompted_ = false;
    if (const auto* refusal = std::get_if<Refusal>(&meaning)) {
      input.say(L"\n" + refusal->message);
    } else {
      first_ = std::get<FirstPoint>(meaning).point;
      shown_ = L"\nSpecify second point: ";
    }
  }
}

Status Drag::take(const Answer& given, bool accepted, Answer& answer) {
  switch (given.status) {
    case RTNORM:
      break;
    case RTNONE:
      return *(end_ = AcEdJig::kNull);
    case RTKWORD:
      return *(end_ = static_cast<Status>(given.integer));
    default:
      return *(end_ = AcEdJig::kCancel);
  }
  answer = given;
  if (accepted) end_ = AcEdJig::kNormal;
  if (accepted && given.pointGiven) keepLastPoint(given.point);
  if (given.pointGiven) answer.point = userSystem() * given.point;
  return AcEdJig::kNormal;
}

void Drag::draw() {
  ++images_;
  AcDbEntity* const shown = jig_.entity();
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  if (!shown || !drawing) return;
  view::RecordOptions options;
  options.dragging = true;
  image_ = view::record(*drawing, *shown, options);
}

void Drag::log() const {
  auto& records = dragRecords();
  if (records.size() == mostRecords) records.pop_front();
  records.push_back({jig_.dispPrompt(), samples_, updates_, images_, partsOf(image_)});
}

}  // namespace host

namespace {

AcEdJig::DragStatus acquire(AcEdJig& jig, host::Wanted wanted, const AcGePoint3d* base,
                            host::Answer& answer) {
  host::Drag* const drag = host::Drag::of(jig);
  return drag ? drag->acquire(wanted, base, answer) : AcEdJig::kCancel;
}

AcEdJig::DragStatus acquireReal(AcEdJig& jig, host::Wanted wanted, const AcGePoint3d* base, double& value) {
  host::Answer answer;
  const AcEdJig::DragStatus status = acquire(jig, wanted, base, answer);
  if (status == AcEdJig::kNormal && answer.given()) value = answer.real;
  return status;
}

AcEdJig::DragStatus acquirePlace(AcEdJig& jig, const AcGePoint3d* base, AcGePoint3d& point) {
  host::Answer answer;
  const AcEdJig::DragStatus status = acquire(jig, host::Wanted::point, base, answer);
  if (status == AcEdJig::kNormal && answer.given()) point = answer.point;
  return status;
}

}  // namespace

AcEdJig::DragStatus AcEdJig::drag() { return host::Drag(*this).run(); }

AcEdJig::DragStatus AcEdJig::acquirePoint(AcGePoint3d& point) { return acquirePlace(*this, nullptr, point); }
AcEdJig::DragStatus AcEdJig::acquirePoint(AcGePoint3d& point, const AcGePoint3d& base) {
  return acquirePlace(*this, &base, point);
}
AcEdJig::DragStatus AcEdJig::acquireAngle(double& angle) {
  return acquireReal(*this, host::Wanted::orientation, nullptr, angle);
}
AcEdJig::DragStatus AcEdJig::acquireAngle(double& angle, const AcGePoint3d& base) {
  return acquireReal(*this, host::Wanted::orientation, &base, angle);
}
AcEdJig::DragStatus AcEdJig::acquireDist(double& distance) {
  return acquireReal(*this, host::Wanted::distance, nullptr, distance);
}
AcEdJig::DragStatus AcEdJig::acquireDist(double& distance, const AcGePoint3d& base) {
  return acquireReal(*this, host::Wanted::distance, &base, distance);
}
