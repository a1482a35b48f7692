#pragma once

#include <dxflib/dl_creationadapter.h>
#include <dxflib/dl_dxf.h>

#include <string>
#include <vector>

/// What a program on dxflib does to read a drawing and to write it again: it keeps the plain entities, each
/// with its layer and colour. Blocks' contents, extended data and objects are passed over.
class PlainDrawing : public DL_CreationAdapter {
 public:
  void read(const std::string& path) { DL_Dxf().in(path, this); }
  void write(const std::string& path) const;
  size_t count() const {
    return lines_.size() + arcs_.size() + circles_.size() + points_.size() + polylines_.size() +
           inserts_.size() + texts_.size() + paragraphs_.size();
  }

 private:
  template <class Data>
  struct Kept {
    Data data;
    DL_Attributes attributes;
  };
  template <class Data>
  using All = std::vector<Kept<Data>>;
  template <class Data>
  void keep(All<Data>& all, const Data& data) {
    all.push_back({data, getAttributes()});
  }

  void addLayer(const DL_LayerData& data) override { keep(layers_, data); }
  void addLine(const DL_LineData& data) override { keep(lines_, data); }
  void addArc(const DL_ArcData& data) override { keep(arcs_, data); }
  void addCircle(const DL_CircleData& data) override { keep(circles_, data); }
  void addPoint(const DL_PointData& data) override { keep(points_, data); }
  void addPolyline(const DL_PolylineData& data) override { keep(polylines_, data); }
  void addVertex(const DL_VertexData& data) override { vertices_.push_back(data); }
  void addInsert(const DL_InsertData& data) override { keep(inserts_, data); }
  void addText(const DL_TextData& data) override { keep(texts_, data); }
  void addMText(const DL_MTextData& data) override { keep(paragraphs_, data); }

  All<DL_LayerData> layers_;
  All<DL_LineData> lines_;
  All<DL_ArcData> arcs_;
  All<DL_CircleData> circles_;
  All<DL_PointData> points_;
  All<DL_PolylineData> polylines_;
  std::vector<DL_VertexData> vertices_;
  All<DL_InsertData> inserts_;
  All<DL_TextData> texts_;
  All<DL_MTextData> paragraphs_;
};
