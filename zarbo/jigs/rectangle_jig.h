#pragma once

#include <memory>

#include "brx/arrays.h"
#include "brx/db_curves.h"
#include "brx/ed_jig.h"

/// Places a rectangle of a given size by one of its corners or by its middle, and turns it. Nothing comes
/// into the drawing.
class AsdkRectangleJig : public AcEdJig {
 public:
  /// Height along Y, width along X; corner 1 to 4, counted to the left from the lower left, or 0 for the
  /// middle.
  AsdkRectangleJig(double height, double width, int corner, bool rotates);

  /// False when the user cancelled.
  bool run();
  // Of what was placed.
  AcGePoint3d centre() const;
  /// The origin where there is none.
  AcGePoint3d vertex(int index) const;
  double rotation() const { return rotation_; }
  int corner() const { return corner_; }

 protected:
  AcDbEntity* entity() const override { return polyline_.get(); }
  bool update() override;
  DragStatus sampler() override;

 private:
  void askPoint();
  void askRotation();
  DragStatus samplePoint();
  DragStatus sampleRotation();
  void nextCorner();
  void placeVertices();
  void turnVertices();
  void keepVertices();

  AcGePoint2dArray vertices_{0, 8};
  std::unique_ptr<AcDbPolyline> polyline_;
  AcGePoint3d insertionPoint_, sampledPoint_;
  bool fromMiddle_, cancelled_ = false, rotates_;
  int corner_;
  double height_, width_, halfHeight_, halfWidth_;
  double rotation_ = 0, previousRotation_ = 0;
  int stage_ = 0;
};
