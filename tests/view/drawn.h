#pragma once

#include <cairo.h>
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>

#include "brx/db_block.h"
#include "brx/db_database.h"
#include "brx/db_text.h"
#include "host/view/picture.h"
#include "host/view/recorder.h"

/// Draw, paint, look: the words of tests of pictures.
namespace drawn {

namespace view = host::view;

class Drawing : public testing::Test {
 protected:
  void SetUp() override { acdbSetHostWorkingDatabase(&drawing); }

  /// On the current layer for a null one, in model space for a null record.
  template <class Entity>
  AcDbObjectId add(Entity* entity, AcDbObjectId layer = {}, AcDbObjectId record = {}) {
    AcDbObjectPointer<AcDbBlockTableRecord> space(record.isNull() ? drawing.modelSpaceId() : record,
                                                  AcDb::kForWrite);
    entity->setLayer(layer.isNull() ? drawing.clayer() : layer);
    AcDbObjectId id;
    EXPECT_EQ(space->appendAcDbEntity(id, entity), Acad::eOk);
    entity->close();
    return id;
  }
  template <class Table, class Record>
  AcDbObjectId addRecord(const ACHAR* name, Record* record) {
    AcDbObjectPointer<Table> table(drawing.tableId(Table::desc()), AcDb::kForWrite);
    AcDbObjectId id;
    record->setName(name);
    EXPECT_EQ(table->add(id, record), Acad::eOk);
    record->close();
    return id;
  }
  AcDbObjectId layer(const ACHAR* name, int colour, AcDbObjectId linetype = {}) {
    auto* const record = new AcDbLayerTableRecord;
    AcCmColor index;
    index.setColorIndex(static_cast<Adesk::UInt16>(colour));
    record->setColor(index);
    record->setLinetypeObjectId(linetype.isNull() ? drawing.continuousLinetype() : linetype);
    return addRecord<AcDbLayerTable>(name, record);
  }
  AcDbObjectId block(const ACHAR* name) { return addRecord<AcDbBlockTable>(name, new AcDbBlockTableRecord); }
  AcDbObjectId linetype(const ACHAR* name, std::vector<double> dashes) {
    auto* const record = new AcDbLinetypeTableRecord;
    record->setPattern(name, std::move(dashes));
    return addRecord<AcDbLinetypeTable>(name, record);
  }

  view::Scene& scene() { return view::Scene::of(drawing); }

  AcDbDatabase drawing;
};

/// A painted scene as pixels; y counts from below, as in the drawing.
class Pixels {
 public:
  Pixels(view::Scene& scene, view::PictureSettings settings) : settings_(settings) {
    window_ = view::shownWindow(scene, settings);
    std::string problem;
    bytes_ = view::pictureBytes(scene, settings, view::PictureKind::png, problem);
    EXPECT_EQ(problem, "");
    Source source{&bytes_, 0};
    cairo_surface_t* const surface = cairo_image_surface_create_from_png_stream(read, &source);
    EXPECT_EQ(cairo_image_surface_get_width(surface), settings.width);
    const unsigned char* const data = cairo_image_surface_get_data(surface);
    const int stride = cairo_image_surface_get_stride(surface);
    for (int y = 0; y < settings.height; ++y) {
      for (int x = 0; x < settings.width; ++x) {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, data + y * stride + x * 4, 4);
        pixels_.push_back(pixel & 0xFFFFFF);
      }
    }
    cairo_surface_destroy(surface);
  }
  /// A failed test leaves its picture to be looked at.
  ~Pixels() {
    if (!testing::Test::HasFailure()) return;
    const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
    const auto file =
        std::filesystem::temp_directory_path() / (std::string("zarbo_") + test->name() + ".png");
    std::ofstream(file, std::ios::binary) << bytes_;
    std::printf("picture: %s\n", file.c_str());
  }

  std::uint32_t at(double x, double y) const {
    const int column =
        static_cast<int>((x - window_.left) / (window_.right - window_.left) * settings_.width);
    const int row = static_cast<int>((window_.top - y) / (window_.top - window_.bottom) * settings_.height);
    if (column < 0 || row < 0 || column >= settings_.width || row >= settings_.height) return 0xF0F0F0F0;
    return pixels_[static_cast<size_t>(row) * static_cast<size_t>(settings_.width) +
                   static_cast<size_t>(column)];
  }
  /// Share of the pixels of the drawing's box that differ from the ground at the picture's corner.
  double inked(double left, double bottom, double right, double top) const {
    const double step = (window_.right - window_.left) / settings_.width;
    size_t all = 0, ink = 0;
    for (double y = bottom + step / 2; y < top; y += step) {
      for (double x = left + step / 2; x < right; x += step) ++all, ink += at(x, y) != pixels_.front();
    }
    return all ? static_cast<double>(ink) / static_cast<double>(all) : 0;
  }

 private:
  struct Source {
    const std::string* bytes;
    size_t at;
  };
  static cairo_status_t read(void* from, unsigned char* to, unsigned count) {
    auto& source = *static_cast<Source*>(from);
    if (source.at + count > source.bytes->size()) return CAIRO_STATUS_READ_ERROR;
    std::memcpy(to, source.bytes->data() + source.at, count);
    source.at += count;
    return CAIRO_STATUS_SUCCESS;
  }
  view::PictureSettings settings_;
  view::PlaneBox window_;
  std::string bytes_;
  std::vector<std::uint32_t> pixels_;
};

}  // namespace drawn
