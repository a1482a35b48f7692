#pragma once

#include "solid/section.h"

namespace solid {

/// A body in the making: rings, and convex cells between two of them each, their hulls. Cells that share a
/// ring share the wall in it.
class Chain {
 public:
  /// The number of the ring.
  int add(Ring ring);
  /// Adds the hull of two rings, which may differ in everything but must not cross each other's planes. Its
  /// smooth surfaces are those numbered `surface`. False, with the chain spoilt, when there is no such hull.
  bool join(int first, int second, std::int32_t surface = 0);
  const Ring& ring(int number) const { return rings_[static_cast<size_t>(number)].ring; }
  /// Takes the body out.
  Body take() { return std::move(body_); }

 private:
  struct Placed {
    Ring ring;
    Index first = 0;  // of its points in the body
    int wall = -1;    // the face in it
  };
  struct Strand;
  void addWall(Placed& placed, std::int32_t cell, const std::vector<Index>& outward);
  void walk(const Strand& a, const Strand& b, std::int32_t cell, std::int32_t surface, double tolerance);
  void addFace(std::initializer_list<Index> loop, std::int32_t cell, std::int32_t surface);

  Body body_;
  std::vector<Placed> rings_;
};

/// The body of one cell between two ends; empty when there is none: sizes that aren't above 0, ends nearer
/// than 1e-9, sections that cross.
Body transition(const SectionEnd& start, const SectionEnd& end, int detail);

}  // namespace solid
