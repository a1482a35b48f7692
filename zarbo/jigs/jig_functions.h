#pragma once

/// Bodies of the functions by which the user places things.

int blockReferenceJig();
int kvMultiRotateJig();
int kvMultiMoveJig();
int kvCreateJigTimer();
int kvKillJigTimer();

int rectangleJigOf();
int kvLineJig();
int kvRotateJig();
int kvTextJig();
