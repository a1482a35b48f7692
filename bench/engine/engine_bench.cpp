// The engine beside plain SQLite with prepared statements on the same file, same durability:
// engine_bench [FOLDER [ROWS …]]. Prints microseconds for each operation and the ratio plain / engine.

#include <sqlite3.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "engine/collation.h"
#include "platform/com/class_objects.h"
#include "platform/com/owners.h"
#include "platform/text/utf.h"
#include "zarbo/database/engine.h"

namespace {

double microseconds(int times, const std::function<void(int)>& work) {
  const auto begin = std::chrono::steady_clock::now();
  for (int i = 0; i < times; ++i) work(i);
  return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - begin).count() / times;
}

void require(bool good, const char* what) {
  if (good) return;
  std::fprintf(stderr, "engine_bench: %s failed\n", what);
  std::exit(1);
}

COleSafeArray arrayOf(const std::vector<COleVariant>& items) {
  COleSafeArray array;
  array.CreateOneDim(VT_VARIANT, static_cast<ULONG>(items.size()), items.data());
  return array;
}

std::wstring keyOf(int i) { return L"part " + std::to_wstring(1000000 + i * 7919LL % 1000003); }

int collate(void*, int leftSize, const void* left, int rightSize, const void* right) {
  return compareText({static_cast<const char*>(left), static_cast<size_t>(leftSize)},
                     {static_cast<const char*>(right), static_cast<size_t>(rightSize)});
}

// Ten plain columns beside the counter and the key.
constexpr int plainColumns = 10;

COleSafeArray fieldsOf(int i) {
  std::vector<COleVariant> items = {COleVariant(L"sKey"), COleVariant(keyOf(i))};
  for (int c = 0; c < plainColumns; ++c) {
    items.emplace_back(L"c" + std::to_wstring(c));
    items.push_back(c % 3 == 0   ? COleVariant(static_cast<LONG>(i + c))
                    : c % 3 == 1 ? COleVariant(i * 0.5)
                                 : COleVariant(L"value " + std::to_wstring(i)));
  }
  return arrayOf(items);
}

void create(IZbEngine& engine, const std::string& path) {
  VARIANT_BOOL ok;
  const Bstr name(fromUtf8(path)), table(L"T");
  engine.CreateDatabase(name.get(), &ok);
  Bstr status;
  engine.Connect(name.get(), 0, 0, status.put());
  require(status.view() == L"OK", "connecting");
  std::vector<COleVariant> definition;
  const auto entry = [&](const std::wstring& field, const wchar_t* description) {
    for (const std::wstring& each :
         {std::wstring(L"*RTLB*"), field, std::wstring(description), std::wstring(L"*RTLE*")}) {
      definition.emplace_back(each);
    }
  };
  entry(L"id", L"counter");
  entry(L"sKey", L"text(50)");
  for (int c = 0; c < plainColumns; ++c) {
    entry(L"c" + std::to_wstring(c), c % 3 == 0 ? L"long" : c % 3 == 1 ? L"double" : L"text(50)");
  }
  entry(L"id", L"index primary");
  entry(L"sKey", L"index");
  engine.CreateTable(table.get(), arrayOf(definition), &ok);
  require(ok, "creating the table");
}

class Plain {
 public:
  explicit Plain(const std::string& path) {
    require(sqlite3_open(path.c_str(), &database_) == SQLITE_OK, "opening");
    sqlite3_create_collation_v2(database_, "JET", SQLITE_UTF8, nullptr, collate, nullptr);
    run("PRAGMA synchronous=EXTRA");
    run("PRAGMA cache_size=-16000");
  }
  ~Plain() {
    for (sqlite3_stmt* statement : statements_) sqlite3_finalize(statement);
    sqlite3_close(database_);
  }
  void run(const char* sql) {
    require(sqlite3_exec(database_, sql, nullptr, nullptr, nullptr) == SQLITE_OK, sql);
  }
  sqlite3_stmt* prepare(const char* sql) {
    sqlite3_stmt* statement = nullptr;
    require(sqlite3_prepare_v2(database_, sql, -1, &statement, nullptr) == SQLITE_OK, sql);
    statements_.push_back(statement);
    return statement;
  }
  /// Reads every column, as a program does that uses them.
  static size_t readRow(sqlite3_stmt* row) {
    size_t sum = 0;
    for (int i = 0; i < sqlite3_column_count(row); ++i) {
      switch (sqlite3_column_type(row, i)) {
        case SQLITE_INTEGER:
          sum += static_cast<size_t>(sqlite3_column_int64(row, i));
          break;
        case SQLITE_FLOAT:
          sum += static_cast<size_t>(sqlite3_column_double(row, i));
          break;
        default:
          sum += std::string(reinterpret_cast<const char*>(sqlite3_column_text(row, i))).size();
      }
    }
    return sum;
  }

 private:
  sqlite3* database_ = nullptr;
  std::vector<sqlite3_stmt*> statements_;
};

void report(int rows, const char* what, double engine, double plain) {
  std::printf("%8d rows  %-8s engine %9.2f us  plain %9.2f us  plain/engine %.2f\n", rows, what, engine,
              plain, plain / engine);
}

void fill(const std::string& path, int rows) {
  Plain plain(path);
  plain.run("BEGIN");
  sqlite3_stmt* insert = plain.prepare("INSERT INTO T VALUES(NULL, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
  for (int i = 0; i < rows; ++i) {
    const std::string key = toUtf8(keyOf(i)), value = "value " + std::to_string(i);
    sqlite3_bind_text(insert, 1, key.c_str(), -1, SQLITE_TRANSIENT);
    for (int c = 0; c < plainColumns; ++c) {
      if (c % 3 == 0) sqlite3_bind_int(insert, c + 2, i + c);
      if (c % 3 == 1) sqlite3_bind_double(insert, c + 2, i * 0.5);
      if (c % 3 == 2) sqlite3_bind_text(insert, c + 2, value.c_str(), -1, SQLITE_TRANSIENT);
    }
    require(sqlite3_step(insert) == SQLITE_DONE, "filling");
    sqlite3_reset(insert);
  }
  plain.run("COMMIT");
}

void measure(const std::string& path, int rows) {
  const auto engine = createObject<IZbEngine>(engineClassId);
  require(engine != nullptr, "loading the engine");
  create(*engine.get(), path);
  fill(path, rows);
  VARIANT_BOOL ok;
  const Bstr table(L"T"), index(L"sKey");
  engine->SetTable(table.get(), index.get(), &ok);
  require(ok, "opening the table");
  COleVariant record;
  size_t sum = 0;

  constexpr int seeks = 5000, writes = 300;
  const double seek = microseconds(seeks, [&](int i) {
    const COleVariant key(keyOf(i * 37 % rows));
    engine->Seek1(key, record.put(), &ok);
    require(ok, "seeking");
  });
  const int steps = std::min(rows - 1, 50000);
  engine->MoveTop(record.put(), &ok);
  const double skip = microseconds(steps, [&](int) { engine->Skip(1, record.put(), &ok); });
  require(ok, "walking");
  const double append = microseconds(writes, [&](int i) {
    engine->Append(fieldsOf(rows + i), 0, record.put(), &ok);
    require(ok, "appending");
  });
  const double replace = microseconds(writes, [&](int i) {
    engine->Replace(arrayOf({COleVariant(L"c0"), COleVariant(static_cast<LONG>(i))}), record.put(), &ok);
  });

  Plain plain(path);
  sqlite3_stmt* find = plain.prepare("SELECT * FROM T WHERE sKey = ? ORDER BY sKey, id LIMIT 1");
  const double plainSeek = microseconds(seeks, [&](int i) {
    const std::string key = toUtf8(keyOf(i * 37 % rows));
    sqlite3_bind_text(find, 1, key.c_str(), -1, SQLITE_TRANSIENT);
    require(sqlite3_step(find) == SQLITE_ROW, "seeking plainly");
    sum += Plain::readRow(find);
    sqlite3_reset(find);
  });
  sqlite3_stmt* walk = plain.prepare("SELECT * FROM T ORDER BY sKey, id");
  const double plainSkip = microseconds(steps, [&](int) {
    sqlite3_step(walk);
    sum += Plain::readRow(walk);
  });
  sqlite3_reset(walk);
  sqlite3_stmt* insert = plain.prepare("INSERT INTO T(sKey, c0, c1, c2) VALUES(?, 1, 0.5, 'value')");
  const double plainAppend = microseconds(writes, [&](int i) {
    const std::string key = toUtf8(keyOf(rows + writes + i));
    sqlite3_bind_text(insert, 1, key.c_str(), -1, SQLITE_TRANSIENT);
    sqlite3_step(insert);
    sqlite3_reset(insert);
  });
  sqlite3_stmt* update = plain.prepare("UPDATE T SET c0 = ? WHERE id = ?");
  const double plainReplace = microseconds(writes, [&](int i) {
    sqlite3_bind_int(update, 1, i);
    sqlite3_bind_int(update, 2, rows);
    sqlite3_step(update);
    sqlite3_reset(update);
  });
  report(rows, "seek", seek, plainSeek);
  report(rows, "skip", skip, plainSkip);
  report(rows, "append", append, plainAppend);
  report(rows, "replace", replace, plainReplace);
  if (sum == 0) std::printf("nothing was read\n");
}

}  // namespace

int main(int count, char** arguments) {
  const std::string folder = count > 1 ? arguments[1] : std::filesystem::temp_directory_path().string();
  std::vector<int> sizes = {10'000, 100'000, 1'000'000};
  if (count > 2) sizes.clear();
  for (int i = 2; i < count; ++i) sizes.push_back(std::atoi(arguments[i]));
  for (const int rows : sizes) {
    const std::string path = folder + "/engine-bench-" + std::to_string(rows) + ".kv";
    std::filesystem::remove(path);
    measure(path, rows);
    std::filesystem::remove(path);
  }
}
