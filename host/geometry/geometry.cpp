#include <utility>

#include "brx/ge_matrix.h"

AcGeTol AcGeContext::gTol;
const AcGeVector3d AcGeVector3d::kXAxis{1, 0, 0}, AcGeVector3d::kYAxis{0, 1, 0},
    AcGeVector3d::kZAxis{0, 0, 1}, AcGeVector3d::kIdentity{0, 0, 0};
const AcGePoint3d AcGePoint3d::kOrigin{0, 0, 0};
const AcGeMatrix3d AcGeMatrix3d::kIdentity;

/// The arbitrary axis rule: below this slope the normal counts as lying along Z.
static constexpr double arbitraryLimit = 1.0 / 64;

AcGeVector3d AcGeVector3d::perpVector() const {
  const bool nearZ = std::abs(x) < arbitraryLimit && std::abs(y) < arbitraryLimit;
  return (nearZ ? kYAxis : kZAxis).crossProduct(*this).normalize();
}

double AcGeVector3d::angleTo(const AcGeVector3d& o, const AcGeVector3d& axis) const {
  const double angle = angleTo(o);
  return crossProduct(o).dotProduct(axis) < 0 ? 6.283185307179586477 - angle : angle;
}

AcGeVector3d& AcGeVector3d::rotateBy(double angle, const AcGeVector3d& axis) {
  return transformBy(AcGeMatrix3d::rotation(angle, axis));
}

AcGeVector3d& AcGeVector3d::transformBy(const AcGeMatrix3d& m) {
  return *this = m.column(0) * x + m.column(1) * y + m.column(2) * z;
}

AcGePoint3d& AcGePoint3d::transformBy(const AcGeMatrix3d& m) {
  const AcGeVector3d moved = asVector().transformBy(m) + m.translation();
  return *this = {moved.x, moved.y, moved.z};
}

AcGeMatrix3d AcGeMatrix3d::operator*(const AcGeMatrix3d& right) const {
  AcGeMatrix3d product;
  for (int i = 0; i < 4; ++i) {
    for (int j = 0; j < 4; ++j) {
      product.entry[i][j] = 0;
      for (int k = 0; k < 4; ++k) product.entry[i][j] += entry[i][k] * right.entry[k][j];
    }
  }
  return product;
}

double AcGeMatrix3d::det() const { return column(0).dotProduct(column(1).crossProduct(column(2))); }

/// Rows of the inverse are the cross products of the columns over the determinant.
AcGeMatrix3d AcGeMatrix3d::inverse() const {
  const AcGeVector3d a = column(0), b = column(1), c = column(2);
  const double scale = 1 / det();
  const AcGeVector3d rows[3] = {b.crossProduct(c) * scale, c.crossProduct(a) * scale,
                                a.crossProduct(b) * scale};
  AcGeMatrix3d made;
  for (int i = 0; i < 3; ++i) {
    made.entry[i][0] = rows[i].x, made.entry[i][1] = rows[i].y, made.entry[i][2] = rows[i].z;
    made.entry[i][3] = -rows[i].dotProduct(translation());
  }
  return made;
}

bool AcGeMatrix3d::isUniScaledOrtho(const AcGeTol& tol) const {
  const AcGeVector3d a = column(0), b = column(1), c = column(2);
  const double size = a.length(), limit = tol.equalVector() * (1 + size);
  return size > tol.equalVector() && std::abs(b.length() - size) <= limit &&
         std::abs(c.length() - size) <= limit && std::abs(a.dotProduct(b)) <= limit * size &&
         std::abs(b.dotProduct(c)) <= limit * size && std::abs(c.dotProduct(a)) <= limit * size;
}

AcGeMatrix3d& AcGeMatrix3d::setToCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& x,
                                             const AcGeVector3d& y, const AcGeVector3d& z) {
  *this = {};
  const AcGeVector3d columns[4] = {x, y, z, origin.asVector()};
  for (int i = 0; i < 4; ++i) {
    entry[0][i] = columns[i].x, entry[1][i] = columns[i].y, entry[2][i] = columns[i].z;
  }
  return *this;
}

AcGeMatrix3d AcGeMatrix3d::translation(const AcGeVector3d& by) {
  AcGeMatrix3d made;
  made.entry[0][3] = by.x, made.entry[1][3] = by.y, made.entry[2][3] = by.z;
  return made;
}

/// Each axis turned about the unit axis (Rodrigues' formula).
AcGeMatrix3d AcGeMatrix3d::rotation(double angle, const AcGeVector3d& about, const AcGePoint3d& centre) {
  const AcGeVector3d axis = about.normal();
  const double c = std::cos(angle), s = std::sin(angle);
  const auto turned = [&](const AcGeVector3d& v) {
    return v * c + axis.crossProduct(v) * s + axis * (axis.dotProduct(v) * (1 - c));
  };
  AcGeMatrix3d made;
  made.setToCoordSystem({}, turned({1, 0, 0}), turned({0, 1, 0}), turned({0, 0, 1}));
  return translation(centre - AcGePoint3d{} - made * (centre - AcGePoint3d{})) * made;
}

AcGeMatrix3d AcGeMatrix3d::scaling(double factor, const AcGePoint3d& centre) {
  AcGeMatrix3d made;
  made.entry[0][0] = made.entry[1][1] = made.entry[2][2] = factor;
  return translation(centre.asVector() * (1 - factor)) * made;
}

AcGeMatrix3d AcGeMatrix3d::planeToWorld(const AcGeVector3d& given) {
  const AcGeVector3d normal = given.normal(), x = normal.perpVector();
  AcGeMatrix3d made;
  return made.setToCoordSystem({}, x, normal.crossProduct(x), normal);
}
