#include "host/view/scene.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <map>
#include <span>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "brx/db_block.h"
#include "brx/db_dictionary.h"
#include "brx/lisp_calls.h"
#include "host/database/changes.h"
#include "host/database/kept_for_drawing.h"
#include "host/database/nested_visits.h"
#include "host/database/spaces.h"
#include "host/database/stubs.h"
#include "host/view/box_index.h"
#include "host/view/recorder.h"

namespace host::view {
namespace {

/// Entities of a chunk: what is recorded again for the change of one.
constexpr std::uint32_t chunkSize = 128;
/// Of a scene; what is beyond is left out.
constexpr size_t mostItems = 20'000'000;
/// Changes that are told one by one; beyond, the picture changed everywhere.
constexpr size_t mostDamage = 2000;

/// Around all that entities of the list may be picked by and seen at: curves, and letters with their base
/// line, at least as high as capitals.
void addBox(const DisplayList& list, const Item& item, AcDbExtents& box) {
  if (item.kind == Item::arc) {
    const Arc& arc = list.arcs[item.first];
    const AcGeVector3d reach{std::hypot(arc.u.x, arc.v.x), std::hypot(arc.u.y, arc.v.y),
                             std::hypot(arc.u.z, arc.v.z)};
    box.addPoint(arc.centre + reach), box.addPoint(arc.centre - reach);
  } else if (item.kind == Item::letters) {
    const Letters& letters = list.letters[item.first];
    const LettersInk ink = inkOf(letters);
    for (const double x : {std::min(0.0, ink.left), std::max(ink.advance, ink.right)}) {
      for (const double y : {std::min(0.0, ink.bottom), std::max(1.0, ink.top)}) {
        if (std::abs(x) < 1e200 && std::abs(y) < 1e200)
          box.addPoint(letters.origin + letters.x * x + letters.y * y);
      }
    }
  } else {
    for (std::uint32_t i = 0; i < item.count; ++i) box.addPoint(list.points[item.first + i]);
  }
}

const AcDbBlockTableRecord* recordOf(AcDbObjectId block) {
  return AcDbBlockTableRecord::cast(objectOf(block));
}

/// Those in whose contents `inner` is placed, at any depth, and itself.
std::unordered_set<const AcDbStub*> blocksAround(const std::unordered_set<const AcDbStub*>& inner,
                                                 AcDbDatabase& drawing) {
  std::unordered_set<const AcDbStub*> around = inner;
  const auto* const table = AcDbBlockTable::cast(objectOf(drawing.blockTableId()));
  for (bool grows = table != nullptr; grows;) {
    grows = false;
    for (const AcDbObjectId& id : table->recordIds()) {
      const AcDbBlockTableRecord* const record = recordOf(id);
      if (!record || record->isLayout() || around.contains(id.stub())) continue;
      const bool places =
          std::any_of(record->entityIds().begin(), record->entityIds().end(), [&](const AcDbObjectId& each) {
            const auto* const reference = AcDbBlockReference::cast(objectOf(each));
            return reference && around.contains(reference->blockTableRecord().stub());
          });
      if (places) grows = around.insert(id.stub()).second;
    }
  }
  return around;
}

bool looksSame(const DisplayList& a, const Style& one, const DisplayList& b, const Style& other) {
  const auto pattern = [](const DisplayList& list, const Style& style) {
    return style.pattern < 0 ? std::vector<double>() : list.patterns[static_cast<size_t>(style.pattern)];
  };
  return one.ink == other.ink && one.lineWeight == other.lineWeight && one.filled == other.filled &&
         one.patternScale == other.patternScale && (one.pattern < 0) == (other.pattern < 0) &&
         pattern(a, one) == pattern(b, other);
}
bool looksSame(const Letters& a, const Letters& b) {
  return a.origin == b.origin && a.x == b.x && a.y == b.y && a.font == b.font && a.tracking == b.tracking &&
         a.letters == b.letters;
}
bool looksSame(const DisplayList& a, const Item& one, const DisplayList& b, const Item& other) {
  if (one.kind != other.kind || one.count != other.count) return false;
  if (!looksSame(a, a.styles[one.style], b, b.styles[other.style])) return false;
  if (one.kind == Item::letters) return looksSame(a.letters[one.first], b.letters[other.first]);
  if (one.kind == Item::arc) {
    const Arc &former = a.arcs[one.first], &next = b.arcs[other.first];
    return former.centre == next.centre && former.u == next.u && former.v == next.v &&
           former.sweep == next.sweep;
  }
  if (one.kind == Item::mark && (a.marks.shape != b.marks.shape || a.marks.size != b.marks.size))
    return false;
  return std::equal(&a.points[one.first], &a.points[one.first] + one.count, &b.points[other.first]);
}

/// The scenes of a drawing.
struct Scenes {
  explicit Scenes(AcDbDatabase& drawing) { noteChanges(drawing); }
  std::map<const AcDbStub*, std::unique_ptr<Scene>> ofBlocks;
};

/// Some items of a list.
struct Part {
  const DisplayList& list;
  std::uint32_t first, count;
  const Item* begin() const { return list.items.data() + first; }
  const Item* end() const { return begin() + count; }
  AcDbExtents box() const {
    AcDbExtents box;
    for (const Item& each : *this) addBox(list, each, box);
    return box;
  }
  bool looksAs(const Part& other) const {
    return std::equal(begin(), end(), other.begin(), other.end(),
                      [&](const Item& a, const Item& b) { return looksSame(list, a, other.list, b); });
  }
};

}  // namespace

Stop until(std::chrono::steady_clock::time_point deadline) {
  return [deadline] { return std::chrono::steady_clock::now() >= deadline; };
}

namespace {

/// Entities that follow one another in the block.
struct Chunk {
  DisplayList list;
  std::unordered_set<ReadLog::Source> sources;
  /// The boxes are those of now; so is the list.
  bool isIndexed = false, isRecorded = false;
  bool dependsOnView = false;
  size_t visits = 0;
  NestedLoss loss;
  double deviation = usualDeviation;
};

}  // namespace

struct Scene::State {
  State(AcDbDatabase& drawing, AcDbObjectId block) : drawing(drawing), block(block) {}

  // What changed
  void take(const Changes& changes);
  void takeEntity(AcDbStub& entity);
  void spoil(std::uint32_t chunk);
  void spoilSources(const std::unordered_set<ReadLog::Source>& changed);
  void adoptNewEntities();
  void adoptOrder();

  // What is made of it
  bool work(bool recording, const Stop& stop);
  void indexChunk(std::uint32_t number);
  void recordChunk(std::uint32_t number);
  std::span<const AcDbObjectId> idsOf(std::uint32_t chunk) const;
  AcDbExtents extentsOf(const AcDbEntity& entity);
  void tellOfLoss();
  void damaged(const AcDbExtents& box);
  void damagedEverywhere() { firstMoment += damage.size() + 1, damage.clear(); }

  AcDbDatabase& drawing;
  const AcDbObjectId block;
  SceneLook look;
  std::vector<Entry> entries;
  std::vector<std::unique_ptr<Chunk>> chunks;
  BoxIndex index;
  /// Chunks with work to do; those without are passed over.
  std::vector<std::uint32_t> spoiltIndex, spoiltRecord;
  std::unordered_map<ReadLog::Source, std::vector<std::uint32_t>> dependents;
  /// Places in the order of drawing, where that isn't the block's own.
  std::vector<std::uint32_t> ranks;
  AcDbObjectId sortTable;
  bool orderIsKnown = false;
  NestedLoss toldLoss;
  size_t toldLeftOut = 0;
  size_t items = 0, visits = 0, recordings = 0;
  std::vector<AcDbExtents> damage;
  std::uint64_t firstMoment = 1;
};

Scene::Scene(AcDbDatabase& drawing, AcDbObjectId block) : state_(std::make_unique<State>(drawing, block)) {}
Scene::~Scene() = default;

Scene& Scene::of(AcDbDatabase& drawing, AcDbObjectId block) {
  if (block.isNull()) block = currentSpace(drawing);
  auto& scene = keptFor<Scenes>(drawing).ofBlocks[block.stub()];
  if (!scene) scene = std::make_unique<Scene>(drawing, block);
  return *scene;
}

AcDbDatabase& Scene::drawing() const { return state_->drawing; }
AcDbObjectId Scene::block() const { return state_->block; }
const SceneLook& Scene::look() const { return state_->look; }
size_t Scene::size() const { return state_->entries.size(); }
const Scene::Entry& Scene::entry(std::uint32_t number) const { return state_->entries[number]; }
const DisplayList& Scene::listOf(const Entry& entry) const { return state_->chunks[entry.chunk]->list; }
size_t Scene::recordings() const { return state_->recordings; }
AcDbExtents Scene::extents() const { return state_->index.extents(); }

const Scene::Entry* Scene::find(AcDbObjectId entity) const {
  const AcDbStub* const stub = entity.stub();
  if (!stub || stub->owner != state_->block.stub() || stub->position >= state_->entries.size())
    return nullptr;
  const Entry& found = state_->entries[stub->position];
  return found.entity == entity ? &found : nullptr;
}

const DisplayList* Scene::listWithMarks() const {
  for (const auto& each : state_->chunks) {
    if (each->list.hasMarks) return &each->list;
  }
  return nullptr;
}

size_t Scene::leftOut() const {
  size_t count = 0;
  for (const auto& each : state_->chunks) count += each->list.leftOut + (each->loss.any() ? 1 : 0);
  return count;
}

PlaneBox Scene::extents(const Projection& projection) const {
  PlaneBox box;
  for (const auto& each : state_->chunks) box.join(view::boxOf(each->list, projection));
  return box;
}

// What changed

void Scene::State::spoil(std::uint32_t chunk) {
  Chunk& spoilt = *chunks[chunk];
  if (spoilt.isIndexed) spoilt.isIndexed = false, spoiltIndex.push_back(chunk);
  if (spoilt.isRecorded) spoilt.isRecorded = false, spoiltRecord.push_back(chunk);
}

void Scene::State::spoilSources(const std::unordered_set<ReadLog::Source>& changed) {
  for (const ReadLog::Source each : changed) {
    const auto found = dependents.find(each);
    if (found == dependents.end()) continue;
    for (const std::uint32_t chunk : found->second) spoil(chunk);
  }
}

void Scene::State::take(const Changes& changes) {
  std::unordered_set<ReadLog::Source> sources;
  std::unordered_set<const AcDbStub*> blocks;
  for (const AcDbObjectId& id : changes.objects) {
    const auto* const top = static_cast<const AcDbStub*>(ReadLog::sourceOf(id, block));
    sources.insert(top);
    if (AcDbEntity::cast(top->object)) {
      if (top->owner == block.stub() && top->position / chunkSize < chunks.size())
        spoil(top->position / chunkSize);
    } else if (top != id.stub() || AcDbBlockTableRecord::cast(top->object)) {
      blocks.insert(top);
    }
    if (AcDbSortentsTable::cast(id.stub()->object)) orderIsKnown = false;
  }
  for (const size_t each : changes.variables) sources.insert(ReadLog::sourceOf(each));
  if (!blocks.empty()) {
    for (const AcDbStub* each : blocksAround(blocks, drawing)) sources.insert(each);
  }
  spoilSources(sources);
}

std::span<const AcDbObjectId> Scene::State::idsOf(std::uint32_t chunk) const {
  const AcDbBlockTableRecord* const record = recordOf(block);
  const size_t first = static_cast<size_t>(chunk) * chunkSize;
  return std::span(record->entityIds()).subspan(first, std::min<size_t>(chunkSize, entries.size() - first));
}

void Scene::State::adoptNewEntities() {
  const AcDbBlockTableRecord* const record = recordOf(block);
  const size_t wanted = record ? record->entityIds().size() : 0;
  if (wanted <= entries.size()) return;
  orderIsKnown = false;
  for (size_t i = entries.size(); i < wanted; ++i) {
    const auto chunk = static_cast<std::uint32_t>(i / chunkSize);
    if (chunk == chunks.size()) {
      chunks.push_back(std::make_unique<Chunk>());
      spoiltIndex.push_back(chunk), spoiltRecord.push_back(chunk);
    } else {
      spoil(chunk);
    }
    entries.push_back({record->entityIds()[i], chunk, 0, 0});
  }
}

void Scene::State::adoptOrder() {
  if (orderIsKnown) return;
  orderIsKnown = true;
  std::vector<std::uint32_t> next;
  AcDbSortentsTable* table = nullptr;
  AcDbObjectPointer<AcDbBlockTableRecord> record(block);
  if (record.object() && record->getSortentsTable(table, AcDb::kForRead) == Acad::eOk) {
    AcDbObjectIdArray order;
    if (table->getFullDrawOrder(order) == Acad::eOk) {
      next.assign(entries.size(), 0);
      std::uint32_t rank = 0;
      for (const AcDbObjectId& id : order) {
        if (id.stub()->position < next.size()) next[id.stub()->position] = rank++;
      }
    }
    table->close();
  }
  if (next != ranks) damagedEverywhere();
  ranks = std::move(next);
}

void Scene::State::damaged(const AcDbExtents& box) {
  if (box.isEmpty()) return;
  damage.push_back(box);
  if (damage.size() > mostDamage) damagedEverywhere();
}

// What is made of it

/// As the entity tells; what it would draw where it can't tell.
AcDbExtents Scene::State::extentsOf(const AcDbEntity& entity) {
  AcDbExtents box;
  if (entity.getGeomExtents(box) == Acad::eOk && !box.isEmpty()) return box;
  const AcDbObjectId id = entity.objectId();
  const Recording recording = record(drawing, block, {&id, 1}, {});
  for (const Item& each : recording.list.items) addBox(recording.list, each, box);
  return box;
}

void Scene::State::indexChunk(std::uint32_t number) {
  Chunk& chunk = *chunks[number];
  const NestedOperation operation(visits);
  ReadLog reads(block);
  std::uint32_t place = number * chunkSize;
  for (const AcDbObjectId& id : idsOf(number)) {
    AcDbExtents box;
    reads.pass(id);
    AcDbObjectPointer<AcDbEntity> entity(id);
    if (entity.object()) {
      box = extentsOf(*entity);
      // Extents of blocks are remembered elsewhere, so that they needn't read the block.
      if (const auto* const reference = AcDbBlockReference::cast(entity.object()))
        ReadLog::noteObject(reference->blockTableRecord().stub());
    }
    index.set(place++, box);
  }
  for (const ReadLog::Source each : reads.take()) {
    if (chunk.sources.insert(each).second) dependents[each].push_back(number);
  }
  chunk.isIndexed = true;
}

void Scene::State::recordChunk(std::uint32_t number) {
  Chunk& chunk = *chunks[number];
  visits -= chunk.visits, items -= chunk.list.items.size();
  const NestedOperation operation(visits);
  const size_t visitedBefore = NestedOperation::visits();
  const std::span<const AcDbObjectId> ids = idsOf(number);
  Recording next = record(drawing, block, ids,
                          {chunk.deviation, look.towards ? &*look.towards : nullptr, mostItems - items});
  recordings += ids.size();
  chunk.visits = NestedOperation::visits() - visitedBefore, chunk.loss = NestedOperation::loss();
  visits += chunk.visits, items += next.list.items.size();
  for (const ReadLog::Source each : next.sources) {
    if (chunk.sources.insert(each).second) dependents[each].push_back(number);
  }
  std::uint32_t first = 0;
  for (std::uint32_t i = 0; i < ids.size(); ++i) {
    Entry& entry = entries[number * chunkSize + i];
    const Part was{chunk.list, entry.firstItem, entry.items}, is{next.list, first, next.ends[i] - first};
    const AcDbExtents box = is.box();
    if (!is.looksAs(was)) damaged(was.box()), damaged(box);
    index.set(number * chunkSize + i, box);
    entry.firstItem = is.first, entry.items = is.count;
    first = next.ends[i];
  }
  chunk.list = std::move(next.list);
  chunk.dependsOnView = next.dependsOnView;
  chunk.isRecorded = chunk.isIndexed = true;
}

bool Scene::State::work(bool recording, const Stop& stop) {
  adoptNewEntities();
  adoptOrder();
  std::vector<std::uint32_t>& queue = recording ? spoiltRecord : spoiltIndex;
  while (!queue.empty()) {
    const std::uint32_t number = queue.back();
    queue.pop_back();
    if (recording && !chunks[number]->isRecorded) recordChunk(number);
    if (!recording && !chunks[number]->isIndexed) indexChunk(number);
    if (stop && stop()) return queue.empty();
  }
  return true;
}

/// Each loss once, and again when it grows.
void Scene::State::tellOfLoss() {
  NestedLoss loss;
  size_t leftOut = 0;
  for (const auto& each : chunks) {
    loss.tooMany |= each->loss.tooMany, loss.tooDeep |= each->loss.tooDeep;
    leftOut += each->list.leftOut;
  }
  tellLoss({loss.tooMany && !toldLoss.tooMany, loss.tooDeep && !toldLoss.tooDeep});
  if (leftOut > toldLeftOut)
    acutPrintf(L"\nThe picture leaves out %d items.\n", static_cast<int>(std::min<size_t>(leftOut, INT_MAX)));
  toldLoss = loss, toldLeftOut = leftOut;
}

void Scene::takeChanges() {
  if (!hasChanges(drawing())) return;
  const Changes changes = host::takeChanges(drawing());
  for (const auto& [block, scene] : keptFor<Scenes>(drawing()).ofBlocks) scene->state_->take(changes);
}

bool Scene::index(const Stop& stop) {
  takeChanges();
  return state_->work(false, stop);
}

bool Scene::update(const Stop& stop) {
  takeChanges();
  if (!state_->work(true, stop)) return false;
  // What is recorded is indexed too.
  state_->spoiltIndex.clear();
  state_->tellOfLoss();
  return true;
}

bool Scene::isCurrent() const {
  const AcDbBlockTableRecord* const record = recordOf(state_->block);
  return !hasChanges(state_->drawing) && state_->spoiltRecord.empty() && state_->orderIsKnown &&
         (!record || record->entityIds().size() == state_->entries.size());
}

void Scene::setLook(const SceneLook& look) {
  const SceneLook former = std::exchange(state_->look, look);
  if (look == former) return;
  const bool turned = look.towards && former.towards;
  for (std::uint32_t i = 0; i < state_->chunks.size(); ++i) {
    Chunk& chunk = *state_->chunks[i];
    if (!chunk.isRecorded || (turned && !chunk.dependsOnView)) continue;
    chunk.isRecorded = false;
    state_->spoiltRecord.push_back(i);
  }
}

bool Scene::refine(const Projection& projection, const PlaneBox& window, double deviation, const Stop& stop) {
  /// Beyond single precision no picture gets finer.
  constexpr double finest = 1e-7;
  const auto isCoarse = [&](const Chunk& chunk) { return chunk.list.deviation > deviation * 1.001; };
  if (std::none_of(state_->chunks.begin(), state_->chunks.end(),
                   [&](const auto& each) { return isCoarse(*each); }))
    return true;
  for (const std::uint32_t number : entriesIn(projection, window)) {
    const std::uint32_t place = state_->entries[number].chunk;
    Chunk& chunk = *state_->chunks[place];
    if (!isCoarse(chunk)) continue;
    const AcDbExtents box = state_->index.box(number);
    const double fine = std::max(deviation, (box.maxPoint() - box.minPoint()).length() * finest);
    if (!(fine < chunk.deviation)) continue;
    chunk.deviation = fine;
    state_->recordChunk(place);
    if (stop && stop()) return false;
  }
  return true;
}

std::vector<std::uint32_t> Scene::entriesIn(const Projection& projection, const PlaneBox& window) const {
  std::vector<std::uint32_t> found;
  state_->index.find(projection, window, found);
  const std::vector<std::uint32_t>& ranks = state_->ranks;
  const auto isBefore = [&](std::uint32_t a, std::uint32_t b) {
    return ranks[a] != ranks[b] ? ranks[a] < ranks[b] : a < b;
  };
  constexpr size_t denseShare = 16;
  if (!ranks.empty()) {
    std::sort(found.begin(), found.end(), isBefore);
  } else if (found.size() < size() / denseShare) {
    std::sort(found.begin(), found.end());
  } else {
    std::vector<bool> isFound(size());
    for (const std::uint32_t each : found) isFound[each] = true;
    found.clear();
    for (std::uint32_t i = 0; i < isFound.size(); ++i) {
      if (isFound[i]) found.push_back(i);
    }
  }
  return found;
}

Scene::Damage Scene::damageSince(std::uint64_t moment) const {
  if (moment < state_->firstMoment) return {true, {}};
  const auto first = state_->damage.begin() + static_cast<std::ptrdiff_t>(moment - state_->firstMoment);
  return {false, {first, state_->damage.end()}};
}
std::uint64_t Scene::moment() const { return state_->firstMoment + state_->damage.size(); }

PlaneBox Scene::boxOf(const Entry& entry, const Projection& projection) const {
  return state_->index.box(static_cast<std::uint32_t>(&entry - state_->entries.data()), projection);
}

}  // namespace host::view
