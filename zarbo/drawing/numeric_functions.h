#pragma once

/// Bodies of the numeric functions that the application's LISP lacks.

int zbRandom();
int kvRand();
int kvAtof();
int kvPow();
int asinOf();
int acosOf();
