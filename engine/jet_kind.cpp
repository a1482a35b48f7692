#include "engine/jet_kind.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>

namespace mdb {

bool isJetFile(const std::string& path) {
  // Where the name of the file's kind stands, and both kinds.
  constexpr size_t kindOffset = 4;
  constexpr std::string_view kinds[] = {"Standard Jet DB", "Standard ACE DB"};
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error))
    return false;  // opening a pipe would wait for its other end
  std::array<char, 20> head{};
  const std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(path.c_str(), "rbe"), std::fclose);
  if (!file || std::fread(head.data(), 1, head.size(), file.get()) != head.size()) return false;
  return std::any_of(std::begin(kinds), std::end(kinds), [&](std::string_view kind) {
    return std::string_view(head.data() + kindOffset, kind.size()) == kind;
  });
}

}  // namespace mdb
