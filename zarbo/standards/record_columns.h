#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/com/owners.h"

/// The columns of a standards record: a value, for a nullable column its null flag, and whether a
/// setter was used since the row was read. A column knows how it travels to and from the engine.

enum class Nulls { forbidden, allowed };

class Column {
 public:
  Column(const wchar_t* name, Nulls nulls) : name_(name), nullable_(nulls == Nulls::allowed) {}
  virtual ~Column() = default;
  Column(const Column&) = delete;
  Column& operator=(const Column&) = delete;

  std::wstring_view name() const { return name_; }
  bool isNull() const { return nullable_ && null_; }
  bool changed() const { return changed_; }
  void clearChanged() { changed_ = false; }
  /// For a nullable column only: the value stays as it is.
  void SetNull();

  /// Takes what the engine gave for this column.
  void load(const VARIANT& value);
  /// What `Update` sends: the value, or `VT_NULL`.
  COleVariant stored() const;

 protected:
  void noteSet();
  virtual void take(const VARIANT& value) = 0;
  virtual void reset() = 0;
  virtual COleVariant give() const = 0;

 private:
  std::wstring_view name_;
  bool nullable_;
  bool null_ = true;
  bool changed_ = false;
};

/// A column whose member holds a `Value`. `get(out)` answers false and leaves `out` alone when null.
template <class Value>
class ValueColumn : public Column {
 public:
  explicit ValueColumn(const wchar_t* name, Nulls nulls = Nulls::forbidden) : Column(name, nulls) {}
  const Value& get() const { return value_; }
  bool get(Value& out) const {
    if (!isNull()) out = value_;
    return !isNull();
  }
  void set(const Value& value) {
    value_ = value;
    noteSet();
  }

 protected:
  void reset() override { value_ = Value(); }
  Value value_{};
};

class IntegerColumn : public ValueColumn<int32_t> {
 public:
  using ValueColumn::ValueColumn;

 protected:
  void take(const VARIANT& value) override;
  COleVariant give() const override;
};

class RealColumn : public ValueColumn<double> {
 public:
  using ValueColumn::ValueColumn;

 protected:
  void take(const VARIANT& value) override;
  COleVariant give() const override;
};

/// Yes/no: true only for the engine's -1.
class FlagColumn : public ValueColumn<bool> {
 public:
  using ValueColumn::ValueColumn;

 protected:
  void take(const VARIANT& value) override;
  COleVariant give() const override;
};

/// Text, trimmed at the right when it is read. `get(out)` assigns also when the column is null.
class TextColumn : public ValueColumn<std::wstring> {
 public:
  using ValueColumn::get;
  using ValueColumn::ValueColumn;
  bool get(std::wstring& out) const {
    out = value_;
    return !isNull();
  }

 protected:
  void take(const VARIANT& value) override;
  COleVariant give() const override;
};
