#include "solid/filing.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace solid {
namespace {

constexpr Index mostOfAKind = 4'000'000;
constexpr Index mostBodies = 100'000;
/// A union's parts are no unions.
constexpr int deepest = 2;

class Writer {
 public:
  void bodies(const std::vector<Body>& all) {
    number(static_cast<Index>(all.size()));
    for (const Body& each : all) body(each);
  }
  std::string take() { return std::move(bytes_); }

 private:
  void raw(const void* from, size_t size) { bytes_.append(static_cast<const char*>(from), size); }
  void number(Index value) { raw(&value, sizeof value); }
  void small(bool wide, std::int64_t value) {
    if (wide) {
      const auto whole = static_cast<std::int32_t>(value);
      raw(&whole, sizeof whole);
    } else {
      const auto half = static_cast<std::int16_t>(value);
      raw(&half, sizeof half);
    }
  }

  void body(const Body& body) {
    constexpr size_t fits = std::numeric_limits<std::int16_t>::max();
    const bool wide = body.points.size() > fits || body.cells > static_cast<std::int32_t>(fits) ||
                      body.corners.size() > fits ||
                      body.surfaces > static_cast<std::int32_t>(fits) / quartersOfSurface;
    bytes_ += wide ? '\1' : '\0';
    number(static_cast<Index>(body.points.size()));
    number(static_cast<Index>(body.faces.size()));
    small(wide, body.cells);
    small(wide, body.surfaces);
    raw(body.points.data(), body.points.size() * sizeof(Point));
    for (size_t i = 0; i < body.faces.size(); ++i) {
      const Face& face = body.faces[i];
      small(wide, face.end - body.loopBegin(i));
      small(wide, face.behind);
      small(wide, face.front);
      small(wide, face.surface);
    }
    for (const Index corner : body.corners) small(wide, corner);
    number(static_cast<Index>(body.ends.size()));
    raw(body.ends.data(), body.ends.size() * sizeof(Point));
    bodies(body.parts);
  }

  std::string bytes_;
};

struct Truncated {};

class Reader {
 public:
  Reader(std::string_view bytes, UnpackProblems& problems) : bytes_(bytes), problems_(problems) {}

  std::vector<Body> bodies(int depth) {
    const Index count = number();
    if (count > mostBodies) throw Truncated();
    std::vector<Body> made;
    for (Index i = 0; i < count; ++i) {
      Body each = body(depth);
      const wchar_t* const problem = problemOf(each);
      if (!problem) {
        made.push_back(std::move(each));
      } else {
        problems_.texts.push_back(L"body " + std::to_wstring(i + 1) + problem);
      }
    }
    return made;
  }

 private:
  void raw(void* to, size_t size) {
    if (size > bytes_.size()) throw Truncated();
    if (size > 0) std::memcpy(to, bytes_.data(), size);
    bytes_.remove_prefix(size);
  }
  Index number() {
    Index value;
    raw(&value, sizeof value);
    return value;
  }
  std::int32_t small(bool wide) {
    std::int32_t whole;
    std::int16_t half;
    if (wide) return raw(&whole, sizeof whole), whole;
    return raw(&half, sizeof half), half;
  }

  Body body(int depth) {
    Body made;
    char wideMark;
    raw(&wideMark, 1);
    const bool wide = wideMark != 0;
    const Index points = number(), faces = number();
    made.cells = small(wide), made.surfaces = small(wide);
    if (points > mostOfAKind || faces > mostOfAKind || points * sizeof(Point) > bytes_.size() ||
        faces > bytes_.size())
      throw Truncated();
    made.points.resize(points);
    raw(made.points.data(), points * sizeof(Point));
    Index end = 0;
    for (Index i = 0; i < faces; ++i) {
      const std::int32_t corners = small(wide);
      if (corners < 0 || static_cast<size_t>(corners) > bytes_.size()) throw Truncated();
      end += static_cast<Index>(corners);
      if (end > mostOfAKind) throw Truncated();
      Face face{end, small(wide), 0, 0};
      face.front = small(wide), face.surface = small(wide);
      made.faces.push_back(face);
    }
    if (end > bytes_.size()) throw Truncated();
    for (Index i = 0; i < end; ++i) made.corners.push_back(static_cast<Index>(small(wide)));
    const Index ends = number();
    if (ends * sizeof(Point) > bytes_.size()) throw Truncated();
    made.ends.resize(ends);
    raw(made.ends.data(), ends * sizeof(Point));
    if (depth + 1 < deepest) {
      made.parts = bodies(depth + 1);
    } else if (number() != 0) {
      throw Truncated();
    }
    return made;
  }

  static bool areCountsRight(const Body& body) {
    if (body.points.size() < 4 || body.faces.size() < 4 || body.cells < 1 || body.surfaces < 0) return false;
    if (static_cast<size_t>(body.cells) > body.faces.size() ||
        static_cast<size_t>(body.surfaces) > mostOfAKind)
      return false;
    const auto isCell = [&](std::int32_t cell) { return cell >= 0 && cell < body.cells; };
    for (size_t i = 0; i < body.faces.size(); ++i) {
      const Face& face = body.faces[i];
      if (face.end - body.loopBegin(i) < 3 || !isCell(face.behind)) return false;
      if (face.front != noCell && (!isCell(face.front) || face.front == face.behind)) return false;
      if (face.surface != flat && (face.surface < 0 || face.surface >= body.surfaces * quartersOfSurface))
        return false;
    }
    return std::all_of(body.corners.begin(), body.corners.end(),
                       [&](Index c) { return c < body.points.size(); });
  }

  /// Each cell is closed by itself: every edge runs once each way round it.
  static bool areCellsClosed(const Body& body) {
    struct Half {
      std::int32_t cell;
      std::uint64_t key;
      auto operator<=>(const Half&) const = default;
    };
    std::vector<Half> there, back;
    for (size_t i = 0; i < body.faces.size(); ++i) {
      const auto loop = body.loop(i);
      for (size_t k = 0; k < loop.size(); ++k) {
        const std::uint64_t from = loop[k], to = loop[(k + 1) % loop.size()];
        if (from == to) return false;
        there.push_back({body.faces[i].behind, from << 32 | to});
        back.push_back({body.faces[i].behind, to << 32 | from});
        if (body.faces[i].front == noCell) continue;
        there.push_back({body.faces[i].front, to << 32 | from});
        back.push_back({body.faces[i].front, from << 32 | to});
      }
    }
    std::sort(there.begin(), there.end());
    if (std::adjacent_find(there.begin(), there.end()) != there.end()) return false;
    std::sort(back.begin(), back.end());
    return there == back;
  }

  /// Faces look away from the middle of their cells.
  static bool areCellsConvex(const Body& body) {
    std::vector<Vector> sums(static_cast<size_t>(body.cells));
    std::vector<double> counts(sums.size());
    const auto add = [&](std::int32_t cell, const Point& p) {
      if (cell == noCell) return;
      sums[static_cast<size_t>(cell)] += p - body.points[0];
      counts[static_cast<size_t>(cell)] += 1;
    };
    for (size_t i = 0; i < body.faces.size(); ++i) {
      for (const Index corner : body.loop(i)) {
        add(body.faces[i].behind, body.points[corner]);
        add(body.faces[i].front, body.points[corner]);
      }
    }
    const double tolerance = 1000 * toleranceOf(body.points);
    for (size_t i = 0; i < body.faces.size(); ++i) {
      const Vector area = areaVector(body.points, body.loop(i));
      const double length = area.length();
      if (!(length > 0)) continue;
      const auto height = [&](std::int32_t cell) {
        const auto at = static_cast<size_t>(cell);
        const Point middle = body.points[0] + sums[at] / counts[at];
        return (middle - body.points[body.loop(i)[0]]).dotProduct(area) / length;
      };
      if (height(body.faces[i].behind) > tolerance) return false;
      if (body.faces[i].front != noCell && height(body.faces[i].front) < -tolerance) return false;
      for (const Index corner : body.loop(i)) {
        if (std::abs((body.points[corner] - body.points[body.loop(i)[0]]).dotProduct(area)) >
            tolerance * length)
          return false;
      }
    }
    return true;
  }

  static const wchar_t* problemOf(const Body& body) {
    if (!areCountsRight(body)) return L" has numbers out of range";
    const auto areNumbers = [](const std::vector<Point>& points) {
      return std::all_of(points.begin(), points.end(), [](const Point& p) { return isUsable(p); });
    };
    if (!areNumbers(body.points) || !areNumbers(body.ends)) {
      return L" has points that are no numbers";
    }
    if (!areCellsClosed(body)) return L" is open";
    if (!areCellsConvex(body)) return L" has a cell that isn't convex";
    return nullptr;
  }

  std::string_view bytes_;
  UnpackProblems& problems_;
};

}  // namespace

std::string packed(const std::vector<Body>& bodies) {
  Writer writer;
  writer.bodies(bodies);
  return writer.take();
}

std::vector<Body> unpacked(std::string_view bytes, UnpackProblems& problems) {
  Reader reader(bytes, problems);
  try {
    return reader.bodies(0);
  } catch (const Truncated&) {
    problems.texts.push_back(L"the bodies end early");
    return {};
  }
}

}  // namespace solid
