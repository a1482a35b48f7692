// Loads 10,000 layer rows by the record class's moves, beside a walk of the same table that copies every
// value by SQLite's own calls.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <filesystem>
#include <stdexcept>
#include <vector>

#include "platform/com/class_objects.h"
#include "platform/text/utf.h"
#include "zarbo/standards/layer_records.h"

namespace {

namespace fs = std::filesystem;

constexpr int rows = 10'000;

void execute(IZbEngine& engine, const std::wstring& sql) {
  short ok = 0;
  engine.ExecuteStatement(Bstr(sql).get(), &ok);
  if (!ok) throw std::runtime_error("failed: " + toUtf8(sql));
}

/// The sample standards with their layers again and again under other names.
class Standards {
 public:
  Standards() {
    std::string pattern = (fs::temp_directory_path() / "zarbo-bench-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
    fs::copy_file(SAMPLE_STANDARDS, file());
    engine_ = createObject<IZbEngine>(engineClassId);
    if (!engine_) throw std::runtime_error("the engine's class can't be made");
    Bstr status;
    engine_->Connect(Bstr(fromUtf8(file().string())).get(), 0, 0, status.put());
    const std::wstring columns = L"iColor, sLinetype, bPlot, sLineweight, sPlotstyle";
    for (int count = 240, copy = 1; count < rows; count *= 2, ++copy) {
      execute(*engine_, L"INSERT INTO tblLayer (sName, " + columns + L") SELECT sName & '-" +
                            std::to_wstring(copy) + L"', " + columns + L" FROM tblLayer");
    }
    execute(*engine_, L"DELETE FROM tblLayer WHERE ixLayer > " + std::to_wstring(rows));
  }
  ~Standards() {
    engine_.reset();
    fs::remove_all(folder_);
  }
  fs::path file() const { return folder_ / "standards.kv"; }
  IZbEngine* engine() const { return engine_.get(); }

 private:
  fs::path folder_;
  ComPtr<IZbEngine> engine_;
};

Standards& standards() {
  static Standards instance;
  return instance;
}

void walkByRecord(benchmark::State& state, const wchar_t* index) {
  for (auto _ : state) {
    tblLayer layer(true, standards().engine());
    int count = 0;
    layer.SetIndex(index);
    for (layer.MoveFirst(); !layer.IsEnd(); layer.MoveNext()) ++count;
    if (count != rows) state.SkipWithError("rows are missing");
  }
  state.SetItemsProcessed(state.iterations() * rows);
}
BENCHMARK_CAPTURE(walkByRecord, number, L"ixLayer")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(walkByRecord, name, L"sName")->Unit(benchmark::kMillisecond);

/// A value as a plain program would keep it.
struct PlainValue {
  int64_t integer = 0;
  std::string text;
};

void yardstickSqliteWalk(benchmark::State& state) {
  sqlite3* database = nullptr;
  sqlite3_open_v2(standards().file().c_str(), &database, SQLITE_OPEN_READONLY, nullptr);
  sqlite3_stmt* walk = nullptr;
  sqlite3_prepare_v2(database, "SELECT * FROM tblLayer ORDER BY rowid", -1, &walk, nullptr);
  const int columns = sqlite3_column_count(walk);
  std::vector<PlainValue> row(static_cast<size_t>(columns));
  for (auto _ : state) {
    int count = 0;
    for (; sqlite3_step(walk) == SQLITE_ROW; ++count) {
      for (int i = 0; i < columns; ++i) {
        PlainValue& value = row[static_cast<size_t>(i)];
        if (sqlite3_column_type(walk, i) == SQLITE_TEXT) {
          value.text = reinterpret_cast<const char*>(sqlite3_column_text(walk, i));
        } else {
          value.integer = sqlite3_column_int64(walk, i);
        }
      }
      benchmark::DoNotOptimize(row.data());
    }
    sqlite3_reset(walk);
    if (count != rows) state.SkipWithError("rows are missing");
  }
  state.SetItemsProcessed(state.iterations() * rows);
  sqlite3_finalize(walk);
  sqlite3_close(database);
}
BENCHMARK(yardstickSqliteWalk)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
