#include "host/filing/dxf_reader.h"

#include <algorithm>

#include "brx/db_dictionary.h"
#include "host/database/standard_drawing.h"
#include "host/filing/block_cycles.h"
#include "host/filing/dxf_entities.h"
#include "host/filing/dxf_header.h"
#include "host/filing/dxf_index.h"
#include "host/filing/dxf_tables.h"
#include "host/filing/handles.h"
#include "host/filing/layout_links.h"
#include "host/filing/object_walk.h"
#include "host/rx/registry.h"
#include "platform/text/letters.h"
#include "platform/text/utf.h"

namespace host {
namespace {

class DrawingReader {
 public:
  DrawingReader(std::string_view bytes, AcDbDatabase& drawing, FilingReport& report)
      : drawing_(drawing), report_(report), tokens_(bytes, report) {}

  Acad::ErrorStatus read() {
    index_.build(tokens_, report_);
    if (index_.sections.empty()) return Acad::eFilerError;
    prepareTexts();
    moveHandles(drawing_, index_.highestHandle + 1);
    DxfObjects objects(drawing_, texts_, report_, index_.highestHandle);
    readNames(objects);
    forEachSection("BLOCKS", [&](DxfWalk& walk) { readDxfBlocks(walk, objects); });
    forEachSection("ENTITIES", [&](DxfWalk& walk) { readDxfEntities(walk, objects); });
    forEachSection("OBJECTS", [&](DxfWalk& walk) { readObjects(walk, objects); });
    linkLayouts(drawing_);
    completeDrawing(drawing_);
    for (const DxfIndex::Section& each : index_.sections) {
      if (each.name == "HEADER") readDxfHeader(tokens_, each.start, objects);
    }
    keepOtherSections(objects);
    breakBlockCycles(drawing_, report_);
    settleNextHandle(drawing_, handleSeed_);
    trustExtents(drawing_);
    return Acad::eOk;
  }

 private:
  template <class Visit>
  void forEachSection(std::string_view name, Visit visit) {
    for (const DxfIndex::Section& each : index_.sections) {
      if (each.name != name) continue;
      DxfWalk walk(tokens_, each.start);
      visit(walk);
    }
  }

  void prepareTexts() {
    DxfVersion version;
    for (const DxfIndex::Section& each : index_.sections) {
      if (each.name == "HEADER") version = readDxfVersion(tokens_, each.start);
    }
    if (!texts_.useCodePage(version.codePage)) {
      report_.add(
          0, 0,
          L"the code page " + fromUtf8(version.codePage) + L" isn't known; texts are read as western ones");
    }
    if (!version.codePage.empty()) drawing_.imp().kept.codePage = upperCased(fromUtf8(version.codePage));
    handleSeed_ = version.handleSeed;
    if (version.isUtf8()) texts_.useUtf8();
    drawing_.imp().kept.version = fromUtf8(version.version);
  }

  /// Everything that entities refer to by name.
  void readNames(DxfObjects& objects) {
    forEachSection("CLASSES", [&](DxfWalk& walk) { keepClasses(walk, objects); });
    const auto readTables = [&](DxfTableTurn turn) {
      forEachSection("TABLES", [&](DxfWalk& walk) { readDxfTables(walk, objects, turn); });
    };
    readTables(DxfTableTurn::applications);
    readTables(DxfTableTurn::referredTo);
    completeLinetypes(drawing_);
    readTables(DxfTableTurn::others);
    forEachSection("BLOCKS", [&](DxfWalk& walk) { readDxfBlockNames(walk, objects); });
    completeTables(drawing_);
  }

  /// Classes of modules that are here are told anew when the drawing is written.
  void keepClasses(DxfWalk& walk, DxfObjects& objects) {
    while (walk.next()) {
      const DxfGroup* const name = walk.record.find(1);
      if (walk.record.name != "CLASS" || !name || findClassByDxfName(fromUtf8(name->raw))) continue;
      objects.keepRecord(walk.record, drawing_.imp().kept.classes);
    }
  }

  void readObjects(DxfWalk& walk, DxfObjects& objects) {
    while (walk.next()) {
      const DxfRecord& record = walk.record;
      AcDbObjectId& root = drawing_.imp().namedObjects;
      // The first dictionary is the root of all.
      const bool isRoot = root.isNull() && record.name == "DICTIONARY";
      AcDbObject* const made = objects.makeObject(record).release();
      const AcDbObjectId id = objects.add(made, ownerOf(record), record);
      if (isRoot && made->isKindOf(AcDbDictionary::desc())) root = id;
    }
  }

  AcDbObjectId ownerOf(const DxfRecord& record) const {
    AcDbObjectId owner;
    if (record.owner && record.owner <= index_.highestHandle)
      drawing_.getAcDbObjectId(owner, true, record.owner);
    return owner;
  }

  void keepOtherSections(DxfObjects& objects) {
    constexpr std::string_view known[] = {"HEADER", "CLASSES", "TABLES", "BLOCKS", "ENTITIES", "OBJECTS"};
    GroupList& kept = drawing_.imp().kept.sections;
    for (const DxfIndex::Section& each : index_.sections) {
      if (std::find(std::begin(known), std::end(known), each.name) != std::end(known)) continue;
      kept.append(0, L"SECTION");
      kept.append(2, fromUtf8(each.name).c_str());
      keepLead(each, objects, kept);
      DxfWalk walk(tokens_, each.start);
      while (walk.next()) objects.keepRecord(walk.record, kept);
      kept.append(0, L"ENDSEC");
    }
  }

  /// Groups before the section's first object.
  void keepLead(const DxfIndex::Section& section, DxfObjects& objects, GroupList& kept) {
    tokens_.goTo(section.start);
    std::vector<DxfGroup> lead;
    for (DxfGroup group; tokens_.next(group) && group.code != 0;) lead.push_back(group);
    objects.keepGroups(lead, kept);
  }

  AcDbDatabase& drawing_;
  FilingReport& report_;
  DxfTokens tokens_;
  DxfIndex index_;
  DxfTextDecoder texts_;
  AcDbHandle handleSeed_ = 0;
};

}  // namespace

Acad::ErrorStatus readDxf(std::string_view bytes, AcDbDatabase& drawing, FilingReport& report) {
  return DrawingReader(bytes, drawing, report).read();
}

}  // namespace host
