#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "engine/page_file.h"
#include "engine/statement.h"

/// Pages with rows of a damaged file, as SQLite's description of its file format lays them out.

/// How a column's values are kept. The column that numbers the rows has no value of its own in them.
enum class Storage { Any, Integer, Real, Text, Blob, RowNumber };

struct StoredColumn {
  Storage storage = Storage::Any;
  bool required = false;
};
using StoredColumns = std::vector<StoredColumn>;

/// Row numbers from behind `above` up to `last`.
struct RowRange {
  int64_t above = 0, last = int64_t{1} << 40;
  bool contains(int64_t row) const { return row > above && row <= last; }
};

/// A row and the bytes that it takes of its page.
struct LeafRow {
  int64_t number;
  size_t place, size;
};

/// Reads numbers of the format's variable length from a page, and never behind its end.
class PageReader {
 public:
  PageReader(const Page& page, size_t place) : page_(page), place_(place) {}
  bool good() const { return good_; }
  size_t place() const { return place_; }
  uint64_t number();

 private:
  const Page& page_;
  size_t place_;
  bool good_ = true;
};

constexpr unsigned char leafPage = 13, interiorPage = 5;

inline uint32_t twoBytes(const unsigned char* bytes) {
  return static_cast<uint32_t>(bytes[0] << 8 | bytes[1]);
}

/// The page's own header; on the first page that of the file stands before it.
inline size_t headerPlace(uint32_t number) { return number == 1 ? FileHeader::size : 0; }

/// The place of a cell of which a page's list of pointers tells.
std::optional<size_t> cellPlace(const Page& page, size_t header, size_t headerSize, size_t cell);

/// What a leaf holds.
struct LeafContent {
  std::vector<LeafRow> rows;  ///< ascending
  bool whole = false;         ///< nothing is wrong with the page
};

/// The rows of a leaf with numbers within `range`. Of a page that isn't whole: the longest ascending series
/// of those that the page points to, and what else lies beside them and has the kinds of values of `columns`.
LeafContent readLeaf(const Page& page, size_t header, const StoredColumns& columns, const RowRange& range);

/// Makes of a page one with exactly these of its rows.
void keepRows(Page& page, const std::vector<LeafRow>& rows);

/// Whether a row has as many values, and of such kinds.
bool fits(const Page& page, const LeafRow& row, const StoredColumns& columns);
/// Whether most rows do. Without rows true.
bool fits(const Page& page, const std::vector<LeafRow>& rows, const StoredColumns& columns);

/// The values of a row; empty when a page on which it goes on isn't there.
std::vector<Stored> valuesOf(const PageFile& file, const Page& page, const LeafRow& row);
