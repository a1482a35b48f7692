#pragma once

#include <deque>

#include "brx/db_database.h"
#include "host/view/view.h"

namespace host::view {

/// What is seen of the world, along parallel lines of sight.
struct View {
  /// In the middle of the picture, world coordinates.
  AcGePoint3d centre;
  /// Of the picture, drawing units.
  double height = 9;
  /// From what is seen to the one who looks, and which way is up in the picture; unit length, at a right
  /// angle to each other.
  AcGeVector3d towards{0, 0, 1}, up{0, 1, 0};
  bool operator==(const View&) const = default;

  Projection projection() const { return {up.crossProduct(towards), up}; }
};

enum class StandardView { top, bottom, front, back, left, right, southWest, southEast, northEast, northWest };

/// Place of a pixel, or between pixels, from the picture's upper left corner, x to the right and y down.
struct PixelPoint {
  double x = 0, y = 0;
};

struct Ray {
  /// In the plane of the view's centre.
  AcGePoint3d origin;
  /// Into the picture, unit length.
  AcGeVector3d direction;
};

/// The view of one space of a drawing in a viewport of pixels, and the views before it. What isn't finite or
/// has no size is ignored: such calls answer false and leave the view as it is.
class Camera {
 public:
  /// Bounds of the centre's coordinates and of the view's height, in drawing units.
  static constexpr double farthest = 1e15, lowest = 1e-9, highest = 1e15;
  static constexpr int mostPixels = 1 << 15;

  Camera() = default;
  /// That of the drawing's current space, kept for the drawing. VIEWCTR, VIEWSIZE, VIEWDIR, VIEWTWIST
  /// and SCREENSIZE tell and set the current drawing's.
  static Camera& of(AcDbDatabase& drawing);
  /// The same of one of its spaces.
  static Camera& of(AcDbDatabase& drawing, AcDbObjectId space);

  const View& view() const { return view_; }
  /// Grows with each change of the view or of the viewport.
  std::uint64_t moment() const { return moment_; }
  /// In pixels, at least 1 each. The height in drawing units stays.
  int width() const { return width_; }
  int height() const { return height_; }
  bool setSize(int width, int height);
  /// Drawing units to a pixel's side.
  double pixel() const { return view_.height / height_; }
  /// The part of the view's plane that fills the viewport.
  PlaneBox window() const;
  Projection projection() const { return view_.projection(); }

  // Views that are set: each is a step that `previous` takes back.
  bool show(const View& view);
  bool show(const AcGePoint3d& centre, double height);
  /// So that the box fills the viewport up to a share of empty margin on each side. A box without width or
  /// height keeps the view's height where nothing else tells one.
  bool fit(const PlaneBox& box, double margin = 0);
  bool fit(const AcDbExtents& box, double margin = 0);
  /// Looks from there at the same centre.
  bool look(StandardView from);
  bool lookFrom(const AcGeVector3d& towards);

  // Motions under a hand: those that follow one another are one step, up to `settle`.
  /// The picture moves by so many pixels with the hand.
  bool pan(double right, double down);
  /// What is under the cursor stays there; a factor above 1 shows things larger.
  bool zoom(double factor, const PixelPoint& cursor);
  /// Turns what is seen about the view's centre (about `pivot` where one is given), by radians about the
  /// picture's up axis and its horizontal one.
  bool orbit(double right, double down, const AcGePoint3d* pivot = nullptr);
  void settle() { moving_ = false; }

  /// False where there is none. A view that is set forgets the next ones.
  bool previous();
  bool next();
  bool hasNext() const { return !after_.empty(); }

  PixelPoint toPixel(const AcGePoint3d& point) const;
  /// In the plane of the view's centre.
  AcGePoint3d toWorld(const PixelPoint& pixel) const;
  Ray rayAt(const PixelPoint& pixel) const;
  /// Where the ray meets a plane, such as that of the user's coordinates; where it runs along the plane, as
  /// `toWorld`.
  AcGePoint3d onPlane(const PixelPoint& pixel, const AcGePoint3d& origin, const AcGeVector3d& normal) const;

 private:
  bool set(View view, bool isMotion);

  View view_;
  int width_ = 1600, height_ = 1200;
  std::uint64_t moment_ = 1;
  std::deque<View> before_, after_;
  bool moving_ = false;
};

}  // namespace host::view
