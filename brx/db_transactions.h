#pragma once

#include "brx/db_object.h"

/// Transactions: objects are opened through them and closed at their end; an aborted one takes all
/// changes back.

class BRX_API AcTransaction {
 public:
  /// Opens for as long as the transaction runs. An object that a transaction has open already is
  /// given again, and raised from reading to writing where that is asked.
  virtual Acad::ErrorStatus getObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                      bool openErased = false) = 0;
  template <class T>
  Acad::ErrorStatus getObject(T*& object, AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                              bool openErased = false) {
    AcDbObject* any = nullptr;
    object = nullptr;
    const Acad::ErrorStatus status = getObject(any, id, mode, openErased);
    if (status != Acad::eOk) return status;
    object = T::cast(any);
    return object ? Acad::eOk : Acad::eNotThatKindOfClass;
  }

 protected:
  ~AcTransaction() = default;
};

class BRX_API AcDbTransactionManager {
 public:
  virtual ~AcDbTransactionManager() = default;
  /// The manager's; valid until it ends. Transactions nest.
  virtual AcTransaction* startTransaction() = 0;
  /// Keeps the changes of the innermost one. `eNoActiveTransactions`.
  virtual Acad::ErrorStatus endTransaction() = 0;
  /// Takes the changes of the innermost one back.
  virtual Acad::ErrorStatus abortTransaction() = 0;
  virtual int numActiveTransactions() const = 0;
  virtual AcTransaction* topTransaction() const = 0;
  /// Gives an object that was made during the transaction, and is open for write, to it to close.
  virtual Acad::ErrorStatus addNewlyCreatedDBRObject(AcDbObject* object, bool add = true) = 0;
  template <class T>
  Acad::ErrorStatus getObject(T*& object, AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                              bool openErased = false) {
    object = nullptr;
    AcTransaction* const top = topTransaction();
    return top ? top->getObject(object, id, mode, openErased) : Acad::eNoActiveTransactions;
  }
};

/// That of the working database; null without one.
AcDbTransactionManager* acTransactionManagerPtr();
#define acdbTransactionManager acTransactionManagerPtr()
#define actrTransactionManager acTransactionManagerPtr()
