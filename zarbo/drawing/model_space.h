#pragma once

class AcDbEntity;

/// Adds to the model space of the current drawing.

/// The entity belongs to the drawing afterwards and stays open for write. On failure the user is alerted,
/// the entity is deleted and false comes back.
bool appendToModelSpace(AcDbEntity* entity);
/// The same, with the entity closed afterwards; null does nothing.
bool appendAndClose(AcDbEntity* entity);
