#include <deque>

#include "brx/db_transactions.h"
#include "host/database/stubs.h"

namespace {

class Transaction final : public AcTransaction {
 public:
  explicit Transaction(AcDbDatabase& drawing) : drawing_(drawing), mark_(drawing.undoMark()) {}

  Acad::ErrorStatus getObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                              bool openErased) override {
    object = nullptr;
    if (id.isNull()) return Acad::eNullObjectId;
    if (id.database() != &drawing_) return Acad::eWrongDatabase;
    AcDbStub& stub = *id.stub();
    if (!stub.inTransaction) {
      const Acad::ErrorStatus status = acdbOpenAcDbObject(object, id, mode, openErased);
      if (status == Acad::eOk) take(stub);
      return status;
    }
    if (stub.erased && !openErased) return Acad::eWasErased;
    if (mode == AcDb::kForWrite && !stub.writing) {
      const Acad::ErrorStatus status = stub.object->upgradeOpen();
      if (status != Acad::eOk) return status;
    }
    object = stub.object;
    return Acad::eOk;
  }

  void take(AcDbStub& stub) {
    stub.inTransaction = true;
    opened_.push_back(&stub);
  }
  /// The outer transaction, or with null none, has the objects afterwards.
  void leaveTo(Transaction* outer) {
    for (AcDbStub* stub : opened_) {
      if (outer) {
        outer->opened_.push_back(stub);
        continue;
      }
      stub->inTransaction = false;
      stub->object->close();
    }
    opened_.clear();
  }
  size_t mark() const { return mark_; }

 private:
  AcDbDatabase& drawing_;
  size_t mark_;
  std::vector<AcDbStub*> opened_;
};

class TransactionManager final : public AcDbTransactionManager {
 public:
  explicit TransactionManager(AcDbDatabase& drawing) : drawing_(drawing) {}

  AcTransaction* startTransaction() override { return &running_.emplace_back(drawing_); }
  Acad::ErrorStatus endTransaction() override {
    if (running_.empty()) return Acad::eNoActiveTransactions;
    const size_t mark = running_.back().mark();
    finish();
    drawing_.undoKeep(mark);
    return Acad::eOk;
  }
  Acad::ErrorStatus abortTransaction() override {
    if (running_.empty()) return Acad::eNoActiveTransactions;
    const size_t mark = running_.back().mark();
    finish();
    drawing_.undoTo(mark);
    return Acad::eOk;
  }
  int numActiveTransactions() const override { return static_cast<int>(running_.size()); }
  AcTransaction* topTransaction() const override {
    return running_.empty() ? nullptr : const_cast<Transaction*>(&running_.back());
  }
  Acad::ErrorStatus addNewlyCreatedDBRObject(AcDbObject* object, bool add) override {
    if (!object) return Acad::eNullObjectPointer;
    if (running_.empty()) return Acad::eNoActiveTransactions;
    if (!object->database()) return Acad::eNotInDatabase;
    AcDbStub& stub = *object->objectId().stub();
    if (add && !stub.inTransaction) running_.back().take(stub);
    return Acad::eOk;
  }

 private:
  void finish() {
    running_.back().leaveTo(running_.size() > 1 ? &running_[running_.size() - 2] : nullptr);
    running_.pop_back();
  }
  AcDbDatabase& drawing_;
  std::deque<Transaction> running_;
};

}  // namespace

AcDbTransactionManager* AcDbDatabase::transactionManager() const {
  auto& manager = imp_->transactions;
  if (!manager) {
    manager = {new TransactionManager(const_cast<AcDbDatabase&>(*this)),
               [](AcDbTransactionManager* each) { delete each; }};
  }
  return manager.get();
}

AcDbTransactionManager* acTransactionManagerPtr() {
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  return drawing ? drawing->transactionManager() : nullptr;
}
