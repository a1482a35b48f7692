#pragma once

#include "brx/amodeler.h"
#include "brx/db_entity.h"
#include "brx/solid_bodies.h"

/// The entity of the sibling module: an ordered list of bodies of a duct, fitting or hanger. Callers make it
/// by its run-time class, so that they need the module only when they draw.
///
/// A section end is a point on the centre line, whether it is rectangular (else round, with unequal sizes a
/// flat oval), a width and a height. Three axes are along the piece, of the width and of the height. `detail`
/// counts the facets of a circle by eights; 0 and less stand for three. Lengths are drawing units. Operations
/// that answer false have changed nothing: neither bodies nor points, axes or arrays.
class BRX_API kv_hvacSolid : public AcDbEntity {
 public:
  /// Null while the module isn't loaded.
  static AcRxClass* desc() {
    auto* const classes = static_cast<AcRxDictionary*>(acrxSysRegistry()->at(L"ClassDictionary"));
    return static_cast<AcRxClass*>(classes->at(L"kv_hvacSolid"));
  }
  static kv_hvacSolid* cast(const AcRxObject* object) {
    AcRxClass* const own = desc();
    return object && own && object->isKindOf(own)
               ? static_cast<kv_hvacSolid*>(const_cast<AcRxObject*>(object))
               : nullptr;
  }
  /// A new entity without bodies, the caller's; null while the module isn't loaded.
  static kv_hvacSolid* create() {
    AcRxClass* const own = desc();
    return own ? static_cast<kv_hvacSolid*>(own->create()) : nullptr;
  }

  using Axes = const AcGeVector3d*;    // three
  using Corners = AModeler::Point3d*;  // eight
  using Places = AcGePoint3d*;         // eight

  /// Adds the hull of two sections.
  virtual bool addTransition(const AcGePoint3d& start, bool startRectangular, double startWidth,
                             double startHeight, const AcGePoint3d& end, bool endRectangular, double endWidth,
                             double endHeight, Axes startAxes, Axes endAxes, int detail) = 0;
  /// Takes such a body away from all that are held; true also when it touches none.
  virtual bool subtractTransition(const AcGePoint3d& start, bool startRectangular, double startWidth,
                                  double startHeight, const AcGePoint3d& end, bool endRectangular,
                                  double endWidth, double endHeight, Axes startAxes, Axes endAxes,
                                  int detail) = 0;
  /// Adds a body from a closed simple outline in a plane, so thick along its normal; below 0, against it.
  virtual bool addSkin(AcGePoint3dArray outline, double thickness) = 0;
  /// Takes the other one's bodies over; those whose insides overlap become one. The other stays as it is.
  virtual bool doUnion(const kv_hvacSolid* other) = 0;

  /// The head runs to the corner and the tail away from it. Either point is any on its run's line when it
  /// goes in (the far ends of the runs do), and comes out where the fitting ends, so that it can be measured
  /// against the run's end at the corner. `collars` adds straight collars of `collarLength` beyond the
  /// corner.
  ///
  /// The corners are those of a limb's end section, in the order -w-h +w-h +w+h -w+h, and then the same ones
  /// on the mitre. The places are where the centre lines meet, the inner and the outer corner, the two moved
  /// points, the head's one moved along the mitre's normal by one unit, and the meeting point twice.
  virtual bool addSquareElbowPrep(AcGePoint3d& head, double headWidth, double headHeight, AcGePoint3d& tail,
                                  double tailWidth, double tailHeight, Axes headAxes, Axes tailAxes,
                                  bool rectangular, Corners headCorners, Corners tailCorners, Places places,
                                  bool collars, double collarLength) = 0;
  virtual bool addSquareElbow(const AcGePoint3d& head, double headWidth, double headHeight,
                              const AcGePoint3d& tail, double tailWidth, double tailHeight, Axes headAxes,
                              Axes tailAxes, bool rectangular, const AModeler::Point3d* headCorners,
                              const AModeler::Point3d* tailCorners, const AcGePoint3d* places,
                              int detail) = 0;
  /// The points go in and come out as in the preparation. The ratio, times the head's width, is the radius to
  /// the centre line, or to the throat when `toCentre` is false; 0.501 of the size in the plane of the bend
  /// is the least. Without `makeBodies` the points are moved, and that is all. The layers are in the sizes
  /// already.
  virtual bool addRadiusElbow(AcGePoint3d& head, double headWidth, double headHeight, double layer1,
                              double layer2, AcGePoint3d& tail, double tailWidth, double tailHeight,
                              Axes headAxes, Axes tailAxes, bool rectangular, double radiusRatio,
                              bool toCentre, int detail, bool makeBodies) = 0;
  /// A bend that is square outside and round inside. Ends where `addRadiusElbow` of the ratio does.
  virtual bool addCableTraySquareRadiusElbow(AcGePoint3d& head, double width, double height,
                                             AcGePoint3d& tail, Axes headAxes, Axes tailAxes,
                                             double radiusRatio, int detail) = 0;
  /// As the square elbow's preparation, for a head and two tails.
  virtual bool addWyePrep(AcGePoint3d& head, double headWidth, double headHeight, AcGePoint3d& tail1,
                          double width1, double height1, AcGePoint3d& tail2, double width2, double height2,
                          AcGeVector3d* headAxes, AcGeVector3d* axes1, AcGeVector3d* axes2, bool rectangular,
                          Corners headCorners, Corners corners1, Corners corners2, Places places1,
                          Places places2, Places places3, bool collars, double collarLength) = 0;
  virtual bool addWye(AcGePoint3d& head, double headWidth, double headHeight, AcGePoint3d& tail1,
                      double width1, double height1, AcGePoint3d& tail2, double width2, double height2,
                      AcGePoint3d& headFar, Axes headAxes, Axes axes1, Axes axes2, bool rectangular,
                      const AModeler::Point3d* headCorners, const AModeler::Point3d* corners1,
                      const AModeler::Point3d* corners2, const AcGePoint3d* places1,
                      const AcGePoint3d* places2, const AcGePoint3d* places3, int detail) = 0;
  /// Cuts the body that was added last with the plane through a, b and c, and keeps what lies on the side of
  /// the fourth point. Nothing happens when the points make no plane or the fourth lies in it.
  virtual void sliceLast(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c,
                         const AcGePoint3d& side) = 0;
  virtual void clearBodies() = 0;

  /// What it is called when it is handed on.
  virtual void setKind(BrxSolidKind kind) = 0;
};
