#pragma once

#include "brx/arrays.h"
#include "brx/db_entity.h"

/// Several entities as one drag image. It is a value of a jig's and never in a database.
class entityList : public AcDbEntity {
 public:
  /// Copies the pointers: the entities stay the caller's. 3 when there are none, else 0.
  int setEntityList(const AcDbEntityPtrArray& entities);
  bool isSet() const { return isSet_; }
  const AcDbEntityPtrArray& entities() const { return entities_; }
  /// Deletes the entities, for the jig that owns them.
  void deleteEntities();
  void clear() { entities_.removeAll(); }

 protected:
  bool subWorldDraw(AcGiWorldDraw* draw) override;

 private:
  bool isSet_ = false;
  AcDbEntityPtrArray entities_{0, 8};
};

/// The image of a jig that drags a list. One whose list isn't set yet says so to the user, and the drag goes
/// on with nothing to see.
entityList* dragImage(const entityList& list);
