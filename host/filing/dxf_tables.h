#pragma once

#include "host/filing/dxf_objects.h"
#include "host/filing/dxf_walk.h"

namespace host {

/// Which tables are read: extended data refer to applications by name, other records to linetypes and
/// styles.
enum class DxfTableTurn { applications, referredTo, others };

/// Fills the drawing's symbol tables; tables that the host doesn't know are kept.
void readDxfTables(DxfWalk& walk, DxfObjects& objects, DxfTableTurn turn);

/// Name of the block in the drawing; old files have other names for the spaces.
std::wstring blockName(const std::wstring& nameInFile);

}  // namespace host
