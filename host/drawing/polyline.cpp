#include "host/drawing/fields.h"
#include "host/drawing/segments.h"

ACRX_DEFINE_MEMBERS(AcDbPolyline)

namespace host {

unsigned segmentCount(const AcDbPolyline& line) {
  const unsigned count = line.numVerts();
  return count < 2 ? 0 : line.isClosed() ? count : count - 1;
}

std::unique_ptr<AcDbCurve> segmentOf(const AcDbPolyline& line, unsigned index, bool& reversed) {
  AcGePoint3d a, b;
  line.getPointAt(index, a);
  line.getPointAt((index + 1) % line.numVerts(), b);
  const double bulge = line.vertices()[index].bulge;
  reversed = bulge < 0;
  if (bulge == 0) return std::make_unique<AcDbLine>(a, b);
  // Bulge is the tangent of a quarter of the sweep; the centre lies across the chord's middle.
  const AcGeMatrix3d local = AcGeMatrix3d::worldToPlane(line.normal());
  const AcGeVector3d chord = b - a;
  const AcGeVector3d left = line.normal().normal().crossProduct(chord);
  const AcGePoint3d centre = a + chord * 0.5 + left * ((1 - bulge * bulge) / (4 * bulge));
  const AcGeVector3d from = local * (a - centre), to = local * (b - centre);
  const double first = std::atan2(from.y, from.x), last = std::atan2(to.y, to.x);
  return std::make_unique<AcDbArc>(centre, line.normal(), (a - centre).length(), reversed ? last : first,
                                   reversed ? first : last);
}

}  // namespace host

namespace {

double lengthOf(const AcDbCurve& curve) {
  double end = 0, length = 0;
  curve.getEndParam(end);
  curve.getDistAtParam(end, length);
  return length;
}

/// The piece that a parameter falls into, and how far along it as a share of its length.
struct Place {
  std::unique_ptr<AcDbCurve> piece;
  bool reversed = false;
  double share = 0, length = 0;
};

bool findPlace(const AcDbPolyline& line, double param, Place& place) {
  const unsigned count = host::segmentCount(line);
  if (!count || !(param >= 0) || param > count) return false;
  const unsigned index = std::min(static_cast<unsigned>(param), count - 1);
  place.piece = host::segmentOf(line, index, place.reversed);
  place.length = lengthOf(*place.piece);
  place.share = param - index;
  return true;
}

}  // namespace

Acad::ErrorStatus AcDbPolyline::addVertexAt(unsigned index, const AcGePoint2d& point, double bulge,
                                            double startWidth, double endWidth) {
  if (index > numVerts()) return Acad::eInvalidIndex;
  assertWriteEnabled();
  vertices_.insert(vertices_.begin() + index,
                   {point, bulge, std::max(startWidth, 0.0), std::max(endWidth, 0.0)});
  return Acad::eOk;
}
Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned index, AcGePoint3d& point) const {
  if (index >= numVerts()) return Acad::eInvalidIndex;
  const AcGePoint2d& own = vertices_[index].point;
  point = AcGeMatrix3d::planeToWorld(normal_) * AcGePoint3d{own.x, own.y, elevation_};
  return Acad::eOk;
}
Acad::ErrorStatus AcDbPolyline::getBulgeAt(unsigned index, double& bulge) const {
  if (index >= numVerts()) return Acad::eInvalidIndex;
  return bulge = vertices_[index].bulge, Acad::eOk;
}
void AcDbPolyline::setClosed(bool closed) { assertWriteEnabled(), closed_ = closed; }
Acad::ErrorStatus AcDbPolyline::getEndParam(double& param) const {
  return param = host::segmentCount(*this), Acad::eOk;
}
Acad::ErrorStatus AcDbPolyline::getPointAtParam(double param, AcGePoint3d& point) const {
  Place place;
  if (!findPlace(*this, param, place)) return Acad::eInvalidInput;
  return place.piece->getPointAtDist(place.length * (place.reversed ? 1 - place.share : place.share), point);
}
Acad::ErrorStatus AcDbPolyline::getParamAtPoint(const AcGePoint3d& point, double& param) const {
  double best = 1e300;
  for (unsigned i = 0; i < host::segmentCount(*this); ++i) {
    bool reversed = false;
    const auto piece = host::segmentOf(*this, i, reversed);
    AcGePoint3d near;
    double along = 0;
    piece->getClosestPointTo(point, near);
    if (near.distanceTo(point) >= best) continue;
    best = near.distanceTo(point);
    piece->getDistAtPoint(near, along);
    const double length = lengthOf(*piece), share = length > 0 ? along / length : 0;
    param = i + (reversed ? 1 - share : share);
  }
  return best < 1e300 ? Acad::eOk : Acad::eDegenerateGeometry;
}
Acad::ErrorStatus AcDbPolyline::getDistAtParam(double param, double& distance) const {
  Place place;
  if (!findPlace(*this, param, place)) return Acad::eInvalidInput;
  distance = place.share * place.length;
  const unsigned before = std::min(static_cast<unsigned>(param), host::segmentCount(*this) - 1);
  for (unsigned i = 0; i < before; ++i) distance += lengthOf(*host::segmentOf(*this, i, place.reversed));
  return Acad::eOk;
}
Acad::ErrorStatus AcDbPolyline::getParamAtDist(double distance, double& param) const {
  bool reversed = false;
  for (unsigned i = 0; i < host::segmentCount(*this); ++i) {
    const double length = lengthOf(*host::segmentOf(*this, i, reversed));
    if (distance <= length && length > 0) return param = i + distance / length, Acad::eOk;
    distance -= length;
  }
  return Acad::eInvalidInput;
}
Acad::ErrorStatus AcDbPolyline::getFirstDeriv(double param, AcGeVector3d& derivative) const {
  Place place;
  AcGePoint3d point;
  if (!findPlace(*this, param, place)) return Acad::eInvalidInput;
  getPointAtParam(param, point);
  const Acad::ErrorStatus status =
      static_cast<const AcDbCurve&>(*place.piece).getFirstDeriv(point, derivative);
  derivative = derivative.normal() * (place.reversed ? -place.length : place.length);
  return status;
}
Acad::ErrorStatus AcDbPolyline::getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& closest,
                                                  bool) const {
  double param = 0;
  const Acad::ErrorStatus status = getParamAtPoint(given, param);
  return status == Acad::eOk ? getPointAtParam(param, closest) : status;
}
Acad::ErrorStatus AcDbPolyline::subExplode(AcDbVoidPtrArray& entities) const {
  bool reversed = false;
  for (unsigned i = 0; i < host::segmentCount(*this); ++i) {
    AcDbCurve* const piece = host::segmentOf(*this, i, reversed).release();
    piece->setPropertiesFrom(this);
    entities.append(static_cast<AcDbEntity*>(piece));
  }
  return Acad::eOk;
}
bool AcDbPolyline::subWorldDraw(AcGiWorldDraw* draw) {
  bool reversed = false;
  for (unsigned i = 0; i < host::segmentCount(*this); ++i)
    host::segmentOf(*this, i, reversed)->worldDraw(draw);
  return true;
}
Acad::ErrorStatus AcDbPolyline::subGetGeomExtents(AcDbExtents& extents) const {
  bool reversed = false;
  for (unsigned i = 0; i < host::segmentCount(*this); ++i)
    host::segmentOf(*this, i, reversed)->getGeomExtents(extents);
  return extents.isEmpty() ? Acad::eInvalidExtents : Acad::eOk;
}
Acad::ErrorStatus AcDbPolyline::subGetStretchPoints(AcGePoint3dArray& points) const {
  for (unsigned i = 0; i < numVerts(); ++i) {
    AcGePoint3d point;
    getPointAt(i, point);
    points.append(point);
  }
  return Acad::eOk;
}
Acad::ErrorStatus AcDbPolyline::subTransformBy(const AcGeMatrix3d& matrix) {
  if (!matrix.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
  assertWriteEnabled();
  AcGePoint3dArray points;
  subGetStretchPoints(points);
  const bool mirrored = matrix.det() < 0;
  normal_ = (matrix * normal_).normalize() * (mirrored ? -1 : 1);
  const AcGeMatrix3d local = AcGeMatrix3d::worldToPlane(normal_) * matrix;
  for (unsigned i = 0; i < numVerts(); ++i) {
    const AcGePoint3d moved = local * points[static_cast<int>(i)];
    vertices_[i].point = moved.convert2d();
    elevation_ = moved.z;
    // Seen from the normal that was turned over, a mirrored bulge keeps its side.
    vertices_[i].startWidth *= matrix.scale(), vertices_[i].endWidth *= matrix.scale();
  }
  return Acad::eOk;
}
Acad::ErrorStatus AcDbPolyline::dwgOutFields(AcDbDwgFiler* filer) const {
  AcDbEntity::dwgOutFields(filer);
  filer->writeBool(closed_);
  filer->writeDouble(elevation_);
  filer->writeVector3d(normal_);
  filer->writeInt32(static_cast<Adesk::Int32>(numVerts()));
  for (const Vertex& v : vertices_) {
    for (const double value : {v.point.x, v.point.y, v.bulge, v.startWidth, v.endWidth})
      filer->writeDouble(value);
  }
  return filer->filerStatus();
}
Acad::ErrorStatus AcDbPolyline::dwgInFields(AcDbDwgFiler* filer) {
  assertWriteEnabled();
  AcDbEntity::dwgInFields(filer);
  filer->readBool(&closed_);
  filer->readDouble(&elevation_);
  filer->readVector3d(&normal_);
  Adesk::Int32 count = 0;
  filer->readInt32(&count);
  vertices_.clear();
  for (; count > 0 && filer->filerStatus() == Acad::eOk; --count) {
    Vertex& v = vertices_.emplace_back();
    for (double* value : {&v.point.x, &v.point.y, &v.bulge, &v.startWidth, &v.endWidth})
      filer->readDouble(value);
  }
  return filer->filerStatus();
}
Acad::ErrorStatus AcDbPolyline::dxfOutFields(AcDbDxfFiler* filer) const {
  AcDbEntity::dxfOutFields(filer);
  filer->writeSubclass(L"AcDbPolyline");
  filer->writeInt32(90, static_cast<Adesk::Int32>(numVerts()));
  filer->writeInt16(70, closed_ ? 1 : 0);
  filer->writeDouble(38, elevation_);
  for (const Vertex& v : vertices_) {
    filer->writePoint2d(10, v.point);
    filer->writeDouble(40, v.startWidth);
    filer->writeDouble(41, v.endWidth);
    filer->writeDouble(42, v.bulge);
  }
  return filer->writeVector3d(210, normal_);
}
Acad::ErrorStatus AcDbPolyline::dxfInFields(AcDbDxfFiler* filer) {
  assertWriteEnabled();
  const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
  if (status != Acad::eOk) return status;
  if (!filer->atSubclassData(L"AcDbPolyline")) return Acad::eBadDxfSequence;
  resbuf item{};
  while (filer->readItem(&item) == Acad::eOk) {
    if (item.restype == 70) closed_ = item.resval.rint & 1;
    if (item.restype == 38) elevation_ = item.resval.rreal;
    if (item.restype == 210) normal_ = asPnt3d(item.resval.rpoint).asVector();
    if (item.restype == 10) vertices_.push_back({{item.resval.rpoint[0], item.resval.rpoint[1]}, 0, 0, 0});
    if (vertices_.empty()) continue;
    if (item.restype == 40) vertices_.back().startWidth = item.resval.rreal;
    if (item.restype == 41) vertices_.back().endWidth = item.resval.rreal;
    if (item.restype == 42) vertices_.back().bulge = item.resval.rreal;
  }
  return filer->filerStatus();
}
