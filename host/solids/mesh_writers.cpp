#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <map>

#include "host/solids/exchange_text.h"
#include "host/solids/writers.h"

/// Triangles: STL and glTF.

namespace host {
namespace {

static_assert(std::endian::native == std::endian::little, "both formats are little-endian");

template <class Number>
void put(std::string& bytes, Number value) {
  bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

/// Calls `visit(a, b, c, normal)` for the triangles of a body's faces. Triangles without an area are among
/// them: they close the surface where corners of a neighbour stand within an edge.
template <class Visit>
void forEachTriangle(const BrxSolidBody& body, Visit visit) {
  size_t begin = 0;
  for (const Adesk::UInt32 end : body.faceEnds) {
    const auto at = [&](size_t i) { return body.points[body.corners[i]]; };
    AcGeVector3d area;
    for (size_t i = begin + 1; i + 1 < end; ++i)
      area += (at(i) - at(begin)).crossProduct(at(i + 1) - at(begin));
    const double length = area.length();
    const AcGeVector3d normal = length > 0 ? area / length : AcGeVector3d{0, 0, 1};
    for (size_t i = begin + 1; i + 1 < end; ++i) visit(at(begin), at(i), at(i + 1), normal);
    begin = end;
  }
}

}  // namespace

std::string stlBytes(const SolidModel& model) {
  constexpr size_t headLength = 80;
  std::string bytes = "Zarbo";
  bytes.resize(headLength, ' ');
  std::uint32_t count = 0;
  put(bytes, count);
  const auto putPoint = [&](const auto& p) {
    for (const double each : {p.x, p.y, p.z}) put(bytes, static_cast<float>(each));
  };
  for (const SolidElement& element : model.elements) {
    for (const BrxSolidBody& body : element.bodies) {
      forEachTriangle(body, [&](const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c,
                                const AcGeVector3d& normal) {
        putPoint(normal), putPoint(a), putPoint(b), putPoint(c);
        put(bytes, std::uint16_t{0});
        ++count;
      });
    }
  }
  std::memcpy(bytes.data() + headLength, &count, sizeof count);
  return bytes;
}

namespace {

std::string jsonText(std::string_view utf8) {
  std::string text = "\"";
  char digits[8];
  for (const char each : utf8) {
    if (each == '"' || each == '\\') text += '\\';
    if (static_cast<unsigned char>(each) < 0x20) {
      std::snprintf(digits, sizeof digits, "\\u%04x", each);
      text += digits;
    } else {
      text += each;
    }
  }
  return text + '"';
}

/// "0.5" and not "0." or ".5", which JSON doesn't know.
std::string jsonNumber(double value) {
  std::string text = real(value);
  const size_t point = text.find('.');
  if (point + 1 == text.size() || text[point + 1] == 'E') text.insert(point + 1, "0");
  return text;
}

/// Joined by commas.
class JsonList {
 public:
  void add(const std::string& item) { text_ += (text_.empty() ? "" : ",") + item, ++count_; }
  std::string take() const { return '[' + text_ + ']'; }
  size_t size() const { return count_; }

 private:
  std::string text_;
  size_t count_ = 0;
};

class GlbWriter {
 public:
  explicit GlbWriter(const SolidModel& model) : model_(model) {}

  std::string write() {
    for (const SolidElement& each : model_.elements) element(each);
    JsonList scene;
    for (size_t i = 0; i < nodes_.size(); ++i) scene.add(std::to_string(i));
    std::string json = "{\"asset\":{\"version\":\"2.0\",\"generator\":\"Zarbo\"}";
    if (nodes_.size() > 0) {
      json += ",\"scene\":0,\"scenes\":[{\"nodes\":" + scene.take() + "}],\"nodes\":" + nodes_.take() +
              ",\"meshes\":" + meshes_.take() + ",\"materials\":" + materials_.take() +
              ",\"accessors\":" + accessors_.take() + ",\"bufferViews\":" + views_.take() +
              ",\"buffers\":[{\"byteLength\":" + std::to_string(data_.size()) + "}]";
    }
    json += '}';
    json.resize((json.size() + 3) / 4 * 4, ' ');
    std::string bytes = "glTF";
    put(bytes, std::uint32_t{2});
    put(bytes, static_cast<std::uint32_t>(12 + 8 + json.size() + (data_.empty() ? 0 : 8 + data_.size())));
    chunk(bytes, "JSON", json);
    if (!data_.empty()) chunk(bytes, std::string_view("BIN\0", 4), data_);
    return bytes;
  }

 private:
  static void chunk(std::string& bytes, std::string_view tag, const std::string& content) {
    put(bytes, static_cast<std::uint32_t>(content.size()));
    bytes += tag;
    bytes += content;
  }

  /// Positions are short numbers, so that they count from the element's own place.
  void element(const SolidElement& each) {
    std::vector<float> positions, normals;
    const AcGePoint3d place = each.bodies[0].points[0];
    const double unit = model_.unit.metres;
    for (const BrxSolidBody& body : each.bodies) {
      forEachTriangle(body, [&](const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c,
                                const AcGeVector3d& normal) {
        for (const AcGePoint3d& p : {a, b, c}) {
          const AcGeVector3d v = (p - place) * unit;
          for (const double number : {v.x, v.z, -v.y}) positions.push_back(static_cast<float>(number));
          for (const double number : {normal.x, normal.z, -normal.y})
            normals.push_back(static_cast<float>(number));
        }
      });
    }
    if (positions.empty()) return;
    const std::string mesh = "{\"primitives\":[{\"attributes\":{\"POSITION\":" + accessor(positions, true) +
                             ",\"NORMAL\":" + accessor(normals, false) +
                             "},\"material\":" + material(each.rgb) + "}]}";
    nodes_.add("{\"name\":" + jsonText(std::string(wordFor(each.kind)) + ' ' + each.handle) +
               ",\"mesh\":" + std::to_string(meshes_.size()) + ",\"translation\":[" +
               jsonNumber(place.x * unit) + ',' + jsonNumber(place.z * unit) + ',' +
               jsonNumber(-place.y * unit) + "],\"extras\":" + extras(each) + '}');
    meshes_.add(mesh);
  }

  static std::string extras(const SolidElement& each) {
    std::string text = "{\"handle\":" + jsonText(each.handle) + ",\"layer\":" + jsonText(each.layer);
    std::map<std::string, std::string> properties(each.properties.begin(), each.properties.end());
    properties.erase("handle"), properties.erase("layer");
    for (const auto& [key, value] : properties) text += ',' + jsonText(key) + ':' + jsonText(value);
    return text + '}';
  }

  std::string material(unsigned rgb) {
    const auto [found, isNew] = materialNumbers_.try_emplace(rgb, materials_.size());
    if (isNew) {
      // Colours of the format are linear.
      const auto share = [rgb](int shift) {
        return jsonNumber(std::pow((rgb >> shift & 0xFF) / 255.0, 2.2));
      };
      materials_.add("{\"pbrMetallicRoughness\":{\"baseColorFactor\":[" + share(16) + ',' + share(8) + ',' +
                     share(0) + ",1.0],\"metallicFactor\":0.2,\"roughnessFactor\":0.7}}");
    }
    return std::to_string(found->second);
  }

  std::string accessor(const std::vector<float>& numbers, bool withBounds) {
    views_.add("{\"buffer\":0,\"byteOffset\":" + std::to_string(data_.size()) +
               ",\"byteLength\":" + std::to_string(numbers.size() * sizeof(float)) + ",\"target\":34962}");
    data_.append(reinterpret_cast<const char*>(numbers.data()), numbers.size() * sizeof(float));
    std::string text =
        "{\"bufferView\":" + std::to_string(views_.size() - 1) +
        ",\"componentType\":5126,\"type\":\"VEC3\",\"count\":" + std::to_string(numbers.size() / 3);
    if (withBounds) {
      JsonList low, high;
      for (size_t axis = 0; axis < 3; ++axis) {
        float least = numbers[axis], most = numbers[axis];
        for (size_t i = axis; i < numbers.size(); i += 3)
          least = std::min(least, numbers[i]), most = std::max(most, numbers[i]);
        low.add(jsonNumber(static_cast<double>(least))), high.add(jsonNumber(static_cast<double>(most)));
      }
      text += ",\"min\":" + low.take() + ",\"max\":" + high.take();
    }
    accessors_.add(text + '}');
    return std::to_string(accessors_.size() - 1);
  }

  const SolidModel& model_;
  JsonList nodes_, meshes_, materials_, accessors_, views_;
  std::map<unsigned, size_t> materialNumbers_;
  std::string data_;
};

}  // namespace

std::string glbBytes(const SolidModel& model) { return GlbWriter(model).write(); }

}  // namespace host
