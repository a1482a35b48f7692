#pragma once

#include "brx/db_object.h"
#include "host/lisp/objects.h"

/// Arguments and answers that the functions on drawings share.

namespace host {

struct PickSet;
class SelectionSet;

/// What the variable ERRNO tells of a call that answered nil.
enum class Errno : int {
  invalidTableName = 1,
  invalidName = 2,
  invalidSet = 4,
  endOfEntities = 8,
  noLastEntity = 10,
  invalidHandle = 13,
  erased = 17,
  unknownTable = 18,
  changedType = 24,
  badLayer = 25,
  badLinetype = 26,
  badColour = 27,
  badStyle = 28,
  badField = 30,
  onLockedLayer = 35,
  badType = 36,
  sequenceEnd = 32,
  badSequence = 38,
  badBlockName = 39,
  missingBlock = 43,
  missingField = 47,
  badXdata = 48,
  badNesting = 49,
};
/// Sets ERRNO; the answer nil.
lisp::Value refuse(Errno reason);
/// The reason behind a status of the database.
Errno errnoOf(Acad::ErrorStatus status);

/// The object of an entity name. Another value raises "bad argument type: lentityp".
AcDbObjectId nameArgument(const lisp::Call& call, size_t place);
/// The set of a selection set's value, with its number; another value raises "bad argument type: lselsetp".
const PickSet& setArgument(const lisp::Call& call, size_t place);
SelectionSet& selectionArgument(const lisp::Call& call, size_t place);

lisp::Value nameOf(AcDbObjectId id);

}  // namespace host
