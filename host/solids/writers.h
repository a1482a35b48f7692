#pragma once

#include "host/solids/solid_model.h"

namespace host {

/// The bytes of a model's file.

/// IFC4 in the drawing's unit: a project with a site, a building and a storey; an element each entity.
std::string ifcBytes(const SolidModel& model);
/// Faceted boundary representations in the drawing's unit.
std::string stepBytes(const SolidModel& model);
/// Binary triangles, in drawing units.
std::string stlBytes(const SolidModel& model);
/// Binary glTF 2.0 in metres, Y up; a node each entity.
std::string glbBytes(const SolidModel& model);

}  // namespace host
