#include "host/window/variables.h"

#include "host/documents/variables.h"

namespace host {

int intVariable(std::wstring_view name, int otherwise) {
  const auto value = getVariable(name);
  const int* const number = value ? std::get_if<int>(&*value) : nullptr;
  return number ? *number : otherwise;
}

double realVariable(std::wstring_view name, double otherwise) {
  const auto value = getVariable(name);
  const double* const number = value ? std::get_if<double>(&*value) : nullptr;
  return number ? *number : otherwise;
}

AcGePoint3d lastPoint() {
  const auto value = getVariable(L"LASTPOINT");
  const Point* const point = value ? std::get_if<Point>(&*value) : nullptr;
  return point ? AcGePoint3d{point->x, point->y, point->z} : AcGePoint3d{};
}

void toggleVariable(std::wstring_view name, int bit) { setVariable(name, intVariable(name, 0) ^ bit); }

}  // namespace host
