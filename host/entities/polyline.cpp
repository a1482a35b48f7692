#include <algorithm>

#include "host/database/fields.h"
#include "host/entities/path.h"

ACRX_DEFINE_MEMBERS(AcDbPolyline)

host::Path host::pathOf(const AcDbPolyline& line) {
  const AcGeMatrix3d plane = AcGeMatrix3d::planeToWorld(line.normal());
  const auto& vertices = line.vertices();
  const auto place = [&](size_t index) {
    const AcGePoint2d& own = vertices[index % vertices.size()].point;
    return plane * AcGePoint3d{own.x, own.y, line.elevation()};
  };
  host::Path path(line.isClosed());
  const size_t count = vertices.size() < 2 ? 0 : vertices.size() - (line.isClosed() ? 0 : 1);
  for (size_t i = 0; i < count; ++i) {
    const AcDbPolyline::Vertex& v = vertices[i];
    path.add({place(i), place(i + 1), v.bulge, line.normal(), v.startWidth, v.endWidth});
  }
  return path;
}

HOST_FOLLOWS_PATH(AcDbPolyline)

Acad::ErrorStatus AcDbPolyline::addVertexAt(unsigned index, const AcGePoint2d& point, double bulge,
                                            double startWidth, double endWidth) {
  if (index > numVerts()) return Acad::eInvalidIndex;
  assertWriteEnabled();
  vertices_.insert(vertices_.begin() + index,
                   {point, bulge, std::max(startWidth, 0.0), std::max(endWidth, 0.0)});
  return Acad::eOk;
}
Acad::ErrorStatus AcDbPolyline::removeVertexAt(unsigned index) {
  if (index >= numVerts()) return Acad::eInvalidIndex;
  assertWriteEnabled();
  vertices_.erase(vertices_.begin() + index);
  return Acad::eOk;
}
Acad::ErrorStatus AcDbPolyline::setPointAt(unsigned index, const AcGePoint2d& point) {
  if (index >= numVerts()) return Acad::eInvalidIndex;
  assertWriteEnabled();
  return vertices_[index].point = point, Acad::eOk;
}
Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned index, AcGePoint2d& point) const {
  if (index >= numVerts()) return Acad::eInvalidIndex;
  return point = vertices_[index].point, Acad::eOk;
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
bool AcDbPolyline::subWorldDraw(AcGiWorldDraw* draw) { return host::pathOf(*this).draw(*draw), true; }
Acad::ErrorStatus AcDbPolyline::subGetStretchPoints(AcGePoint3dArray& points) const {
  for (unsigned i = 0; i < numVerts(); ++i) {
    AcGePoint3d point;
    getPointAt(i, point);
    points.append(point);
  }
  return Acad::eOk;
}
Acad::ErrorStatus AcDbPolyline::subMoveStretchPointsAt(const AcDbIntArray& indices,
                                                       const AcGeVector3d& offset) {
  assertWriteEnabled();
  const AcGeVector3d own = AcGeMatrix3d::worldToPlane(normal_) * offset;
  for (unsigned i = 0; i < numVerts(); ++i) {
    if (indices.contains(static_cast<int>(i))) vertices_[i].point = vertices_[i].point + own.convert2d();
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
/// The width that all vertices share; 0 where they differ.
static double constantWidth(const std::vector<AcDbPolyline::Vertex>& vertices) {
  const double width = vertices.empty() ? 0 : vertices.front().startWidth;
  const auto has = [&](const auto& v) { return v.startWidth == width && v.endWidth == width; };
  return std::all_of(vertices.begin(), vertices.end(), has) ? width : 0;
}

Acad::ErrorStatus AcDbPolyline::dxfOutFields(AcDbDxfFiler* filer) const {
  AcDbEntity::dxfOutFields(filer);
  filer->writeSubclass(L"AcDbPolyline");
  filer->writeInt32(90, static_cast<Adesk::Int32>(numVerts()));
  filer->writeInt16(70, closed_ ? 1 : 0);
  if (const double width = constantWidth(vertices_); width > 0) filer->writeDouble(43, width);
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
  bool first = true;
  double allWidths = 0;
  while (filer->readItem(&item) == Acad::eOk) {
    if (item.restype == 70) closed_ = item.resval.rint & 1;
    if (item.restype == 43) allWidths = item.resval.rreal;
    if (item.restype == 38) elevation_ = item.resval.rreal;
    if (item.restype == 210) normal_ = asPnt3d(item.resval.rpoint).asVector();
    if (item.restype == 10 && first) vertices_.clear(), first = false;
    if (item.restype == 10)
      vertices_.push_back({{item.resval.rpoint[0], item.resval.rpoint[1]}, 0, allWidths, allWidths});
    if (first) continue;
    if (item.restype == 40) vertices_.back().startWidth = item.resval.rreal;
    if (item.restype == 41) vertices_.back().endWidth = item.resval.rreal;
    if (item.restype == 42) vertices_.back().bulge = item.resval.rreal;
  }
  return filer->filerStatus();
}
