#pragma once

/// LISP functions of duct solids.

int kvDrawTripleCenter();
int kvGetTripleCoord();
int kvDrawTripleTransition();
int kvDrawTripleElbow();
int kvDrawTripleWye();
int kvDrawTripleTakeoff();
int kvDrawTripleSkin();
int kvTripleUnion();
int kvExplodeSolid();
int kvDrawHanger();
