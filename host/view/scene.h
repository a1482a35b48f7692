#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "brx/db_database.h"
#include "host/view/display_list.h"
#include "host/view/view.h"

namespace host::view {

/// Asked in the course of long work, every few hundred microseconds; true ends the slice. An empty one never
/// does.
using Stop = std::function<bool()>;
Stop until(std::chrono::steady_clock::time_point deadline);

/// What faces need: with a direction to the one who looks, they are recorded as filled polygons, and things
/// that look different from each side as they look from there.
struct SceneLook {
  std::optional<AcGeVector3d> towards;
  bool operator==(const SceneLook&) const = default;
};

/// What one block of a drawing shows: its entities recorded in chunks, in their block's order, and an index
/// of where they are. Objects tell the drawing that they changed, by undo too; the next `update` records the
/// chunks again that show or depend on what changed: layers, linetypes, text styles, the blocks of
/// references. Nothing is recorded before the first update.
class Scene {
 public:
  /// Of model space, a sheet or a block. One for each block, which `of` keeps.
  Scene(AcDbDatabase& drawing, AcDbObjectId block);
  ~Scene();
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;
  /// The drawing's scene of that block, of its current space for a null id. Made when it is first asked for,
  /// and gone with the drawing.
  static Scene& of(AcDbDatabase& drawing, AcDbObjectId block = {});

  AcDbDatabase& drawing() const;
  AcDbObjectId block() const;

  /// Brings the scene up to date; false when it was stopped before that, to go on with the next call.
  bool update(const Stop& stop = {});
  /// For those who only look for entities: brings up to date where they are, and records nothing.
  bool index(const Stop& stop = {});
  /// Whether `update` would find nothing to do.
  bool isCurrent() const;
  /// Takes effect with the next update.
  void setLook(const SceneLook& look);
  const SceneLook& look() const;
  /// Chords of curves in the part that is seen must not be off by more drawing units: records again, finer,
  /// what is too coarse there. False when it was stopped.
  bool refine(const Projection& projection, const PlaneBox& window, double deviation, const Stop& stop = {});

  /// Around all that is seen, or wider; empty where nothing is.
  AcDbExtents extents() const;
  /// Of what is drawn, in a view's plane and no wider.
  PlaneBox extents(const Projection& projection) const;
  /// Things that aren't shown: not finite, or beyond the bound on a scene's size.
  size_t leftOut() const;

  /// An entity of the block as it was recorded; erased and hidden ones are without items.
  struct Entry {
    AcDbObjectId entity;
    std::uint32_t chunk = 0;
    std::uint32_t firstItem = 0, items = 0;
  };
  /// An entry's number is its entity's place in the block.
  size_t size() const;
  const Entry& entry(std::uint32_t number) const;
  const DisplayList& listOf(const Entry& entry) const;
  /// One that has marks of points, which look the same in all; null where there are none.
  const DisplayList* listWithMarks() const;
  /// Null for an entity that isn't the block's own, or hasn't been recorded yet.
  const Entry* find(AcDbObjectId entity) const;
  /// The numbers of the entries whose boxes meet the window, in the order of drawing.
  std::vector<std::uint32_t> entriesIn(const Projection& projection, const PlaneBox& window) const;

  /// An entity's box in a view's plane, or a little more; empty for one that isn't seen.
  PlaneBox boxOf(const Entry& entry, const Projection& projection) const;

  /// Where the picture changed since an earlier moment.
  struct Damage {
    bool everywhere = false;
    std::vector<AcDbExtents> boxes;
  };
  /// Grows with each change of the picture.
  std::uint64_t moment() const;
  Damage damageSince(std::uint64_t moment) const;

  /// Entities recorded since the scene was made, the same ones again counted too.
  size_t recordings() const;

 private:
  void takeChanges();

  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace host::view
