#pragma once

/// A direction of the user coordinate system, as an angle in the world's plan view. Radians.
double worldAngle(double userAngle);
