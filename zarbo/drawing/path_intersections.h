#pragma once

/// Bodies of the functions that tell where one path of a duct run crosses another.

int kvIntersectArcArc();
int kvIntersectArcLine();
int kvIntersectLineArc();
