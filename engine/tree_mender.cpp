#include "engine/tree_mender.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>

namespace {

using Storage = StoredTable::Storage;

constexpr unsigned char leafPage = 13, interiorPage = 5;
constexpr size_t leafHeader = 8, interiorHeader = 12;

uint32_t twoBytes(const unsigned char* bytes) { return static_cast<uint32_t>(bytes[0] << 8 | bytes[1]); }

/// The page's own header; on the first page that of the file stands before it.
size_t headerPlace(uint32_t number) { return number == 1 ? FileHeader::size : 0; }

/// Reads numbers of the format's variable length from a page, and never behind its end.
class Reader {
 public:
  Reader(const Page& page, size_t place) : page_(page), place_(place) {}
  bool good() const { return good_; }
  size_t place() const { return place_; }
  uint64_t number() {
    uint64_t value = 0;
    for (int i = 0; i < 9; ++i) {
      if (place_ >= page_.size()) return fail();
      const unsigned char byte = page_[place_++];
      if (i == 8) return value << 8 | byte;
      value = value << 7 | (byte & 0x7F);
      if (byte < 0x80) return value;
    }
    return value;
  }

 private:
  uint64_t fail() {
    good_ = false;
    return 0;
  }
  const Page& page_;
  size_t place_;
  bool good_ = true;
};

std::optional<size_t> cellPlace(const Page& page, size_t header, size_t headerSize, size_t cell) {
  const size_t pointer = header + headerSize + 2 * cell;
  if (pointer + 2 > page.size()) return std::nullopt;
  const size_t place = twoBytes(&page[pointer]);
  if (place < header + headerSize || place + 4 > page.size()) return std::nullopt;
  return place;
}

/// Row numbers from behind `above` up to `last`.
struct Range {
  int64_t above, last;
  bool contains(int64_t row) const { return row > above && row <= last; }
};

/// A leaf and the row numbers that it begins and ends with.
struct Leaf {
  uint32_t page = 0;
  int64_t first = 0, last = 0;
};

std::optional<int64_t> rowOf(const Page& page, size_t cell) {
  const auto place = cellPlace(page, 0, leafHeader, cell);
  if (!place) return std::nullopt;
  Reader reader(page, *place);
  reader.number();  // length of the row
  const auto row = static_cast<int64_t>(reader.number());
  if (!reader.good()) return std::nullopt;
  return row;
}

/// A row of a leaf, and how the longest ascending series that ends with it goes back.
struct Step {
  size_t cell;
  int64_t row;
  size_t length = 1;
  std::optional<size_t> before;
};

/// The cells of a leaf that most likely are where they should: the longest ascending series within the range.
std::vector<Step> rowsInOrder(const Page& page, const Range& range) {
  std::vector<Step> steps;
  size_t longest = 0;
  const size_t cells = std::min<size_t>(twoBytes(&page[3]), page.size() / 4);
  for (size_t cell = 0; cell < cells; ++cell) {
    const auto row = rowOf(page, cell);
    if (!row || !range.contains(*row)) continue;
    Step step{cell, *row, 1, {}};
    // On a good page each row goes on with the series of all before it, and the search ends at once.
    for (size_t i = steps.size(); i-- > 0 && step.length <= steps[longest].length;) {
      if (steps[i].row >= step.row || steps[i].length < step.length) continue;
      step.length = steps[i].length + 1;
      step.before = i;
    }
    steps.push_back(step);
    if (step.length > steps[longest].length) longest = steps.size() - 1;
  }
  std::vector<Step> series;
  if (steps.empty()) return series;
  for (std::optional<size_t> at = longest; at; at = steps[*at].before) series.push_back(steps[*at]);
  std::reverse(series.begin(), series.end());
  return series;
}

/// Leaves only these cells on a leaf.
void keepCells(Page& page, const std::vector<Step>& kept) {
  for (size_t i = 0; i < kept.size(); ++i) {
    std::copy_n(&page[leafHeader + 2 * kept[i].cell], 2, &page[leafHeader + 2 * i]);
  }
  page[3] = static_cast<unsigned char>(kept.size() >> 8);
  page[4] = static_cast<unsigned char>(kept.size());
}

bool fits(uint64_t kind, Storage storage) {
  if (kind == 0 || storage == Storage::Any) return true;  // null
  const bool isText = kind >= 13 && kind % 2 == 1, isBlob = kind >= 12 && kind % 2 == 0;
  switch (storage) {
    case Storage::Text:
      return isText;
    case Storage::Blob:
      return isBlob;
    case Storage::Real:
      return kind <= 9;  // whole numbers are kept as such
    default:
      return kind <= 9 && kind != 7;
  }
}

/// Whether the first row of a leaf has as many values, and of such kinds, as the table.
bool fits(const Page& page, const StoredTable& table) {
  const auto place = cellPlace(page, 0, leafHeader, 0);
  if (!place) return false;
  Reader reader(page, *place);
  reader.number();
  reader.number();
  const size_t begin = reader.place();
  const uint64_t headerSize = reader.number();
  if (headerSize > page.size() - begin) return false;
  size_t column = 0;
  for (; reader.good() && reader.place() < begin + headerSize; ++column) {
    if (column >= table.columns.size() || !fits(reader.number(), table.columns[column])) return false;
  }
  return reader.good() && column == table.columns.size();
}

class Mender {
 public:
  Mender(PageFile& file, const std::vector<StoredTable>& tables) : file_(file), tables_(tables) {}

  void mend() {
    std::map<size_t, Tree> broken;
    for (size_t i = 0; i < tables_.size(); ++i) {
      Tree tree = walk(tables_[i]);
      if (tree.broken && tables_[i].root > 1) broken.emplace(i, std::move(tree));
    }
    if (broken.empty()) return;
    if (findFreePages()) addLostLeaves(broken);
    for (const auto& [table, tree] : broken) {
      if (!tree.leaves.empty()) build(tables_[table].root, tree.leaves);
    }
  }

 private:
  struct Tree {
    bool broken = false;
    std::map<int64_t, Leaf> leaves;  // by their first row
  };

  bool exists(uint32_t page) const { return page >= 1 && page <= file_.count(); }

  struct Place {
    uint32_t page;
    Range rows;
  };

  Tree walk(const StoredTable& table) {
    Tree tree;
    std::vector<Place> waiting = {{table.root, {0, table.lastRow}}};
    while (!waiting.empty()) {
      const Place at = waiting.back();
      waiting.pop_back();
      if (!exists(at.page) || !used_.insert(at.page).second) {
        tree.broken = true;
        continue;
      }
      const Page page = file_.read(at.page);
      const size_t header = headerPlace(at.page);
      if (page[header] == interiorPage) {
        if (!addChildren(page, header, at.rows, waiting)) tree.broken = true;
      } else if (page[header] != leafPage) {
        tree.broken = true;
        used_.erase(at.page);
      } else if (const auto leaf = mendedLeaf(at.page, at.rows)) {
        if (!add(tree, *leaf)) tree.broken = true;
      }
    }
    return tree;
  }

  /// Nothing for a page without rows.
  std::optional<Leaf> mendedLeaf(uint32_t number, const Range& range) {
    Page page = file_.read(number);
    if (number == 1 || page[0] != leafPage) return std::nullopt;
    const std::vector<Step> kept = rowsInOrder(page, range);
    if (kept.size() != twoBytes(&page[3])) {
      keepCells(page, kept);
      file_.write(number, page);
    }
    if (kept.empty()) return std::nullopt;
    return Leaf{number, kept.front().row, kept.back().row};
  }

  /// False when the page doesn't divide its rows among its children as it should. Then each child may have
  /// any of them.
  static bool addChildren(const Page& page, size_t header, const Range& rows, std::vector<Place>& waiting) {
    const size_t cells = std::min<size_t>(twoBytes(&page[header + 3]), page.size() / 4);
    std::vector<Place> children;
    Range left = rows;
    bool whole = true;
    for (size_t i = 0; i < cells; ++i) {
      const auto place = cellPlace(page, header, interiorHeader, i);
      if (!place) {
        whole = false;
        continue;
      }
      Reader reader(page, *place + 4);
      const auto last = static_cast<int64_t>(reader.number());
      if (!reader.good() || !left.contains(last)) whole = false;
      children.push_back({bigEndian(&page[*place]), {left.above, last}});
      left.above = last;
    }
    children.push_back({bigEndian(&page[header + 8]), left});
    for (Place& child : children) waiting.push_back(whole ? child : Place{child.page, rows});
    return whole;
  }

  /// False when the leaf's rows lie between those of another one.
  static bool add(Tree& tree, const Leaf& leaf) {
    const auto next = tree.leaves.upper_bound(leaf.last);
    if (next != tree.leaves.begin() && std::prev(next)->second.last >= leaf.first) return false;
    tree.leaves.emplace(leaf.first, leaf);
    return true;
  }

  /// The rows on free pages were deleted. False when not all of these pages can be found.
  bool findFreePages() {
    FileHeader header;
    const Page first = file_.read(1);
    std::copy_n(first.begin(), FileHeader::size, header.bytes());
    for (uint32_t trunk = header.firstFreePage(); trunk != 0;) {
      if (!exists(trunk) || !free_.insert(trunk).second) return false;
      const Page page = file_.read(trunk);
      const uint32_t count = bigEndian(&page[4]);
      if (count > page.size() / 4 - 2) return false;
      for (uint32_t i = 0; i < count; ++i) free_.insert(bigEndian(&page[8 + 4 * i]));
      trunk = bigEndian(page.data());
    }
    return true;
  }

  void addLostLeaves(std::map<size_t, Tree>& broken) {
    for (uint32_t number = 2; number <= file_.count(); ++number) {
      if (used_.count(number) != 0 || free_.count(number) != 0) continue;
      const Page page = file_.read(number);
      if (page[0] != leafPage) continue;
      const auto isOwner = [&](const auto& each) { return fits(page, tables_[each.first]); };
      const auto owner = std::find_if(broken.begin(), broken.end(), isOwner);
      if (owner == broken.end() || std::find_if(std::next(owner), broken.end(), isOwner) != broken.end())
        continue;
      const auto leaf = mendedLeaf(number, {0, tables_[owner->first].lastRow});
      if (leaf) add(owner->second, *leaf);
    }
  }

  /// Children of one page that tells the way, with the last row of each.
  struct Child {
    uint32_t page;
    int64_t last;
  };

  static Page interior(const std::vector<Child>& children) {
    Page page{};
    page[0] = interiorPage;
    size_t content = page.size(), pointer = interiorHeader;
    const auto put = [&](size_t place, uint32_t value, size_t bytes) {
      for (size_t i = 0; i < bytes; ++i)
        page[place + i] = static_cast<unsigned char>(value >> 8 * (bytes - 1 - i));
    };
    for (size_t i = 0; i + 1 < children.size(); ++i) {
      std::vector<unsigned char> key = variableLength(static_cast<uint64_t>(children[i].last));
      content -= 4 + key.size();
      put(content, children[i].page, 4);
      std::copy(key.begin(), key.end(), page.begin() + static_cast<std::ptrdiff_t>(content) + 4);
      put(pointer, static_cast<uint32_t>(content), 2);
      pointer += 2;
    }
    put(3, static_cast<uint32_t>(children.size() - 1), 2);
    put(5, static_cast<uint32_t>(content), 2);
    put(8, children.back().page, 4);
    return page;
  }

  static std::vector<unsigned char> variableLength(uint64_t value) {
    if (value >> 56 != 0) {
      std::vector<unsigned char> bytes(9, static_cast<unsigned char>(value));
      value >>= 8;
      for (int i = 7; i >= 0; --i, value >>= 7) bytes[static_cast<size_t>(i)] = value | 0x80;
      return bytes;
    }
    std::vector<unsigned char> bytes = {static_cast<unsigned char>(value & 0x7F)};
    while (value >>= 7) bytes.insert(bytes.begin(), static_cast<unsigned char>(value | 0x80));
    return bytes;
  }

  void build(uint32_t root, const std::map<int64_t, Leaf>& leaves) {
    constexpr size_t mostChildren = 250;  // each takes up to 15 bytes of its page
    std::vector<Child> level;
    for (const auto& [first, leaf] : leaves) level.push_back({leaf.page, leaf.last});
    while (level.size() > mostChildren) {
      std::vector<Child> above;
      for (size_t i = 0; i < level.size(); i += mostChildren) {
        const std::vector<Child> children(
            level.begin() + static_cast<std::ptrdiff_t>(i),
            level.begin() + static_cast<std::ptrdiff_t>(std::min(i + mostChildren, level.size())));
        above.push_back(
            {file_.append(children.size() == 1 ? file_.read(children[0].page) : interior(children)),
             children.back().last});
      }
      level = std::move(above);
    }
    file_.write(root, level.size() == 1 ? file_.read(level[0].page) : interior(level));
  }

  PageFile& file_;
  const std::vector<StoredTable>& tables_;
  std::set<uint32_t> used_, free_;
};

}  // namespace

void mendTrees(PageFile& file, const std::vector<StoredTable>& tables) { Mender(file, tables).mend(); }
