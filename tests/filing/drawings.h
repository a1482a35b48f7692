#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "brx/db_block.h"
#include "brx/db_database.h"
#include "host/filing/dxf_reader.h"
#include "host/filing/dxf_writer.h"
#include "host/filing/object_walk.h"

/// Words of the filing tests.

using DrawingOfTest = std::unique_ptr<AcDbDatabase>;

struct ReadDrawing {
  DrawingOfTest drawing = std::make_unique<AcDbDatabase>(false);
  host::FilingReport report;
  Acad::ErrorStatus status = Acad::eOk;

  explicit ReadDrawing(std::string_view bytes) { status = host::readDxf(bytes, *drawing, report); }
  /// Whether a message holds this text.
  bool says(std::wstring_view text) const {
    for (const auto& each : report.messages()) {
      if (each.text.find(text) != std::wstring::npos) return true;
    }
    return false;
  }
  std::string messages() const {
    std::string all;
    for (const wchar_t c : report.text(L"file")) all += c < 128 ? static_cast<char>(c) : '?';
    return all;
  }
  AcDbBlockTableRecord& space() const {
    return static_cast<AcDbBlockTableRecord&>(*drawing->modelSpaceId().stub()->object);
  }
  /// The entity at the place in model space; null beyond the end or of another class.
  template <class T = AcDbEntity>
  T* entity(size_t index) const {
    const auto& ids = space().entityIds();
    return index < ids.size() ? T::cast(ids[index].stub()->object) : nullptr;
  }
};

inline std::string written(AcDbDatabase& drawing) {
  host::DxfSink sink;
  EXPECT_TRUE(host::writeDxf(drawing, sink));
  return sink.bytes();
}

/// Groups as a file has them, from pairs "code value" separated by "|".
inline std::string groups(std::string_view pairs) {
  std::string made;
  while (!pairs.empty()) {
    const size_t end = std::min(pairs.find('|'), pairs.size());
    const std::string_view pair = pairs.substr(0, end);
    const size_t blank = std::min(pair.find(' '), pair.size());
    made += std::string(pair.substr(0, blank)) + "\n" +
            std::string(pair.substr(std::min(blank + 1, pair.size()))) + "\n";
    pairs.remove_prefix(std::min(end + 1, pairs.size()));
  }
  return made;
}

inline std::string section(std::string_view name, std::string_view pairs) {
  return groups("0 SECTION|2 " + std::string(name)) + groups(pairs) + groups("0 ENDSEC");
}

inline std::string entities(std::string_view pairs) {
  return section("HEADER", "9 $ACADVER|1 AC1027") + section("ENTITIES", pairs) + groups("0 EOF");
}
