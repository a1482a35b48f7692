#include "tests/mdb/sample_file.h"

#include <cmath>

namespace {

using namespace jet_writer;

std::string bytesOf(std::initializer_list<int> values) {
  std::string bytes;
  for (const int value : values) bytes += static_cast<char>(value);
  return bytes;
}

// Sign, then four groups of four bytes, the highest first.
std::string decimalBytes(bool negative, uint64_t digits) {
  std::string bytes(17, '\0');
  bytes[0] = static_cast<char>(negative ? 0x80 : 0);
  for (size_t i = 0; i < 8; ++i) bytes[(i < 4 ? 13 : 9) + i % 4] = static_cast<char>(digits >> 8 * i);
  return bytes;
}

Table typesTable() {
  Table types{"Types",
              {{"yes", yesNo},
               {"tiny", byte},
               {"short", integer},
               {"whole", longInteger},
               {"money", currency},
               {"half", single},
               {"number", real},
               {"at", date},
               {"raw", binary, 20},
               {"name", text, 100},
               {"blob", longBinary},
               {"note", memo},
               {"key", guid},
               {"exact", decimal, 17, false, 2, 10},
               {"wide", decimal, 17, false, 6, 28}},
              {},
              {}};
  const std::string key = bytesOf({0x78, 0x56, 0x34, 0x12, 0xCD, 0xAB, 0x12, 0x34, 1, 2, 3, 4, 5, 6, 7, 8});
  types.rows.push_back({int64_t{1}, int64_t{200}, int64_t{-300}, int64_t{-70000}, int64_t{-12345678}, 0.1,
                        1.0 / 3, 43861.75, bytesOf({0, 1, 255}), "Straße, \"Жук\" 😀", bytesOf({0, 10, 13}),
                        "a\r\nb", key, decimalBytes(true, 12345),
                        decimalBytes(false, 12345678901234567890ULL)});
  types.rows.push_back(Row(types.columns.size()));
  types.rows.push_back({int64_t{0},
                        int64_t{0},
                        int64_t{32767},
                        int64_t{INT32_MAX},
                        int64_t{INT64_MAX},
                        -1e30,
                        INFINITY,
                        -1.25,
                        std::string(),
                        "",
                        std::string(5000, '\xFE'),
                        std::string(20'000, 'm') + "é",
                        {},
                        decimalBytes(false, 1),
                        decimalBytes(false, 1)});
  types.rows.push_back(
      {int64_t{1}, {}, {}, {}, {}, {}, {}, {}, {}, "plain", {}, std::string(1000, 'n'), {}, {}, {}});
  return types;
}

Table roomsTable() {
  Table rooms{"Rooms",
              {{"id", longInteger, 0, true},
               {"name", text, 60, false, 0, 0, {{"Required", "yes"}, {"AllowZeroLength", "no"}}},
               {"area", real, 0, false, 0, 0, {{"DefaultValue", "=12.5"}, {"ValidationRule", ">0"}}},
               {"made", date, 0, false, 0, 0, {{"DefaultValue", "Date()"}}},
               {"files", complex}},
              {{"PrimaryKey", {{0, false}}, 9, 1},
               {"byName", {{1, true}, {2, false}}, 1, 0},
               {"hidden", {{2, false}}, 0, 2}},
              {},
              7};
  rooms.rows = {{int64_t{1}, "Hall", 20.5, 40000.0, int64_t{1}}, {int64_t{5}, "Bath", {}, {}, {}}};
  return rooms;
}

}  // namespace

File sampleJetFile() {
  File file;
  file.add(typesTable());
  file.add(roomsTable());
  file.add({"Doors",
            {{"id", longInteger, 0, true}, {"room", longInteger}, {"wall", integer}},
            {{"byWall", {{2, false}}, 1, 0}},
            {{int64_t{1}, int64_t{1}, int64_t{3}}, {int64_t{2}, int64_t{5}, int64_t{3}}}});
  Table wide{"Wide", {}, {}, {}};
  for (int i = 0; i < 200; ++i)
    wide.columns.push_back(
        {"a column with quite a long name " + std::to_string(i), i % 2 ? text : longInteger, i % 2 ? 40 : 0});
  wide.indexes = {{"last", {{199, false}, {0, true}}, 2, 0}};
  wide.rows.emplace_back();
  for (int i = 0; i < 200; ++i)
    wide.rows[0].push_back(i % 2 ? Value("v" + std::to_string(i)) : Value(int64_t{i}));
  file.add(wide);
  file.addRelation("RoomsDoors", 0x1100, "Doors", "room", "Rooms", "id");
  file.addRelation("loose", 0x2, "Doors", "wall", "Rooms", "id");
  file.addQuery("Big rooms", {{3, 0x12, "2", "", ""},
                              {5, 0, "Rooms", "r", ""},
                              {5, 0, "Doors", "", ""},
                              {6, 0, "", "", "r.name"},
                              {6, 0, "how", "", "Count(*)"},
                              {7, 2, "r", "Doors", "r.id = Doors.room"},
                              {8, 0, "", "", "r.area > 1 Or r.area Is Null"},
                              {9, 0, "", "", "r.name"},
                              {11, 0, "D", "", "r.name"}});
  file.addQuery("Grow", {{1, 4, "", "", ""},
                         {2, 7, "by how much", "", ""},
                         {5, 0, "Rooms", "", ""},
                         {6, 0, "", "area", "[area] + [by how much]"}});
  file.addQuery("All names", {{1, 9, "", "", ""},
                              {3, 2, "", "", ""},
                              {5, 0, "", "X", "SELECT name FROM Rooms;"},
                              {5, 0, "", "Y", "SELECT name FROM Types"}});
  file.addQuery("Walls",
                {{1, 6, "", "", ""},
                 {5, 0, "Doors", "", ""},
                 {6, 0, "SumOfwall", "", "Sum(Doors.wall)"},
                 {6, 2, "", "", "Doors.room"},
                 {6, 1, "", "", "\"Wall \" & [wall]"},
                 {8, 0, "", "", "Doors.id Between [Forms]![Doors]![Last] And [Forms]![Doors]![First]"},
                 {9, 2, "", "", "Doors.room"},
                 {9, 1, "", "", "\"Wall \" & [wall]"}});
  file.addQuery("Far away", {{1, 8, "", "", ""}});
  file.addObject("frmRooms", -32768);
  file.addObject("Elsewhere", 6, "C:\\data\\other.mdb", "Things");
  return file;
}

Table manyRows(int count) {
  Table many{"Many",
             {{"ix", longInteger, 0, true},
              {"sName", text, 100},
              {"iCount", longInteger},
              {"dLength", real},
              {"sKey", text, 40},
              {"bOn", yesNo},
              {"dtAt", date},
              {"sNote", text, 160}},
             {{"PrimaryKey", {{0, false}}, 9, 1}},
             {},
             count};
  for (int i = 1; i <= count; ++i) {
    const std::string number = std::to_string(i);
    many.rows.push_back({int64_t{i}, "Name of row " + number, int64_t{i % 1000}, i * 1.5, "K" + number,
                         int64_t{i % 2}, 36526.0 + i % 10000 / 8.0, "A note of the usual length"});
  }
  return many;
}
