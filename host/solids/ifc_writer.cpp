#include <map>

#include "host/solids/exchange_text.h"
#include "host/solids/writers.h"

namespace host {
namespace {

/// 22 characters of 6 bits for 128 bits; the same text gives the same one.
std::string globalId(std::string_view text) {
  constexpr char letters[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_$";
  unsigned __int128 hash = (static_cast<unsigned __int128>(0x6c62272e07bb0142) << 64) | 0x62b821756295c58d;
  const unsigned __int128 prime = (static_cast<unsigned __int128>(1) << 88) | 0x13b;
  for (const char each : text) hash = (hash ^ static_cast<unsigned char>(each)) * prime;
  std::string id;
  for (int shift = 126; shift >= 0; shift -= 6) id += letters[static_cast<unsigned>(hash >> shift) & 63];
  return id;
}

class IfcWriter {
 public:
  explicit IfcWriter(const SolidModel& model) : model_(model) {}

  std::string write() {
    begin();
    for (const SolidElement& each : model_.elements) element(each);
    end();
    return text_.take("IFC4", "'ViewDefinition [ReferenceView_V1.2]'", model_.drawing);
  }

 private:
  std::string id(const std::string& what) const { return quoted(globalId(model_.drawing + '|' + what)); }
  std::string root(const std::string& what, const std::string& name) const {
    return id(what) + ",$," + quoted(name);
  }

  void begin() {
    const int origin = text_.add("IFCCARTESIANPOINT((0.,0.,0.))");
    axes_ = text_.add("IFCAXIS2PLACEMENT3D(" + ref(origin) + ",$,$)");
    const int context =
        text_.add("IFCGEOMETRICREPRESENTATIONCONTEXT($,'Model',3,1.E-6," + ref(axes_) + ",$)");
    body_ = text_.add("IFCGEOMETRICREPRESENTATIONSUBCONTEXT('Body','Model',*,*,*,*," + ref(context) +
                      ",$,.MODEL_VIEW.,$)");
    const int length = unit("LENGTHUNIT", "METRE", 1, "1,0");
    const int area = unit("AREAUNIT", "SQUARE_METRE", 2, "2,0");
    const int volume = unit("VOLUMEUNIT", "CUBIC_METRE", 3, "3,0");
    const int angle = text_.add("IFCSIUNIT(*,.PLANEANGLEUNIT.,$,.RADIAN.)");
    const int all = text_.add("IFCUNITASSIGNMENT(" + refs({length, area, volume, angle}) + ')');
    project_ = text_.add("IFCPROJECT(" + root("project", model_.drawing) + ",$,$,$,$,(" + ref(context) +
                         ")," + ref(all) + ')');
    site_ = text_.add("IFCSITE(" + root("site", "Site") + ",$,$," + ref(placement(0)) +
                      ",$,$,.ELEMENT.,$,$,$,$,$)");
    const int sitePlacement = lastPlacement_;
    building_ = text_.add("IFCBUILDING(" + root("building", "Building") + ",$,$," +
                          ref(placement(sitePlacement)) + ",$,$,.ELEMENT.,$,$,$)");
    const int buildingPlacement = lastPlacement_;
    storey_ = text_.add("IFCBUILDINGSTOREY(" + root("storey", "Storey") + ",$,$," +
                        ref(placement(buildingPlacement)) + ",$,$,.ELEMENT.,0.)");
    storeyPlacement_ = lastPlacement_;
    aggregate("project-site", project_, site_);
    aggregate("site-building", site_, building_);
    aggregate("building-storey", building_, storey_);
  }

  /// Areas and volumes in the unit's powers, which only metric prefixes write shorter.
  int unit(const std::string& kind, const std::string& si, int power, const std::string& dimension) {
    const LengthUnit& u = model_.unit;
    if (u.prefix && power == 1) {
      const std::string prefix = *u.prefix ? '.' + std::string(u.prefix) + '.' : "$";
      return text_.add("IFCSIUNIT(*,." + kind + ".," + prefix + ",." + si + ".)");
    }
    const int metric = text_.add("IFCSIUNIT(*,." + kind + ".,$,." + si + ".)");
    if (u.prefix) return metric;
    double factor = 1;
    for (int i = 0; i < power; ++i) factor *= u.metres;
    const char* const measures[] = {"IFCLENGTHMEASURE", "IFCAREAMEASURE", "IFCVOLUMEMEASURE"};
    const int measure = text_.add("IFCMEASUREWITHUNIT(" + std::string(measures[power - 1]) + '(' +
                                  real(factor) + ")," + ref(metric) + ')');
    const int dimensions = text_.add("IFCDIMENSIONALEXPONENTS(" + dimension + ",0,0,0,0,0)");
    const char* const prefixes[] = {"", "SQUARE ", "CUBIC "};
    return text_.add("IFCCONVERSIONBASEDUNIT(" + ref(dimensions) + ",." + kind + ".," +
                     quoted(std::string(prefixes[power - 1]) + u.name) + ',' + ref(measure) + ')');
  }

  int placement(int within) {
    return lastPlacement_ = text_.add("IFCLOCALPLACEMENT(" + (within ? ref(within) : std::string("$")) + ',' +
                                      ref(axes_) + ')');
  }
  void aggregate(const std::string& what, int whole, int part) {
    text_.add("IFCRELAGGREGATES(" + id(what) + ",$,$,$," + ref(whole) + ",(" + ref(part) + "))");
  }

  int brep(const BrxSolidBody& body) {
    std::vector<int> points, faces;
    for (const AcGePoint3d& p : body.points)
      points.push_back(text_.add("IFCCARTESIANPOINT(" + triple(p.x, p.y, p.z) + ')'));
    size_t begin = 0;
    for (const Adesk::UInt32 end : body.faceEnds) {
      std::vector<int> loop;
      for (; begin < end; ++begin) loop.push_back(points[body.corners[begin]]);
      const int polygon = text_.add("IFCPOLYLOOP(" + refs(loop) + ')');
      const int bound = text_.add("IFCFACEOUTERBOUND(" + ref(polygon) + ",.T.)");
      faces.push_back(text_.add("IFCFACE((" + ref(bound) + "))"));
    }
    return text_.add("IFCFACETEDBREP(" + ref(text_.add("IFCCLOSEDSHELL(" + refs(faces) + ')')) + ')');
  }

  int styleOf(unsigned rgb) {
    int& style = styles_[rgb];
    if (style) return style;
    const auto share = [rgb](int shift) { return real((rgb >> shift & 0xFF) / 255.0); };
    const int colour = text_.add("IFCCOLOURRGB($," + share(16) + ',' + share(8) + ',' + share(0) + ')');
    const int shading = text_.add("IFCSURFACESTYLESHADING(" + ref(colour) + ",0.)");
    return style = text_.add("IFCSURFACESTYLE($,.BOTH.,(" + ref(shading) + "))");
  }

  /// The class with what stands behind the tag.
  static std::pair<std::string, std::string> classOf(BrxSolidKind kind) {
    switch (kind) {
      case BrxSolidKind::segment:
        return {"IFCDUCTSEGMENT", ".RIGIDSEGMENT."};
      case BrxSolidKind::transition:
        return {"IFCDUCTFITTING", ".TRANSITION."};
      case BrxSolidKind::elbow:
        return {"IFCDUCTFITTING", ".BEND."};
      case BrxSolidKind::wye:
      case BrxSolidKind::takeoff:
        return {"IFCDUCTFITTING", ".JUNCTION."};
      case BrxSolidKind::hanger:
        return {"IFCDISCRETEACCESSORY", ".USERDEFINED."};
      default:
        return {"IFCBUILDINGELEMENTPROXY", ".NOTDEFINED."};
    }
  }

  void element(const SolidElement& each) {
    std::vector<int> items;
    for (const BrxSolidBody& body : each.bodies) {
      items.push_back(brep(body));
      text_.add("IFCSTYLEDITEM(" + ref(items.back()) + ",(" + ref(styleOf(each.rgb)) + "),$)");
    }
    const int shape =
        text_.add("IFCSHAPEREPRESENTATION(" + ref(body_) + ",'Body','Brep'," + refs(items) + ')');
    layers_[each.layer].push_back(shape);
    const int definition = text_.add("IFCPRODUCTDEFINITIONSHAPE($,$,(" + ref(shape) + "))");
    const auto [type, predefined] = classOf(each.kind);
    const std::string word = wordFor(each.kind);
    const std::string objectType = each.kind == BrxSolidKind::hanger ? quoted(word) : "$";
    const int made = text_.add(type + '(' + root("element " + each.handle, word + ' ' + each.handle) + ",$," +
                               objectType + ',' + ref(placement(storeyPlacement_)) + ',' + ref(definition) +
                               ',' + quoted(each.handle) + ',' + predefined + ')');
    elements_.push_back(made);
    properties(each, made);
  }

  void properties(const SolidElement& each, int element) {
    std::vector<int> values;
    const auto add = [&](const std::string& key, const std::string& value) {
      values.push_back(
          text_.add("IFCPROPERTYSINGLEVALUE(" + quoted(key) + ",$,IFCTEXT(" + quoted(value) + "),$)"));
    };
    add("Handle", each.handle);
    add("Layer", each.layer);
    for (const auto& [key, value] : each.properties) add(key, value);
    const int set = text_.add("IFCPROPERTYSET(" + root("properties " + each.handle, "Korvane") + ",$," +
                              refs(values) + ')');
    text_.add("IFCRELDEFINESBYPROPERTIES(" + id("defines " + each.handle) + ",$,$,$,(" + ref(element) + ")," +
              ref(set) + ')');
  }

  void end() {
    for (const auto& [layer, shapes] : layers_) {
      text_.add("IFCPRESENTATIONLAYERASSIGNMENT(" + quoted(layer) + ",$," + refs(shapes) + ",$)");
    }
    if (elements_.empty()) return;
    text_.add("IFCRELCONTAINEDINSPATIALSTRUCTURE(" + id("contained") + ",$,$,$," + refs(elements_) + ',' +
              ref(storey_) + ')');
  }

  const SolidModel& model_;
  ExchangeText text_;
  int axes_ = 0, body_ = 0, project_ = 0, site_ = 0, building_ = 0, storey_ = 0;
  int lastPlacement_ = 0, storeyPlacement_ = 0;
  std::map<unsigned, int> styles_;
  std::map<std::string, std::vector<int>> layers_;
  std::vector<int> elements_;
};

}  // namespace

std::string ifcBytes(const SolidModel& model) { return IfcWriter(model).write(); }

}  // namespace host
