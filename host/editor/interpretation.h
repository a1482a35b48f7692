#pragma once

#include "host/editor/coordinates.h"
#include "host/editor/request.h"

namespace host {

/// The input doesn't suit; the host says so and asks again.
struct Refusal {
  std::wstring message;
};
/// The first of two points of a distance or an angle.
struct FirstPoint {
  AcGePoint3d point;
};

/// What an item means to a request. Picks of entities by a point are left as points, since finding what lies
/// there is not for here.
std::variant<Answer, Refusal, FirstPoint> interpret(const Request& request, const InputItem& item,
                                                    const CoordinateRules& rules);

}  // namespace host
