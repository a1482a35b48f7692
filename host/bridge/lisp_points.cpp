#include "host/bridge/lisp_points.h"

#include "host/lisp/builtins.h"

namespace host {

AcGePoint3d pointArgument(const lisp::Value& value) {
  double numbers[3] = {};
  size_t count = 0;
  for (const lisp::Value& each : lisp::Elements(value)) {
    if (count == 3 || !each.isNumber()) lisp::failType(L"point:", value);
    numbers[count++] = each.number();
  }
  if (count < 2) lisp::failType(L"point:", value);
  return {numbers[0], numbers[1], numbers[2]};
}

AcGePoint3d pointArgument(const lisp::Call& call, size_t place) { return pointArgument(call[place]); }

lisp::Value pointValue(const AcGePoint3d& point) {
  lisp::ListBuilder list;
  for (const double each : {point.x, point.y, point.z}) list.add(lisp::Value(each));
  return list.take();
}

}  // namespace host
