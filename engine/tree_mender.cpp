#include "engine/tree_mender.h"

#include <algorithm>
#include <map>
#include <optional>

namespace {

constexpr size_t leafHeader = 8, interiorHeader = 12;

/// A leaf and the row numbers that it begins and ends with.
struct Leaf {
  uint32_t page = 0;
  int64_t first = 0, last = 0;
};

bool exists(const PageFile& file, uint32_t page) { return page >= 1 && page <= file.count(); }

/// The pages that one above the leaves leads to.
struct Children {
  struct Child {
    uint32_t page;
    RowRange rows;
  };
  std::vector<Child> pages;
  bool whole = true;  ///< each row number belongs to one of them
};

Children childrenOf(const PageFile& file, uint32_t number, const Page& page, const RowRange& rows) {
  const size_t header = headerPlace(number);
  const size_t cells = std::min<size_t>(twoBytes(&page[header + 3]), page.size() / 4);
  Children children;
  RowRange left = rows;
  const auto add = [&](uint32_t child, int64_t last) {
    if (!exists(file, child) || child == number) children.whole = false;
    children.pages.push_back({child, {left.above, last}});
    left.above = last;
  };
  for (size_t i = 0; i < cells; ++i) {
    const auto place = cellPlace(page, header, interiorHeader, i);
    if (!place) {
      children.whole = false;
      continue;
    }
    PageReader reader(page, *place + 4);
    const auto last = static_cast<int64_t>(reader.number());
    if (!reader.good() || !left.contains(last)) children.whole = false;
    add(bigEndian(&page[*place]), last);
  }
  add(bigEndian(&page[header + 8]), left.last);
  // Where it doesn't divide its rows as it should, each child may have any of them.
  if (!children.whole) {
    for (auto& child : children.pages) child.rows = rows;
  }
  return children;
}

/// Pages whose rows were deleted; nothing when not all of them can be found.
std::optional<std::set<uint32_t>> freePages(const PageFile& file) {
  FileHeader header;
  const Page first = file.read(1);
  std::copy_n(first.begin(), FileHeader::size, header.bytes());
  std::set<uint32_t> pages;
  for (uint32_t trunk = header.firstFreePage(); trunk != 0;) {
    if (!exists(file, trunk) || !pages.insert(trunk).second) return std::nullopt;
    const Page page = file.read(trunk);
    const uint32_t count = bigEndian(&page[4]);
    if (count > page.size() / 4 - 2) return std::nullopt;
    for (uint32_t i = 0; i < count; ++i) pages.insert(bigEndian(&page[8 + 4 * i]));
    trunk = bigEndian(page.data());
  }
  return pages;
}

[[noreturn]] void failUnreachable(const std::string& reason) {
  throw jet::Failure{{notADatabase, reason, std::nullopt}};
}

class Mender {
 public:
  Mender(PageFile& file, std::vector<StoredTable>& tables) : file_(file), tables_(tables) {}

  void mend() {
    std::vector<size_t> suspect;
    for (size_t i = 0; i < tables_.size(); ++i) {
      if (!lastRowIsRight(tables_[i])) tables_[i].lastRow = RowRange().last;
      const Tree tree = walk(tables_[i]);
      tree.broken ? suspect.push_back(i) : claim(tree, i);
    }
    // Only now it is known which pages belong to the others.
    std::map<size_t, Tree> broken;
    othersAreKnown_ = true;
    for (const size_t i : suspect) {
      Tree tree = walk(tables_[i]);
      claim(tree, i);
      if (tree.broken) broken.emplace(i, std::move(tree));
    }
    if (!broken.empty()) addLostLeaves(broken);
    for (const auto& [i, tree] : broken) {
      if (tree.leaves.empty() && tables_[i].needed && tables_[i].lastRow > 0) {
        failUnreachable("None of the rows of the table '" + tables_[i].name + "' can be reached.");
      }
      if (tables_[i].root == 0) tables_[i].root = file_.append(Page());
      build(tables_[i].root, tree.leaves);
    }
  }

  /// Of the only table.
  std::vector<uint32_t> leaves() {
    std::map<size_t, Tree> trees;
    Tree& tree = trees.emplace(0, walk(tables_[0])).first->second;
    for (const uint32_t page : tree.pages) owners_.emplace(page, 0);
    if (tree.broken) addLostLeaves(trees);
    std::vector<uint32_t> pages;
    for (const auto& [first, leaf] : tree.leaves) pages.push_back(leaf.page);
    return pages;
  }

 private:
  struct Tree {
    bool broken = false;
    std::set<uint32_t> pages;
    std::map<int64_t, Leaf> leaves;  // by their first row
    std::map<uint32_t, Page> mended;
  };

  /// Pages that have an owner already are not walked on.
  Tree walk(const StoredTable& table) const {
    Tree tree;
    std::vector<Children::Child> waiting = {{table.root, {0, table.lastRow}}};
    while (!waiting.empty()) {
      const Children::Child at = waiting.back();
      waiting.pop_back();
      if (!exists(file_, at.page) || hasOwner(at.page) || !tree.pages.insert(at.page).second) {
        tree.broken = true;
        continue;
      }
      const Page page = file_.read(at.page);
      std::optional<Children> children;
      if (page[headerPlace(at.page)] == interiorPage) children = childrenOf(file_, at.page, page, at.rows);
      if (children && children->whole) {
        waiting.insert(waiting.end(), children->pages.begin(), children->pages.end());
      } else if (!addLeaf(tree, table, at.page, page, at.rows)) {
        tree.broken = true;
        if (children) {
          waiting.insert(waiting.end(), children->pages.begin(), children->pages.end());
        } else {
          tree.pages.erase(at.page);
        }
      }
    }
    return tree;
  }

  bool hasOwner(uint32_t page) const { return othersAreKnown_ && owners_.count(page) != 0; }

  /// False when the page is no leaf of the table, or its rows lie between those of another one.
  static bool addLeaf(Tree& tree, const StoredTable& table, uint32_t number, const Page& page,
                      const RowRange& range) {
    const LeafContent content = readLeaf(page, headerPlace(number), table.columns, range);
    if (content.whole && content.rows.empty()) return true;
    if (content.rows.empty() || !fits(page, content.rows, table.columns)) return false;
    const Leaf leaf{number, content.rows.front().number, content.rows.back().number};
    const auto next = tree.leaves.upper_bound(leaf.last);
    if (next != tree.leaves.begin() && std::prev(next)->second.last >= leaf.first) return false;
    tree.leaves.emplace(leaf.first, leaf);
    if (!content.whole && number != 1)
      keepRows(tree.mended.emplace(number, page).first->second, content.rows);
    return true;
  }

  /// What says which number was the last may be damaged itself: then many rows lie behind.
  bool lastRowIsRight(const StoredTable& table) {
    if (table.lastRow == RowRange().last) return true;
    StoredTable unbounded = table;
    unbounded.lastRow = RowRange().last;
    size_t leaves = 0, behind = 0;
    for (const auto& [first, leaf] : walk(unbounded).leaves) {
      ++leaves;
      behind += leaf.last > table.lastRow;
      if (leaf.first > table.lastRow) return false;
    }
    return behind <= 1 || behind <= leaves / 10;
  }

  /// Makes a tree's pages its table's, and writes those that were mended.
  void claim(const Tree& tree, size_t table) {
    for (const uint32_t page : tree.pages) {
      const auto [owner, isNew] = owners_.emplace(page, table);
      if (!isNew) failAlike(owner->second, table);
    }
    for (const auto& [number, page] : tree.mended) file_.write(number, page);
  }

  [[noreturn]] void failAlike(size_t one, size_t other) const {
    failUnreachable("The rows of the tables '" + tables_[one].name + "' and '" + tables_[other].name +
                    "' can't be told from each other.");
  }

  void addLostLeaves(std::map<size_t, Tree>& broken) {
    const auto unused = freePages(file_);
    if (!unused) return;
    for (uint32_t number = 2; number <= file_.count(); ++number) {
      if (owners_.count(number) != 0 || unused->count(number) != 0) continue;
      const Page page = file_.read(number);
      std::vector<size_t> owners;
      for (const auto& [i, tree] : broken) {
        const LeafContent content = readLeaf(page, 0, tables_[i].columns, {0, tables_[i].lastRow});
        if (!content.rows.empty() && fits(page, content.rows, tables_[i].columns)) owners.push_back(i);
      }
      if (owners.empty()) continue;
      if (owners.size() > 1) failAlike(owners[0], owners[1]);
      const StoredTable& table = tables_[owners[0]];
      Tree& tree = broken[owners[0]];
      if (!addLeaf(tree, table, number, page, {0, table.lastRow})) continue;
      if (const auto mended = tree.mended.find(number); mended != tree.mended.end()) {
        file_.write(number, mended->second);
      }
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
    if (leaves.empty()) {
      Page page{};
      keepRows(page, {});
      file_.write(root, page);
      return;
    }
    constexpr size_t mostChildren = 250;  // each takes up to 15 bytes of its page
    std::vector<Child> level;
    for (const auto& [first, leaf] : leaves) {
      const bool isOverwritten = leaf.page == root && leaves.size() > 1;
      level.push_back({isOverwritten ? file_.append(file_.read(root)) : leaf.page, leaf.last});
    }
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
  std::vector<StoredTable>& tables_;
  std::map<uint32_t, size_t> owners_;  // of pages
  bool othersAreKnown_ = false;
};

}  // namespace

void mendTrees(PageFile& file, std::vector<StoredTable>& tables) { Mender(file, tables).mend(); }

std::vector<uint32_t> leavesOf(PageFile& file, const StoredTable& table) {
  std::vector<StoredTable> tables = {table};
  return Mender(file, tables).leaves();
}

std::set<uint32_t> pagesBelow(const PageFile& file) {
  const std::set<uint32_t> unused = freePages(file).value_or(std::set<uint32_t>());
  std::set<uint32_t> below;
  for (uint32_t number = 2; number <= file.count(); ++number) {
    const Page page = file.read(number);
    if (page[0] != interiorPage || unused.count(number) != 0) continue;
    const Children children = childrenOf(file, number, page, RowRange());
    if (!children.whole) continue;
    for (const auto& child : children.pages) below.insert(child.page);
  }
  return below;
}

bool canBeRoot(const PageFile& file, uint32_t root, const StoredColumns& columns) {
  constexpr int deepest = 20;
  for (int depth = 0; depth < deepest && exists(file, root); ++depth) {
    const Page page = file.read(root);
    if (page[headerPlace(root)] == interiorPage) {
      const Children children = childrenOf(file, root, page, RowRange());
      if (children.whole) {
        root = children.pages.front().page;
        continue;
      }
    }
    const LeafContent content = readLeaf(page, headerPlace(root), columns, RowRange());
    return content.rows.empty() ? content.whole : fits(page, content.rows, columns);
  }
  return false;
}
