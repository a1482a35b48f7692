// Feeds jigs' drags with random events: moves, clicks, numbers, texts and ends. Where the events end, the
// drag is cancelled, and nothing may be left in the drawing but what was accepted.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <vector>

#include "brx/db_block.h"
#include "brx/db_database.h"
#include "host/console/command_line.h"
#include "host/documents/documents.h"
#include "host/editor/drag.h"
#include "host/editor/person.h"
#include "host/script/queues.h"
#include "zarbo/jigs/entity_set_jigs.h"
#include "zarbo/jigs/line_jig.h"
#include "zarbo/jigs/multi_block_jig.h"
#include "zarbo/jigs/rectangle_jig.h"
#include "zarbo/jigs/rotate_jig.h"
#include "zarbo/jigs/text_jig.h"

namespace {

using host::InputItem;

class Bytes {
 public:
  Bytes(const uint8_t* data, size_t size) : data_(data), left_(size) {}
  bool empty() const { return left_ == 0; }
  uint8_t byte() {
    if (left_ == 0) return 0;
    --left_;
    return *data_++;
  }
  double number() {
    uint8_t raw[sizeof(double)] = {};
    for (uint8_t& each : raw) each = byte();
    double value;
    std::memcpy(&value, raw, sizeof value);
    return value;
  }
  AcGePoint3d point() {
    const double x = number(), y = number();
    return {x, y, 0};
  }
  std::wstring text() {
    std::wstring made(byte() % 12, L' ');
    for (wchar_t& each : made) each = static_cast<wchar_t>(byte());
    return made;
  }

 private:
  const uint8_t* data_;
  size_t left_;
};

class RandomPerson : public host::Person {
 public:
  explicit RandomPerson(Bytes& bytes) : bytes_(bytes) {}
  InputItem next(const host::Request&) override {
    if (bytes_.empty()) return host::Cancel{};
    switch (bytes_.byte() % 8) {
      case 0:
        return host::Enter{};
      case 1:
        return host::Number{bytes_.number()};
      case 2:
        return host::Typed{L"x" + bytes_.text()};
      case 3:
        return host::Typed{bytes_.byte() % 2 ? L"C" : L"Middle"};
      case 4:
        return bytes_.point();
      default:
        return host::Moved{bytes_.point()};
    }
  }

 private:
  Bytes& bytes_;
};

/// A block that holds a line, a reference to another one, and a text.
AcDbObjectId sampleBlock(AcDbDatabase& drawing, const wchar_t* name, AcDbObjectId inner) {
  auto* const record = new AcDbBlockTableRecord;
  record->setName(name);
  AcDbObjectPointer<AcDbBlockTable> table(drawing.tableId(AcDbBlockTable::desc()), AcDb::kForWrite);
  AcDbObjectId id;
  table->add(id, record);
  const auto add = [&](AcDbEntity* entity) {
    record->appendAcDbEntity(entity);
    entity->close();
  };
  add(new AcDbLine({}, {1, 1, 0}));
  if (!inner.isNull()) add(new AcDbBlockReference({2, 0, 0}, inner));
  record->close();
  return id;
}

size_t entitiesIn(const AcDbDatabase& drawing) {
  const AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId());
  return space->entityIds().size();
}

constexpr int jigs = 7;

void runJig(int kind, AcDbObjectId block, AcDbObjectId placed) {
  const auto reference = [&] { return new AcDbBlockReference({}, block); };
  AcDbEntityPtrArray entities(0, 8);
  LispList result;
  switch (kind % jigs) {
    case 0:
      AsdkRectangleJig(3, 4, 2, true).run();
      break;
    case 1:
      LineJig().run(L"");
      break;
    case 2:
      TextJig(L"Supply\\P450", {}, 2.5, {}).run();
      break;
    case 3: {
      entities.append(reference());
      multiBlockJig jig(true, 1);
      jig.setEntityList(entities);
      jig.run(result);
      break;
    }
    case 4: {
      entities.append(reference());
      MultiMoveJig jig(L"To: ", {});
      jig.setEntityList(entities);
      jig.run();
      break;
    }
    case 5:
      RotateJig(placed, L"Turn: ").run();
      break;
    default: {
      entities.append(reference());
      MultiRotateJig jig(L"Turn: ", {});
      jig.setEntityList(entities);
      jig.run();
    }
  }
}

AcDbObjectId addReference(AcDbDatabase& drawing, AcDbObjectId block) {
  AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
  auto* const reference = new AcDbBlockReference({5, 5, 0}, block);
  AcDbObjectId id;
  space->appendAcDbEntity(id, reference);
  reference->close();
  return id;
}

/// Bytes of which most make sense: coordinates are small numbers, not a few are no numbers at all.
std::vector<uint8_t> randomBytes(std::mt19937& random) {
  std::vector<uint8_t> bytes;
  std::uniform_real_distribution<double> place(-100, 100);
  std::uniform_int_distribution<int> any(0, 255), few(0, 12);
  /// One drag in so many goes on for long.
  constexpr int oneInMany = 64, longer = 20;
  const int times = any(random) % oneInMany == 0 ? longer : 1;
  bytes.push_back(static_cast<uint8_t>(any(random)));
  for (int events = few(random) * times; events > 0; --events) {
    bytes.push_back(static_cast<uint8_t>(any(random)));
    for (const double each : {place(random), place(random)}) {
      uint8_t raw[sizeof each];
      std::memcpy(raw, &each, sizeof each);
      if (any(random) < 16) raw[7] = 0x7f, raw[6] = 0xff;
      bytes.insert(bytes.end(), raw, raw + sizeof each);
    }
  }
  return bytes;
}

void runRound(std::mt19937& random, AcDbDatabase& drawing, AcDbObjectId block, AcDbObjectId placed) {
  const std::vector<uint8_t> data = randomBytes(random);
  Bytes bytes(data.data(), data.size());
  const int kind = bytes.byte();
  host::setPerson(std::make_unique<RandomPerson>(bytes));
  const size_t before = entitiesIn(drawing);
  runJig(kind, block, placed);
  const size_t more = entitiesIn(drawing) - before;
  EXPECT_LE(more, kind % jigs == 3 ? 1u : 0u) << "jig " << kind % jigs;
}

TEST(RandomDrags, LeaveNothingBehindButWhatWasAccepted) {
  host::commandLine().setShown(false);
  host::Document& document = host::documents().create(L"");
  AcDbDatabase& drawing = *document.database();
  const AcDbObjectId block = sampleBlock(drawing, L"OUTER", sampleBlock(drawing, L"INNER", {}));
  const AcDbObjectId placed = addReference(drawing, block);
  const char* const wanted = std::getenv("ZARBO_RANDOM_ROUNDS");
  const int rounds = wanted ? std::atoi(wanted) : 3000;
  std::mt19937 random(16);
  for (int round = 0; round < rounds && !testing::Test::HasFailure(); ++round) {
    runRound(random, drawing, block, placed);
    host::dragRecords().clear();
    host::scriptQueues().prompts.clear();
    host::commandLine().takeRecord();
  }
  host::setPerson(nullptr);
  host::documents().closeAll();
  host::documents().discardClosed();
}

}  // namespace
