#include "host/entities/carried_transform.h"

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <memory>
#include <span>

#include "brx/db_block.h"
#include "brx/db_database.h"
#include "host/database/stubs.h"
#include "host/entities/transformed_copy.h"

namespace host {

PlaneChange::PlaneChange(const AcGeMatrix3d& matrix, const AcGeVector3d& normal)
    : normalBehind((matrix * normal).normal()),
      local(AcGeMatrix3d::worldToPlane(normalBehind) * matrix * AcGeMatrix3d::planeToWorld(normal)),
      scale(matrix.scale()),
      turn(std::atan2(local(1, 0), local(0, 0))),
      mirrored(matrix.det() < 0) {}

namespace {

/// What the value of a group code is.
enum class Role { point, vector, direction, planePoint, planeAngle, length };
struct Rule {
  int code;
  Role role;
};

/// What may be done to entities of a kind.
enum class Takes { anything, similarity, turning };  // the latter two without mirrors; turning without scale

struct Kind {
  std::wstring_view name;
  Takes takes;
  std::span<const Rule> rules;
};

constexpr Rule image[] = {{10, Role::point}, {11, Role::vector}, {12, Role::vector}};
constexpr Rule ray[] = {{10, Role::point}, {11, Role::direction}};
constexpr Rule mesh[] = {{10, Role::point}};
constexpr Rule multiline[] = {{10, Role::point},     {11, Role::point},  {12, Role::direction},
                              {13, Role::direction}, {40, Role::length}, {41, Role::length},
                              {42, Role::length}};
constexpr Rule shape[] = {
    {10, Role::planePoint}, {39, Role::length}, {40, Role::length}, {50, Role::planeAngle}};
constexpr Rule onDirection[] = {{10, Role::point}, {11, Role::direction}};
constexpr Rule underlay[] = {{10, Role::planePoint},
                             {41, Role::length},
                             {42, Role::length},
                             {43, Role::length},
                             {50, Role::planeAngle}};
constexpr Rule dimension[] = {{10, Role::point}, {11, Role::planePoint}, {12, Role::planePoint},
                              {13, Role::point}, {14, Role::point},      {15, Role::point},
                              {16, Role::point}, {40, Role::length},     {50, Role::planeAngle}};

constexpr Kind kinds[] = {
    {L"ACAD_TABLE", Takes::turning, onDirection},
    {L"DGNUNDERLAY", Takes::similarity, underlay},
    {L"DWFUNDERLAY", Takes::similarity, underlay},
    {L"IMAGE", Takes::anything, image},
    {L"MESH", Takes::anything, mesh},
    {L"MLINE", Takes::similarity, multiline},
    {L"PDFUNDERLAY", Takes::similarity, underlay},
    {L"RAY", Takes::anything, ray},
    {L"SHAPE", Takes::similarity, shape},
    {L"TOLERANCE", Takes::turning, onDirection},
    {L"WIPEOUT", Takes::anything, image},
    {L"XLINE", Takes::anything, ray},
};

Acad::ErrorStatus suits(Takes takes, const AcGeMatrix3d& matrix) {
  if (takes == Takes::anything) return Acad::eOk;
  if (!matrix.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
  const bool scales = std::abs(matrix.scale() - 1) > 1e-9;
  const bool refused = matrix.det() < 0 || (takes == Takes::turning && scales);
  return refused ? Acad::eNotApplicable : Acad::eOk;
}

void setPoint(resbuf& group, const AcGePoint3d& point) {
  double* const to = group.resval.rpoint;
  const bool planar = std::isnan(to[2]);
  to[0] = point.x, to[1] = point.y;
  if (!planar) to[2] = point.z;
}

AcGePoint3d pointOf(const resbuf& group) {
  AcGePoint3d point = asPnt3d(group.resval.rpoint);
  if (std::isnan(point.z)) point.z = 0;
  return point;
}

void change(resbuf& group, Role role, const AcGeMatrix3d& matrix, const PlaneChange& plane) {
  switch (role) {
    case Role::point:
      return setPoint(group, matrix * pointOf(group));
    case Role::planePoint:
      return setPoint(group, plane.local * pointOf(group));
    case Role::vector:
    case Role::direction: {
      AcGeVector3d moved = matrix * pointOf(group).asVector();
      if (role == Role::direction) moved.normalize();
      return setPoint(group, AcGePoint3d{} + moved);
    }
    case Role::planeAngle:
      group.resval.rreal = plane.angle(group.resval.rreal);
      return;
    case Role::length:
      group.resval.rreal *= plane.scale;
      return;
  }
}

/// Groups of the entity itself, not of what follows it. False when its plane can't be told.
bool applyRules(GroupList& groups, std::span<const Rule> rules, const AcGeMatrix3d& matrix) {
  const resbuf* const normal = groups.find(210);
  const PlaneChange plane(matrix, normal ? pointOf(*normal).asVector() : AcGeVector3d::kZAxis);
  const bool needsPlane = std::any_of(rules.begin(), rules.end(), [](const Rule& each) {
    return each.role == Role::planePoint || each.role == Role::planeAngle;
  });
  if (needsPlane && !normal && !plane.normalBehind.isEqualTo(AcGeVector3d::kZAxis)) return false;
  for (resbuf* each = groups.head(); each && each->restype != 0; each = each->rbnext) {
    if (each->restype == 210) setPoint(*each, AcGePoint3d{} + plane.normalBehind);
    for (const Rule& rule : rules) {
      if (rule.code == each->restype) change(*each, rule.role, matrix, plane);
    }
  }
  return true;
}

/// Vertices of meshes follow their owner; faces among them have no place.
void transformVertices(GroupList& groups, const AcGeMatrix3d& matrix) {
  enum : int { isPlace = 64, isOfFaces = 128 };
  bool inVertex = false;
  resbuf* place = nullptr;
  for (resbuf* each = groups.head(); each; each = each->rbnext) {
    if (each->restype == 0) inVertex = std::wcscmp(each->resval.rstring, L"VERTEX") == 0;
    if (inVertex && each->restype == 10) place = each;
    if (!inVertex || each->restype != 70 || !place) continue;
    const int flags = each->resval.rint;
    if (!(flags & isOfFaces) || (flags & isPlace)) setPoint(*place, matrix * pointOf(*place));
    place = nullptr;
  }
}

using Copies = std::vector<std::unique_ptr<AcDbEntity>>;

/// The picture of a dimension, moved. False when a part of it can't be.
bool copyPicture(const AcDbBlockTableRecord& block, const AcGeMatrix3d& matrix, Copies& copies) {
  AcDbVoidPtrArray made;
  bool good = true;
  for (const AcDbObjectId& id : block.entityIds()) {
    const AcDbEntity* const entity = id.isErased() ? nullptr : AcDbEntity::cast(objectOf(id));
    if (entity) good = good && appendTransformed(*entity, matrix, made) == Acad::eOk;
  }
  for (void* const each : made) copies.emplace_back(static_cast<AcDbEntity*>(each));
  return good;
}

std::wstring addPicture(AcDbDatabase& drawing, Copies copies) {
  AcDbObjectPointer<AcDbBlockTable> table(drawing.blockTableId(), AcDb::kForWrite);
  if (!table.object()) return {};
  std::wstring name;
  for (size_t number = table->recordIds().size();; ++number) {
    name = L"*D" + std::to_wstring(number);
    if (!table->has(name.c_str())) break;
  }
  auto* const record = new AcDbBlockTableRecord;
  record->setName(name.c_str());
  table->add(record);
  HostAccess::setBlock(*record, {}, 1, L"", L"");
  for (auto& each : copies) {
    if (record->appendAcDbEntity(each.get()) == Acad::eOk) each.release()->close();
  }
  record->close();
  return name;
}

void setText(GroupList& groups, int code, const std::wstring& text) {
  GroupList made;
  bool done = false;
  for (const resbuf* each = groups.head(); each; each = each->rbnext) {
    if (each->restype == code && !done) {
      made.append(code, text.c_str());
      done = true;
    } else {
      made.append(*each);
    }
  }
  groups = std::move(made);
}

bool isAngular(const GroupList& groups) {
  const resbuf* const type = groups.find(70);
  const int kind = type ? type->resval.rint & 7 : 0;
  return kind == 2 || kind == 5;
}

Acad::ErrorStatus transformDimension(const AcDbProxyEntity& entity, GroupList& groups,
                                     const AcGeMatrix3d& matrix) {
  if (!matrix.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
  if (!entity.database()) return Acad::eNotInDatabase;
  if (!applyRules(groups, dimension, matrix)) return Acad::eNotApplicable;
  for (resbuf* each = groups.head(); each; each = each->rbnext) {
    if (each->restype == 42 && !isAngular(groups)) each->resval.rreal *= matrix.scale();
  }
  const resbuf* const name = groups.find(2);
  AcDbObjectId id;
  {
    AcDbObjectPointer<AcDbBlockTable> table(entity.database()->blockTableId());
    if (!name || !table.object() || table->getAt(name->resval.rstring, id) != Acad::eOk) return Acad::eOk;
  }
  const auto* const block = AcDbBlockTableRecord::cast(objectOf(id));
  Copies copies;
  if (!copyPicture(*block, matrix, copies)) return Acad::eNotApplicable;
  const std::wstring fresh = addPicture(*entity.database(), std::move(copies));
  if (fresh.empty()) return Acad::eNotApplicable;
  setText(groups, 2, fresh);
  return Acad::eOk;
}

Acad::ErrorStatus transformGroups(const AcDbProxyEntity& entity, GroupList& groups,
                                  const AcGeMatrix3d& matrix) {
  const std::wstring_view name = entity.originalDxfName();
  if (name == L"DIMENSION") return transformDimension(entity, groups, matrix);
  if (name == L"POLYLINE") return transformVertices(groups, matrix), Acad::eOk;
  if (name == L"HATCH") {
    if (!matrix.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
    return transformHatch(groups, matrix) ? Acad::eOk : Acad::eNotApplicable;
  }
  if (name == L"MULTILEADER" || name == L"MLEADER") {
    const Acad::ErrorStatus status = suits(Takes::similarity, matrix);
    if (status != Acad::eOk) return status;
    return transformMultileader(groups, matrix) ? Acad::eOk : Acad::eNotApplicable;
  }
  const auto kind =
      std::find_if(std::begin(kinds), std::end(kinds), [&](const Kind& each) { return each.name == name; });
  if (kind == std::end(kinds)) return Acad::eNotApplicable;
  const Acad::ErrorStatus status = suits(kind->takes, matrix);
  if (status != Acad::eOk) return status;
  return applyRules(groups, kind->rules, matrix) ? Acad::eOk : Acad::eNotApplicable;
}

}  // namespace

}  // namespace host

/// Where the kind isn't known, or can't take this matrix, nothing is changed. A dimension gets a block of its
/// own for its picture.
Acad::ErrorStatus AcDbProxyEntity::subTransformBy(const AcGeMatrix3d& matrix) {
  // Bytes that a class has filed mean something to it alone.
  if (!data_->bytes.empty()) return Acad::eNotApplicable;
  host::GroupList changed = *data_->groups;
  const Acad::ErrorStatus status = host::transformGroups(*this, changed, matrix);
  if (status != Acad::eOk) return status;
  assertWriteEnabled();
  *data_->groups = std::move(changed);
  return Acad::eOk;
}
