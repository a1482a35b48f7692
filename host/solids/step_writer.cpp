#include <cmath>

#include "host/solids/exchange_text.h"
#include "host/solids/writers.h"

namespace host {
namespace {

struct Frame {
  AcGePoint3d origin;
  AcGeVector3d normal, x;
};

Frame frameOf(const BrxSolidBody& body, size_t begin, size_t end) {
  const auto at = [&](size_t i) { return body.points[body.corners[i]]; };
  AcGeVector3d area, longest;
  for (size_t i = begin; i < end; ++i) {
    const size_t next = i + 1 < end ? i + 1 : begin;
    area += (at(i) - at(begin)).crossProduct(at(next) - at(begin));
    if ((at(next) - at(i)).length() > longest.length()) longest = at(next) - at(i);
  }
  const auto unit = [](const AcGeVector3d& v) {
    return v.length() > 0 ? v / v.length() : AcGeVector3d{0, 0, 1};
  };
  return {at(begin), unit(area), unit(longest)};
}

class StepWriter {
 public:
  explicit StepWriter(const SolidModel& model) : model_(model) {}

  std::string write() {
    begin();
    const int context = units();
    std::vector<int> items;
    for (const SolidElement& each : model_.elements) {
      for (const BrxSolidBody& body : each.bodies)
        items.push_back(brep(body, wordFor(each.kind) + (' ' + each.handle)));
    }
    const int shape =
        text_.add("FACETED_BREP_SHAPE_REPRESENTATION(''," + refs(items) + ',' + ref(context) + ')');
    text_.add("SHAPE_DEFINITION_REPRESENTATION(" + ref(definitionShape_) + ',' + ref(shape) + ')');
    return text_.take("AUTOMOTIVE_DESIGN { 1 0 10303 214 1 1 1 1 }", "''", model_.drawing);
  }

 private:
  void begin() {
    const int application = text_.add("APPLICATION_CONTEXT('automotive design')");
    text_.add("APPLICATION_PROTOCOL_DEFINITION('international standard','automotive_design',2000," +
              ref(application) + ')');
    const int context = text_.add("PRODUCT_CONTEXT(''," + ref(application) + ",'mechanical')");
    const std::string name = quoted(model_.drawing);
    const int product = text_.add("PRODUCT(" + name + ',' + name + ",'',(" + ref(context) + "))");
    const int formation = text_.add("PRODUCT_DEFINITION_FORMATION('',''," + ref(product) + ')');
    const int design =
        text_.add("PRODUCT_DEFINITION_CONTEXT('part definition'," + ref(application) + ",'design')");
    const int definition =
        text_.add("PRODUCT_DEFINITION('design',''," + ref(formation) + ',' + ref(design) + ')');
    definitionShape_ = text_.add("PRODUCT_DEFINITION_SHAPE('',''," + ref(definition) + ')');
  }

  int units() {
    const int length = lengthUnit();
    const int angle = text_.add("(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.))");
    const int solid = text_.add("(NAMED_UNIT(*)SI_UNIT($,.STERADIAN.)SOLID_ANGLE_UNIT())");
    const int uncertainty = text_.add("UNCERTAINTY_MEASURE_WITH_UNIT(LENGTH_MEASURE(1.E-6)," + ref(length) +
                                      ",'distance_accuracy_value','')");
    return text_.add("(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNCERTAINTY_ASSIGNED_CONTEXT((" +
                     ref(uncertainty) + "))GLOBAL_UNIT_ASSIGNED_CONTEXT(" + refs({length, angle, solid}) +
                     ")REPRESENTATION_CONTEXT('',''))");
  }

  int lengthUnit() {
    const LengthUnit& u = model_.unit;
    if (u.prefix) {
      const std::string prefix = *u.prefix ? '.' + std::string(u.prefix) + '.' : "$";
      return text_.add("(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(" + prefix + ",.METRE.))");
    }
    const int metre = text_.add("(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT($,.METRE.))");
    const int measure =
        text_.add("LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(" + real(u.metres) + ")," + ref(metre) + ')');
    const int dimensions = text_.add("DIMENSIONAL_EXPONENTS(1.,0.,0.,0.,0.,0.,0.)");
    return text_.add("(CONVERSION_BASED_UNIT(" + quoted(u.name) + ',' + ref(measure) +
                     ")LENGTH_UNIT()NAMED_UNIT(" + ref(dimensions) + "))");
  }

  int brep(const BrxSolidBody& body, const std::string& name) {
    std::vector<int> points, faces;
    for (const AcGePoint3d& p : body.points) points.push_back(point(p));
    size_t begin = 0;
    for (const Adesk::UInt32 end : body.faceEnds) {
      std::vector<int> loop;
      for (size_t i = begin; i < end; ++i) loop.push_back(points[body.corners[i]]);
      const Frame frame = frameOf(body, begin, end);
      const int axes = text_.add("AXIS2_PLACEMENT_3D(''," + ref(point(frame.origin)) + ',' +
                                 ref(direction(frame.normal)) + ',' + ref(direction(frame.x)) + ')');
      const int plane = text_.add("PLANE(''," + ref(axes) + ')');
      const int bound =
          text_.add("FACE_OUTER_BOUND(''," + ref(text_.add("POLY_LOOP(''," + refs(loop) + ')')) + ",.T.)");
      faces.push_back(text_.add("FACE_SURFACE('',(" + ref(bound) + ")," + ref(plane) + ",.T.)"));
      begin = end;
    }
    const int shell = text_.add("CLOSED_SHELL(''," + refs(faces) + ')');
    return text_.add("FACETED_BREP(" + quoted(name) + ',' + ref(shell) + ')');
  }
  int point(const AcGePoint3d& p) { return text_.add("CARTESIAN_POINT(''," + triple(p.x, p.y, p.z) + ')'); }
  int direction(const AcGeVector3d& v) { return text_.add("DIRECTION(''," + triple(v.x, v.y, v.z) + ')'); }

  const SolidModel& model_;
  ExchangeText text_;
  int definitionShape_ = 0;
};

}  // namespace

std::string stepBytes(const SolidModel& model) { return StepWriter(model).write(); }

}  // namespace host
