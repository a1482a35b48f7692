#pragma once

#include <algorithm>
#include <vector>

#include "brx/ge_matrix.h"

/// Growing array of the host's interface. The second length of the constructor is a hint of growth.
template <class T>
class AcArray {
 public:
  explicit AcArray(int reserve = 0, int = 8) { items_.reserve(static_cast<size_t>(reserve)); }
  int length() const { return static_cast<int>(items_.size()); }
  int logicalLength() const { return length(); }
  bool isEmpty() const { return items_.empty(); }
  int append(const T& item) {
    items_.push_back(item);
    return length() - 1;
  }
  void append(const AcArray& other) { items_.insert(items_.end(), other.items_.begin(), other.items_.end()); }
  T& operator[](int index) { return items_[static_cast<size_t>(index)]; }
  const T& operator[](int index) const { return items_[static_cast<size_t>(index)]; }
  T& at(int index) { return items_.at(static_cast<size_t>(index)); }
  const T& at(int index) const { return items_.at(static_cast<size_t>(index)); }
  T& first() { return items_.front(); }
  T& last() { return items_.back(); }
  const T& last() const { return items_.back(); }
  void insertAt(int index, const T& item) { items_.insert(items_.begin() + index, item); }
  void removeAt(int index) { items_.erase(items_.begin() + index); }
  void removeLast() { items_.pop_back(); }
  void removeAll() { items_.clear(); }
  void setLogicalLength(int length) { items_.resize(static_cast<size_t>(length)); }
  bool contains(const T& item) const { return std::find(begin(), end(), item) != end(); }
  auto begin() { return items_.begin(); }
  auto end() { return items_.end(); }
  auto begin() const { return items_.begin(); }
  auto end() const { return items_.end(); }

 private:
  std::vector<T> items_;
};

class AcDbObjectId;
class AcDbEntity;
using AcGePoint3dArray = AcArray<AcGePoint3d>;
using AcGePoint2dArray = AcArray<AcGePoint2d>;
using AcGeVector3dArray = AcArray<AcGeVector3d>;
using AcGeDoubleArray = AcArray<double>;
using AcGeIntArray = AcArray<int>;
using AcDbIntArray = AcArray<int>;
using AcDbObjectIdArray = AcArray<AcDbObjectId>;
using AcDbVoidPtrArray = AcArray<void*>;
/// The pointers only; ownership is told where the array is filled.
using AcDbEntityPtrArray = AcArray<AcDbEntity*>;
