#include "host/window/rescue.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include "host/documents/documents.h"
#include "platform/text/utf.h"

namespace host {
namespace {

namespace fs = std::filesystem;

bool isWanted = false;

fs::path rescuePath(const Document& document) {
  fs::path path = toUtf8(document.fileName());
  std::error_code problem;
  if (!path.has_parent_path()) path = fs::temp_directory_path(problem) / path;
  return path.replace_extension(".rescued.dwg");
}

void rescueAll() {
  if (!std::exchange(isWanted, false)) return;
  std::fputs("zarbo-host: the display is gone\n", stderr);
  for (const auto& each : documents().open()) {
    if (!each->isChanged()) continue;
    const fs::path path = rescuePath(*each);
    std::wstring problem;
    if (saveDrawing(*each->database(), fromUtf8(path.string()), problem) == Acad::eOk) {
      std::fprintf(stderr, "zarbo-host: %s: saved\n", path.c_str());
    } else {
      std::fprintf(stderr, "zarbo-host: %s\n", toUtf8(problem).c_str());
    }
  }
}

}  // namespace

Rescue::Rescue() {
  isWanted = true;
  renew();
}

// What is made before a registration is still there when it is called; the last registered is called first.
void Rescue::renew() { std::atexit(rescueAll); }

Rescue::~Rescue() { isWanted = false; }

}  // namespace host
