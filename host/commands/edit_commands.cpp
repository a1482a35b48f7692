#include <cmath>

#include "brx/db_dictionary.h"
#include "host/commands/commands.h"
#include "host/commands/drawing_edit.h"

namespace host {
namespace {

constexpr int noNull = 1, noZero = 2, noNegative = 4;
constexpr double tooSmallToDivide = 1e-12;

Task<> erase(CommandInput& input) {
  const Entities chosen = co_await input.objects();
  eraseAll(chosen);
}

Task<> select(CommandInput& input) {
  // Choosing already keeps the set for "Previous".
  const Entities chosen = co_await input.objects();
  (void)chosen;
}

/// From a base point to a second one; Enter takes the base point itself as the displacement.
Task<std::optional<AcGeVector3d>> askDisplacement(CommandInput& input, AcGePoint3d base) {
  const Answer second =
      co_await input.point(L"\nSpecify second point or <use first point as displacement>: ", base);
  co_return second.given() ? second.point - base : base.asVector();
}

Task<> move(CommandInput& input) {
  const Entities chosen = co_await input.objects();
  if (chosen.empty()) co_return;
  const Answer base = co_await input.point(L"\nSpecify base point or displacement: ", {}, {}, noNull);
  const auto by = co_await askDisplacement(input, base.point);
  transformAll(input, chosen, AcGeMatrix3d::translation(*by));
}

/// Copies go on until Enter.
Task<> copy(CommandInput& input) {
  const Entities chosen = co_await input.objects();
  if (chosen.empty()) co_return;
  const Answer base = co_await input.point(L"\nSpecify base point or displacement: ", {}, {}, noNull);
  const auto by = co_await askDisplacement(input, base.point);
  std::vector<Entities> made;
  const auto copyBy = [&](const AcGeVector3d& way) {
    made.push_back(transformCopies(input, chosen, AcGeMatrix3d::translation(way)));
  };
  copyBy(*by);
  while (true) {
    const Answer next =
        co_await input.point(L"\nSpecify second point or [Exit/Undo] <Exit>: ", base.point, L"Exit Undo");
    if (next.given()) {
      copyBy(next.point - base.point);
    } else if (next.status != RTKWORD || next.text != L"Undo") {
      co_return;
    } else if (!made.empty()) {
      eraseAll(made.back());
      made.pop_back();
    }
  }
}

void transform(CommandInput& input, const Entities& chosen, const AcGeMatrix3d& matrix, bool copies) {
  if (copies) {
    transformCopies(input, chosen, matrix);
  } else {
    transformAll(input, chosen, matrix);
  }
}

struct Turn {
  double angle = 0;
  bool copies = false;
};

Task<Turn> askTurn(CommandInput& input, AcGePoint3d base) {
  Turn turn;
  while (true) {
    const Answer answer = co_await input.number(
        Wanted::angle, L"\nSpecify rotation angle or [Copy/Reference] <0>: ", base, L"Copy Reference");
    if (answer.status != RTKWORD) {
      turn.angle = answer.given() ? answer.real : 0;
      co_return turn;
    }
    if (answer.text == L"Copy") {
      turn.copies = true;
      continue;
    }
    const Answer reference = co_await input.number(Wanted::angle, L"\nSpecify the reference angle <0>: ");
    const Answer wanted =
        co_await input.number(Wanted::angle, L"\nSpecify the new angle: ", base, {}, noNull);
    turn.angle = wanted.real - (reference.given() ? reference.real : 0);
    co_return turn;
  }
}

Task<> rotate(CommandInput& input) {
  const Entities chosen = co_await input.objects();
  if (chosen.empty()) co_return;
  const Answer base = co_await input.point(L"\nSpecify base point: ", {}, {}, noNull);
  const Turn turn = co_await askTurn(input, base.point);
  transform(input, chosen, AcGeMatrix3d::rotation(turn.angle, AcGeVector3d::kZAxis, base.point), turn.copies);
}

struct Growth {
  double factor = 1;
  bool copies = false;
};

Task<Growth> askGrowth(CommandInput& input, AcGePoint3d base) {
  Growth growth;
  const int positive = noNull | noZero | noNegative;
  while (true) {
    const Answer answer = co_await input.number(
        Wanted::distance, L"\nSpecify scale factor or [Copy/Reference]: ", base, L"Copy Reference", positive);
    if (answer.status != RTKWORD) {
      growth.factor = answer.real;
      co_return growth;
    }
    if (answer.text == L"Copy") {
      growth.copies = true;
      continue;
    }
    const Answer reference = co_await input.number(Wanted::distance, L"\nSpecify reference length <1>: ", {},
                                                   {}, noZero | noNegative);
    const Answer wanted =
        co_await input.number(Wanted::distance, L"\nSpecify new length: ", base, {}, positive);
    growth.factor = wanted.real / (reference.given() ? reference.real : 1);
    co_return growth;
  }
}

Task<> scale(CommandInput& input) {
  const Entities chosen = co_await input.objects();
  if (chosen.empty()) co_return;
  const Answer base = co_await input.point(L"\nSpecify base point: ", {}, {}, noNull);
  const Growth growth = co_await askGrowth(input, base.point);
  transform(input, chosen, AcGeMatrix3d::scaling(growth.factor, base.point), growth.copies);
}

/// Reflection in the upright plane through two points.
AcGeMatrix3d mirroring(const AcGePoint3d& a, const AcGePoint3d& b) {
  const double angle = 2 * (b - a).convert2d().angle();
  AcGeMatrix3d turned;
  turned(0, 0) = std::cos(angle), turned(0, 1) = std::sin(angle);
  turned(1, 0) = std::sin(angle), turned(1, 1) = -std::cos(angle);
  return AcGeMatrix3d::translation(a.asVector()) * turned * AcGeMatrix3d::translation(-a.asVector());
}

Task<> mirror(CommandInput& input) {
  const Entities chosen = co_await input.objects();
  if (chosen.empty()) co_return;
  const Answer a = co_await input.point(L"\nSpecify first point of mirror line: ", {}, {}, noNull);
  const Answer b = co_await input.point(L"\nSpecify second point of mirror line: ", a.point, {}, noNull);
  const Answer erases = co_await input.keyword(L"\nErase source objects? [Yes/No] <N>: ", L"Yes No");
  if (a.point.distanceTo(b.point) <= tooSmallToDivide) {
    input.say(L"\nThe points of the mirror line are the same.");
    co_return;
  }
  transform(input, chosen, mirroring(a.point, b.point), erases.text != L"Yes");
}

/// The parts of one entity; nothing when it has none, and stays.
std::vector<std::unique_ptr<AcDbEntity>> partsOf(AcDbObjectId id) {
  std::vector<std::unique_ptr<AcDbEntity>> parts;
  AcDbObjectPointer<AcDbEntity> entity(id);
  AcDbVoidPtrArray made;
  const Acad::ErrorStatus status = entity.object() ? entity->explode(made) : entity.openStatus();
  for (void* each : made) parts.emplace_back(static_cast<AcDbEntity*>(each));
  if (status != Acad::eOk) parts.clear();
  return parts;
}

Task<> explode(CommandInput& input) {
  const Entities chosen = co_await input.objects();
  size_t kept = 0;
  for (const AcDbObjectId& id : chosen) {
    auto parts = partsOf(id);
    if (parts.empty()) {
      ++kept;
      continue;
    }
    for (auto& part : parts) appendTo(currentSpace(), std::move(part));
    eraseAll({id});
  }
  if (kept) input.tell(L"\n" + std::to_wstring(kept) + L" could not be exploded.");
}

AcDbObjectIdArray inSpace(const Entities& chosen, AcDbObjectId space) {
  AcDbObjectIdArray ids;
  for (const AcDbObjectId& id : chosen) {
    const AcDbObjectPointer<AcDbEntity> entity(id);
    if (entity.object() && entity->ownerId() == space) ids.append(id);
  }
  return ids;
}

Task<> drawOrder(CommandInput& input) {
  const Entities chosen = co_await input.objects();
  if (chosen.empty()) co_return;
  const Answer order =
      co_await input.keyword(L"\nEnter object ordering option [Front/Back] <Back>: ", L"Front Back");
  const AcDbObjectIdArray ids = inSpace(chosen, currentSpace());
  AcDbObjectPointer<AcDbBlockTableRecord> space(currentSpace(), AcDb::kForWrite);
  AcDbSortentsTable* table = nullptr;
  if (!space.object() || space->getSortentsTable(table, AcDb::kForWrite, true) != Acad::eOk)
    input.fail(L"The draw order can't be changed.");
  if (order.text == L"Front") {
    table->moveToTop(ids);
  } else {
    table->moveToBottom(ids);
  }
  table->close();
}

constexpr Command rows[] = {{L"ERASE", erase},   {L"SELECT", select, false}, {L"MOVE", move},
                            {L"COPY", copy},     {L"ROTATE", rotate},        {L"SCALE", scale},
                            {L"MIRROR", mirror}, {L"EXPLODE", explode},      {L"DRAWORDER", drawOrder}};

}  // namespace

std::span<const Command> editCommands() { return rows; }

}  // namespace host
