#include "solid/hvac_solid.h"

#include <algorithm>

#include "solid/boolean.h"
#include "solid/chain.h"
#include "solid/elbow.h"
#include "solid/prism.h"
#include "solid/wye.h"

/// The operations: arguments into the kernel's words, and results back into them.

using solid::Body;
using solid::SectionEnd;

AcRxClass* HvacSolid::descriptor = nullptr;

void HvacSolid::rxInit() {
  constexpr int dwgVersion = 1, maintenanceVersion = 1, proxyMayBeErased = 1;
  descriptor = newBrxClass(
      L"kv_hvacSolid", L"AcDbEntity", dwgVersion, maintenanceVersion, proxyMayBeErased,
      []() -> AcRxObject* { return new HvacSolid; }, AcDbCurve::createOdObjectImp, L"KV_HVACSOLID",
      L"\"Solid|Korvane Software, Inc|www.korvane.example\"");
}

void HvacSolid::rxRemove() {
  deleteAcRxClass(descriptor);
  descriptor = nullptr;
}

namespace {

SectionEnd sectionEnd(const AcGePoint3d& centre, bool rectangular, double width, double height,
                      const AcGeVector3d* axes) {
  return {centre, rectangular, width, height, {axes[0], axes[1], axes[2]}};
}

void copyCorners(const solid::Point* from, AModeler::Point3d* to) {
  for (int i = 0; i < 8; ++i) to[i] = {from[i].x, from[i].y, from[i].z};
}

}  // namespace

bool HvacSolid::addBody(Body body) {
  if (body.empty()) return false;
  assertWriteEnabled();
  bodies_.push_back(std::move(body));
  return true;
}

bool HvacSolid::addTransition(const AcGePoint3d& start, bool startRectangular, double startWidth,
                              double startHeight, const AcGePoint3d& end, bool endRectangular,
                              double endWidth, double endHeight, Axes startAxes, Axes endAxes, int detail) {
  return addBody(solid::transition(sectionEnd(start, startRectangular, startWidth, startHeight, startAxes),
                                   sectionEnd(end, endRectangular, endWidth, endHeight, endAxes), detail));
}

bool HvacSolid::subtractTransition(const AcGePoint3d& start, bool startRectangular, double startWidth,
                                   double startHeight, const AcGePoint3d& end, bool endRectangular,
                                   double endWidth, double endHeight, Axes startAxes, Axes endAxes,
                                   int detail) {
  const Body tool = solid::transition(sectionEnd(start, startRectangular, startWidth, startHeight, startAxes),
                                      sectionEnd(end, endRectangular, endWidth, endHeight, endAxes), detail);
  if (tool.empty()) return false;
  assertWriteEnabled();
  for (Body& each : bodies_) solid::subtract(each, tool);
  std::erase_if(bodies_, [](const Body& each) { return each.empty(); });
  return true;
}

bool HvacSolid::addSkin(AcGePoint3dArray outline, double thickness) {
  return addBody(solid::skin({outline.begin(), outline.end()}, thickness));
}

bool HvacSolid::doUnion(const kv_hvacSolid* other) {
  const auto* const own = dynamic_cast<const HvacSolid*>(other);
  if (!own || own == this) return false;
  assertWriteEnabled();
  bodies_.insert(bodies_.end(), own->bodies_.begin(), own->bodies_.end());
  solid::unite(bodies_);
  return true;
}

bool HvacSolid::addSquareElbowPrep(AcGePoint3d& head, double headWidth, double headHeight, AcGePoint3d& tail,
                                   double tailWidth, double tailHeight, Axes headAxes, Axes tailAxes,
                                   bool rectangular, Corners headCorners, Corners tailCorners, Places places,
                                   bool collars, double collarLength) {
  SectionEnd from = sectionEnd(head, rectangular, headWidth, headHeight, headAxes);
  SectionEnd to = sectionEnd(tail, rectangular, tailWidth, tailHeight, tailAxes);
  solid::Mitre mitre;
  if (!solid::prepareSquareElbow(from, to, collars ? collarLength : 0, mitre)) return false;
  head = from.centre, tail = to.centre;
  copyCorners(mitre.head, headCorners);
  copyCorners(mitre.tail, tailCorners);
  const AcGePoint3d filled[] = {mitre.meet, mitre.inner, mitre.outer, head,
                                tail,       mitre.along, mitre.meet,  mitre.meet};
  std::copy(std::begin(filled), std::end(filled), places);
  return true;
}

bool HvacSolid::addSquareElbow(const AcGePoint3d& head, double headWidth, double headHeight,
                               const AcGePoint3d& tail, double tailWidth, double tailHeight, Axes headAxes,
                               Axes tailAxes, bool rectangular, const AModeler::Point3d* headCorners,
                               const AModeler::Point3d*, const AcGePoint3d*, int detail) {
  solid::Point corners[8];
  for (int i = 0; i < 8; ++i) corners[i] = {headCorners[i].x, headCorners[i].y, headCorners[i].z};
  return addBody(solid::squareElbow(sectionEnd(head, rectangular, headWidth, headHeight, headAxes),
                                    sectionEnd(tail, rectangular, tailWidth, tailHeight, tailAxes), corners,
                                    detail));
}

bool HvacSolid::addRadiusElbow(AcGePoint3d& head, double headWidth, double headHeight, double, double,
                               AcGePoint3d& tail, double tailWidth, double tailHeight, Axes headAxes,
                               Axes tailAxes, bool rectangular, double radiusRatio, bool toCentre, int detail,
                               bool makeBodies) {
  SectionEnd from = sectionEnd(head, rectangular, headWidth, headHeight, headAxes);
  SectionEnd to = sectionEnd(tail, rectangular, tailWidth, tailHeight, tailAxes);
  if (!(radiusRatio > 0)) return false;
  const double radius = radiusRatio * headWidth + (toCentre ? 0 : headWidth / 2);
  Body made;
  if (!solid::radiusElbow(from, to, radius, detail, makeBodies ? &made : nullptr)) return false;
  head = from.centre, tail = to.centre;
  if (makeBodies) addBody(std::move(made));
  return true;
}

bool HvacSolid::addCableTraySquareRadiusElbow(AcGePoint3d& head, double width, double height,
                                              AcGePoint3d& tail, Axes headAxes, Axes tailAxes,
                                              double radiusRatio, int detail) {
  SectionEnd from = sectionEnd(head, true, width, height, headAxes);
  SectionEnd to = sectionEnd(tail, true, width, height, tailAxes);
  if (!(radiusRatio > 0)) return false;
  Body made = solid::trayElbow(from, to, radiusRatio * width, detail);
  if (made.empty() || !solid::radiusElbow(from, to, radiusRatio * width, detail, nullptr)) return false;
  head = from.centre, tail = to.centre;
  return addBody(std::move(made));
}

bool HvacSolid::addWyePrep(AcGePoint3d& head, double headWidth, double headHeight, AcGePoint3d& tail1,
                           double width1, double height1, AcGePoint3d& tail2, double width2, double height2,
                           AcGeVector3d* headAxes, AcGeVector3d* axes1, AcGeVector3d* axes2, bool rectangular,
                           Corners headCorners, Corners corners1, Corners corners2, Places places1,
                           Places places2, Places places3, bool collars, double collarLength) {
  solid::Limbs limbs = {sectionEnd(head, rectangular, headWidth, headHeight, headAxes),
                        sectionEnd(tail1, rectangular, width1, height1, axes1),
                        sectionEnd(tail2, rectangular, width2, height2, axes2)};
  solid::Junction junction;
  if (!solid::prepareWye(limbs, collars ? collarLength : 0, junction)) return false;
  head = limbs[0].centre, tail1 = limbs[1].centre, tail2 = limbs[2].centre;
  AModeler::Point3d* const corners[] = {headCorners, corners1, corners2};
  AcGePoint3d* const places[] = {places1, places2, places3};
  for (size_t i = 0; i < 3; ++i) {
    copyCorners(junction.corners[i].data(), corners[i]);
    std::copy(junction.pairs[i].begin(), junction.pairs[i].end(), places[i]);
    places[i][6] = places[i][7] = junction.meet;
  }
  return true;
}

bool HvacSolid::addWye(AcGePoint3d& head, double headWidth, double headHeight, AcGePoint3d& tail1,
                       double width1, double height1, AcGePoint3d& tail2, double width2, double height2,
                       AcGePoint3d&, Axes headAxes, Axes axes1, Axes axes2, bool rectangular,
                       const AModeler::Point3d*, const AModeler::Point3d*, const AModeler::Point3d*,
                       const AcGePoint3d* places1, const AcGePoint3d*, const AcGePoint3d*, int detail) {
  return addBody(solid::wye({sectionEnd(head, rectangular, headWidth, headHeight, headAxes),
                             sectionEnd(tail1, rectangular, width1, height1, axes1),
                             sectionEnd(tail2, rectangular, width2, height2, axes2)},
                            places1[0], detail));
}

void HvacSolid::sliceLast(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c,
                          const AcGePoint3d& side) {
  if (bodies_.empty()) return;
  AcGeVector3d normal = (b - a).crossProduct(c - a);
  const double length = normal.length(), size = std::max((b - a).length(), (c - a).length());
  if (!(length > 1e-9 * size * size) || !solid::isUsable(length)) return;
  normal = normal / length;
  const double height = (side - a).dotProduct(normal);
  if (!(std::abs(height) > 1e-9 * size)) return;
  assertWriteEnabled();
  solid::cutTo(bodies_.back(), {a, height > 0 ? -normal : normal});
  if (bodies_.back().empty()) bodies_.pop_back();
}

void HvacSolid::clearBodies() {
  assertWriteEnabled();
  bodies_.clear();
}

void HvacSolid::setKind(BrxSolidKind kind) {
  assertWriteEnabled();
  kind_ = kind;
}
