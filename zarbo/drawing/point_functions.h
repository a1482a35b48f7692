#pragma once

/// Bodies of the functions that ask the user for a point.

int kvGetPoint();
int kvGetPointWithKeywords();
int kvGetCorner();
