#pragma once

/// The frame in which each LISP call of the module runs.

/// What a body tells the guard; any other number counts as `done`.
enum BodyResult : int {
  done = 0,
  tooFewArguments = 1,
  wrongType = 2,
  badData = 3,
  /// The text window comes up and the caller gets a LISP error, without words.
  failedVisibly = 4,
};

/// Reads its arguments with `acedGetArgs`, sets its LISP result (nil when it sets none) and answers
/// a `BodyResult`.
using Body = int (*)();

/// Prints what belongs to the code and gives the result word for the host.
int guardResult(int code);
/// Runs the body and maps its code. An exception is announced on the command line and goes on to the
/// host.
int guardedCall(Body body);
