#pragma once

#include "brx/gi_viewport.h"
#include "interfaces/kv_hvac_solid.h"
#include "solid/body.h"

/// The entity on the kernel. Its facets are stored, not their parameters: cuts and every affine
/// transformation stay exact, and a saved drawing looks the same in later versions.
class HvacSolid final : public kv_hvacSolid, public BrxSolidBodies, public AcGiViewDependent {
 public:
  static void rxInit();
  static void rxRemove();
  AcRxClass* isA() const override { return descriptor; }

  bool addTransition(const AcGePoint3d& start, bool startRectangular, double startWidth, double startHeight,
                     const AcGePoint3d& end, bool endRectangular, double endWidth, double endHeight,
                     Axes startAxes, Axes endAxes, int detail) override;
  bool subtractTransition(const AcGePoint3d& start, bool startRectangular, double startWidth,
                          double startHeight, const AcGePoint3d& end, bool endRectangular, double endWidth,
                          double endHeight, Axes startAxes, Axes endAxes, int detail) override;
  bool addSkin(AcGePoint3dArray outline, double thickness) override;
  bool doUnion(const kv_hvacSolid* other) override;
  bool addSquareElbowPrep(AcGePoint3d& head, double headWidth, double headHeight, AcGePoint3d& tail,
                          double tailWidth, double tailHeight, Axes headAxes, Axes tailAxes, bool rectangular,
                          Corners headCorners, Corners tailCorners, Places places, bool collars,
                          double collarLength) override;
  bool addSquareElbow(const AcGePoint3d& head, double headWidth, double headHeight, const AcGePoint3d& tail,
                      double tailWidth, double tailHeight, Axes headAxes, Axes tailAxes, bool rectangular,
                      const AModeler::Point3d* headCorners, const AModeler::Point3d* tailCorners,
                      const AcGePoint3d* places, int detail) override;
  bool addRadiusElbow(AcGePoint3d& head, double headWidth, double headHeight, double layer1, double layer2,
                      AcGePoint3d& tail, double tailWidth, double tailHeight, Axes headAxes, Axes tailAxes,
                      bool rectangular, double radiusRatio, bool toCentre, int detail,
                      bool makeBodies) override;
  bool addCableTraySquareRadiusElbow(AcGePoint3d& head, double width, double height, AcGePoint3d& tail,
                                     Axes headAxes, Axes tailAxes, double radiusRatio, int detail) override;
  bool addWyePrep(AcGePoint3d& head, double headWidth, double headHeight, AcGePoint3d& tail1, double width1,
                  double height1, AcGePoint3d& tail2, double width2, double height2, AcGeVector3d* headAxes,
                  AcGeVector3d* axes1, AcGeVector3d* axes2, bool rectangular, Corners headCorners,
                  Corners corners1, Corners corners2, Places places1, Places places2, Places places3,
                  bool collars, double collarLength) override;
  bool addWye(AcGePoint3d& head, double headWidth, double headHeight, AcGePoint3d& tail1, double width1,
              double height1, AcGePoint3d& tail2, double width2, double height2, AcGePoint3d& headFar,
              Axes headAxes, Axes axes1, Axes axes2, bool rectangular, const AModeler::Point3d* headCorners,
              const AModeler::Point3d* corners1, const AModeler::Point3d* corners2,
              const AcGePoint3d* places1, const AcGePoint3d* places2, const AcGePoint3d* places3,
              int detail) override;
  void sliceLast(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c,
                 const AcGePoint3d& side) override;
  void clearBodies() override;
  void setKind(BrxSolidKind kind) override;

  BrxSolidKind kind() const override { return kind_; }
  int bodyCount() const override { return static_cast<int>(bodies_.size()); }
  BrxSolidBody body(int index) const override;

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

 protected:
  bool subWorldDraw(AcGiWorldDraw* draw) override;
  void subViewportDraw(AcGiViewportDraw* draw) override;
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
  Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entities) const override;
  void subList() const override;
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::Int64 marker, const AcGePoint3d& pick,
                                      const AcGePoint3d& last, const AcGeMatrix3d& view,
                                      AcGePoint3dArray& points, AcDbIntArray& geometryIds) const override;
  /// Centres of end sections; moving one moves all.
  Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& points) const override;

 private:
  std::vector<solid::Body> bodiesAsSeen() const;
  /// False for an empty body, which isn't added.
  bool addBody(solid::Body body);
  Acad::ErrorStatus take(int version, int kind, std::string_view bytes);

  static AcRxClass* descriptor;
  std::vector<solid::Body> bodies_;
  BrxSolidKind kind_ = BrxSolidKind::other;
};
