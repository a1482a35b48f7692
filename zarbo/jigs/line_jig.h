#pragma once

#include <memory>
#include <string>

#include "brx/db_curves.h"
#include "brx/ed_jig.h"

/// Collects the points of a polyline, which never comes into the drawing.
class LineJig : public AcEdJig {
 public:
  /// The user isn't asked for the first point then.
  void presetStart(const AcGePoint3d& start);
  /// Draws the image on the layer, where one is named. False when the user cancelled.
  bool run(const std::wstring& layerName);
  const AcDbPolyline& polyline() const { return *polyline_; }

 protected:
  AcDbEntity* entity() const override { return polyline_.get(); }
  bool update() override { return true; }
  DragStatus sampler() override;

 private:
  void addVertex(const AcGePoint3d& point);

  std::unique_ptr<AcDbPolyline> polyline_;
  AcGePoint3d cursorPoint_, lastPoint_;
  int vertexIndex_ = -1;
  bool asksStart_ = true;
};
