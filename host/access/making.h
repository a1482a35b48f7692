#pragma once

#include <memory>
#include <string>
#include <vector>

#include "brx/db_database.h"
#include "host/access/list_reader.h"

namespace host {

/// What came of a list: the object, or nothing yet; the name of a block that is complete.
struct Made {
  AcDbObjectId id;
  std::wstring block;
};

/// Makes objects of lists in a drawing, one after the other. A polyline and a block reference with attributes
/// are made of several lists up to SEQEND, a block of all from BLOCK to ENDBLK; the drawing gets them when
/// they are complete.
class ObjectMaker {
 public:
  explicit ObjectMaker(AcDbDatabase& drawing) : drawing_(drawing) {}
  /// Throws ObjectRefusal and LispError; then nothing was made, and a sequence that the list doesn't continue
  /// is given up.
  Made make(const lisp::Value& list);
  /// Gives up what isn't complete.
  void cancel();

 private:
  struct Block {
    std::wstring name, comments;
    AcGePoint3d origin;
    Adesk::Int16 flags = 0;
    std::vector<std::unique_ptr<AcDbEntity>> contents;
  };

  Made continueSequence(std::wstring_view type, const ListGroups& groups);
  void beginBlock(const ListGroups& groups);
  Made endBlock();
  Made makeObject(std::wstring_view type, const ListGroups& groups);
  Made makeEntity(std::unique_ptr<AcDbEntity> entity, AcDbObjectId space);

  AcDbDatabase& drawing_;
  /// The polyline or block reference whose parts are to come, and where it is to stand.
  std::unique_ptr<AcDbEntity> sequence_;
  AcDbObjectId sequenceSpace_;
  std::unique_ptr<Block> block_;
};

}  // namespace host
