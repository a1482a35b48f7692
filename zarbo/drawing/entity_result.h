#pragma once

#include "brx/db_entity.h"

/// Results of bodies that are made of entities and points.

/// The object's name as the result of the call.
void returnName(AcDbObjectId object);
/// The new entity goes to model space and its name to LISP; it is closed, or deleted when refused.
void appendAndReturnName(AcDbEntity* entity);
void returnPoint(const AcGePoint3d& point);
