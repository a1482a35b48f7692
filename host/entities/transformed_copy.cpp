#include "host/entities/transformed_copy.h"

#include <memory>

#include "brx/db_ellipse.h"
#include "brx/db_text.h"
#include "host/database/fields.h"
#include "host/geometry/ellipse_arc.h"

namespace host {
namespace {

/// Parts of parts, in files that hold cycles too.
constexpr int deepest = 64;
thread_local int depth = 0;

Acad::ErrorStatus appendEllipse(const AcDbArc& arc, const AcGeMatrix3d& matrix, AcDbVoidPtrArray& copies) {
  const double start = wrapped(arc.startAngle());
  const EllipseArc moved =
      EllipseArc::circle(arc.center(), arc.normal(), arc.radius(), start, start + arc.sweep())
          .transformed(matrix)
          .alongAxes();
  auto made = std::make_unique<AcDbEllipse>();
  const double length = moved.u.length();
  if (!(length > 0)) return Acad::eDegenerateGeometry;
  const Acad::ErrorStatus status =
      made->set(moved.centre, moved.normal(), moved.u, std::min(1.0, moved.v.length() / length), moved.start,
                moved.end);
  if (status != Acad::eOk) return status;
  made->setPropertiesFrom(&arc);
  copies.append(static_cast<AcDbEntity*>(made.release()));
  return Acad::eOk;
}

}  // namespace

Acad::ErrorStatus stretchText(AcDbText& text, const AcGeMatrix3d& matrix) {
  const AcGeMatrix3d plane = AcGeMatrix3d::planeToWorld(text.normal());
  const AcGeVector3d along = plane * AcGeVector3d{std::cos(text.rotation()), std::sin(text.rotation()), 0};
  const AcGeVector3d line = matrix * along, up = matrix * text.normal().crossProduct(along);
  const AcGeVector3d normal = line.crossProduct(up).normal();
  const double width = line.length(), height = width > 0 ? line.crossProduct(up).length() / width : 0;
  if (!(height > 0)) return Acad::eDegenerateGeometry;
  const AcGePoint3d position = matrix * text.position(), alignment = matrix * text.alignmentPoint();
  text.setNormal(normal);
  text.setRotation((AcGeMatrix3d::worldToPlane(normal) * line).convert2d().angle());
  text.setHeight(text.height() * height);
  text.setWidthFactor(text.widthFactor() * width / height);
  text.setPosition(position);
  return text.isDefaultAlignment() ? Acad::eOk : text.setAlignmentPoint(alignment);
}

namespace {

Acad::ErrorStatus appendParts(const AcDbEntity& entity, const AcGeMatrix3d& matrix,
                              AcDbVoidPtrArray& copies) {
  AcDbVoidPtrArray parts;
  Acad::ErrorStatus status = entity.explode(parts);
  for (void* each : parts) {
    const std::unique_ptr<AcDbEntity> part(static_cast<AcDbEntity*>(each));
    const Acad::ErrorStatus own = appendTransformed(*part, matrix, copies);
    if (own != Acad::eOk) status = own;
  }
  return status;
}

}  // namespace

Acad::ErrorStatus appendTransformed(const AcDbEntity& entity, const AcGeMatrix3d& matrix,
                                    AcDbVoidPtrArray& copies) {
  std::unique_ptr<AcDbEntity> copy(static_cast<AcDbEntity*>(entity.clone()));
  if (!copy) return Acad::eNotApplicable;
  const Acad::ErrorStatus status = copy->transformBy(matrix);
  if (status == Acad::eOk) return copies.append(copy.release()), Acad::eOk;
  if (status != Acad::eCannotScaleNonUniformly) return status;
  if (AcDbArc::cast(&entity) || AcDbCircle::cast(&entity)) {
    return appendEllipse(static_cast<const AcDbArc&>(entity), matrix, copies);
  }
  if (AcDbText* const text = AcDbText::cast(copy.get())) {
    const Acad::ErrorStatus stretched = stretchText(*text, matrix);
    if (stretched == Acad::eOk) copies.append(copy.release());
    return stretched;
  }
  if (depth >= deepest) return Acad::eSelfReference;
  ++depth;
  const Acad::ErrorStatus parts = appendParts(entity, matrix, copies);
  --depth;
  return parts;
}

}  // namespace host
