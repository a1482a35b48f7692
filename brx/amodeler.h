#pragma once

/// Points of the host's solid modeller.
namespace AModeler {
struct Point3d {
  double x = 0, y = 0, z = 0;
};
}  // namespace AModeler
