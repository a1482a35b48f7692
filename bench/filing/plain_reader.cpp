#include "bench/filing/plain_reader.h"

#include <memory>

void PlainDrawing::write(const std::string& path) const {
  DL_Dxf dxf;
  const std::unique_ptr<DL_WriterA> file(dxf.out(path.c_str(), DL_Codes::AC1015));
  dxf.writeHeader(*file);
  file->sectionEnd();
  file->sectionTables();
  file->tableLayers(static_cast<int>(layers_.size()));
  for (const auto& [data, attributes] : layers_) dxf.writeLayer(*file, data, attributes);
  file->tableEnd();
  file->sectionEnd();
  file->sectionEntities();
  for (const auto& [data, attributes] : lines_) dxf.writeLine(*file, data, attributes);
  for (const auto& [data, attributes] : arcs_) dxf.writeArc(*file, data, attributes);
  for (const auto& [data, attributes] : circles_) dxf.writeCircle(*file, data, attributes);
  for (const auto& [data, attributes] : points_) dxf.writePoint(*file, data, attributes);
  auto vertex = vertices_.begin();
  for (const auto& [data, attributes] : polylines_) {
    dxf.writePolyline(*file, data, attributes);
    for (unsigned i = 0; i < data.number && vertex != vertices_.end(); ++i) dxf.writeVertex(*file, *vertex++);
    dxf.writePolylineEnd(*file);
  }
  for (const auto& [data, attributes] : inserts_) dxf.writeInsert(*file, data, attributes);
  for (const auto& [data, attributes] : texts_) dxf.writeText(*file, data, attributes);
  for (const auto& [data, attributes] : paragraphs_) dxf.writeMText(*file, data, attributes);
  file->sectionEnd();
  file->dxfEOF();
  file->close();
}
