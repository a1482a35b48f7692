#include "bench/database/contestants.h"

#include <cstdlib>

#include "engine/text/collation.h"
#include "platform/com/class_objects.h"
#include "platform/text/utf.h"

namespace {

void require(bool good, const char* what) {
  if (good) return;
  std::fprintf(stderr, "database_bench: %s failed\n", what);
  std::exit(1);
}

int collate(void*, int leftSize, const void* left, int rightSize, const void* right) {
  return compareLanguage({static_cast<const char*>(left), static_cast<size_t>(leftSize)},
                         {static_cast<const char*>(right), static_cast<size_t>(rightSize)});
}

COleSafeArray arrayOf(const std::vector<COleVariant>& items) {
  COleSafeArray array;
  array.CreateOneDim(VT_VARIANT, static_cast<ULONG>(items.size()), items.data());
  return array;
}

std::wstring columnName(int column) { return L"c" + std::to_wstring(column); }

COleSafeArray fieldsOf(int row) {
  std::vector<COleVariant> items = {COleVariant(L"sKey"), COleVariant(fromUtf8(keyOf(row)))};
  for (int c = 0; c < plainColumns; ++c) {
    items.emplace_back(columnName(c));
    items.push_back(c % 3 == 0   ? COleVariant(static_cast<LONG>(row + c))
                    : c % 3 == 1 ? COleVariant(row * 0.5)
                                 : COleVariant(fromUtf8(textOf(row))));
  }
  return arrayOf(items);
}

std::string lispFieldsOf(int row) {
  std::string list = "((\"sKey\" . \"" + keyOf(row) + "\")";
  for (int c = 0; c < plainColumns; ++c) {
    list += "(\"c" + std::to_string(c) + "\" . " +
            (c % 3 == 0   ? std::to_string(row + c)
             : c % 3 == 1 ? std::to_string(row * 0.5)
                          : "\"" + textOf(row) + "\"") +
            ")";
  }
  return list + ")";
}

}  // namespace

std::string keyOf(int row) { return "part " + std::to_string(1000000 + row * 7919LL % 1000003); }
std::string textOf(int row) { return "value " + std::to_string(row); }

PlainProgram::PlainProgram(const std::string& path) : row_(plainColumns + 2) {
  require(sqlite3_open(path.c_str(), &database_) == SQLITE_OK, "opening");
  sqlite3_create_collation_v2(database_, languageOrder, SQLITE_UTF8, nullptr, collate, nullptr);
  run("PRAGMA synchronous=EXTRA");
  run("PRAGMA cache_size=-16000");
  find_ = prepare("SELECT * FROM T WHERE sKey = ? LIMIT 1");
  walk_ = prepare("SELECT * FROM T ORDER BY sKey, id");
  insert_ = prepare("INSERT INTO T VALUES(NULL, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?) RETURNING *");
  update_ = prepare("UPDATE T SET c0 = ?1, c2 = ?2 WHERE id = ?3 RETURNING *");
}

PlainProgram::~PlainProgram() {
  for (sqlite3_stmt* statement : statements_) sqlite3_finalize(statement);
  sqlite3_close(database_);
}

void PlainProgram::run(const char* sql) {
  require(sqlite3_exec(database_, sql, nullptr, nullptr, nullptr) == SQLITE_OK, sql);
}

sqlite3_stmt* PlainProgram::prepare(const char* sql) {
  sqlite3_stmt* statement = nullptr;
  require(sqlite3_prepare_v2(database_, sql, -1, &statement, nullptr) == SQLITE_OK, sql);
  statements_.push_back(statement);
  return statement;
}

void PlainProgram::copyRow(sqlite3_stmt* row) {
  for (int i = 0; i < plainColumns + 2; ++i) {
    Value& value = row_[static_cast<size_t>(i)];
    if (sqlite3_column_type(row, i) == SQLITE_TEXT) {
      value.text = reinterpret_cast<const char*>(sqlite3_column_text(row, i));
    } else {
      value.number = sqlite3_column_double(row, i);
    }
  }
}

void PlainProgram::insert(int row) {
  const std::string key = keyOf(row), text = textOf(row);
  sqlite3_bind_text(insert_, 1, key.c_str(), -1, SQLITE_STATIC);
  for (int c = 0; c < plainColumns; ++c) {
    if (c % 3 == 0) sqlite3_bind_int(insert_, c + 2, row + c);
    if (c % 3 == 1) sqlite3_bind_double(insert_, c + 2, row * 0.5);
    if (c % 3 == 2) sqlite3_bind_text(insert_, c + 2, text.c_str(), -1, SQLITE_STATIC);
  }
  require(sqlite3_step(insert_) == SQLITE_ROW, "inserting");
  copyRow(insert_);
  require(sqlite3_step(insert_) == SQLITE_DONE, "inserting");
  sqlite3_reset(insert_);
}

void PlainProgram::fill(int rows) {
  run("BEGIN");
  for (int i = 0; i < rows; ++i) insert(i);
  run("COMMIT");
}

void PlainProgram::flow() {
  run("PRAGMA journal_mode=WAL");
  run("PRAGMA synchronous=NORMAL");
}

void PlainProgram::prepareSeek(const std::vector<int>& rows) {
  keys_.clear();
  for (const int row : rows) keys_.push_back(keyOf(row));
}

void PlainProgram::seek() {
  for (const std::string& key : keys_) {
    sqlite3_bind_text(find_, 1, key.c_str(), -1, SQLITE_STATIC);
    require(sqlite3_step(find_) == SQLITE_ROW, "seeking");
    copyRow(find_);
    sqlite3_reset(find_);
  }
}

void PlainProgram::skip(int times) {
  for (int i = 0; i < times; ++i) {
    require(sqlite3_step(walk_) == SQLITE_ROW, "walking");
    copyRow(walk_);
  }
}

void PlainProgram::prepareAppend(const std::vector<int>& rows) { rows_ = rows; }

void PlainProgram::append() {
  for (const int row : rows_) insert(row);
}

void PlainProgram::replace() {
  for (int i = 0; i < replaceTimes_; ++i) {
    const std::string text = textOf(i);
    sqlite3_bind_int(update_, 1, i);
    sqlite3_bind_text(update_, 2, text.c_str(), -1, SQLITE_STATIC);
    sqlite3_bind_int(update_, 3, replaced_);
    require(sqlite3_step(update_) == SQLITE_ROW, "updating");
    copyRow(update_);
    require(sqlite3_step(update_) == SQLITE_DONE, "updating");
    sqlite3_reset(update_);
  }
}

void EngineObjectUser::createFile(const std::string& path) {
  const auto engine = createObject<IZbEngine>(engineClassId);
  require(engine.get() != nullptr, "loading the engine");
  const Bstr name(fromUtf8(path)), table(L"T");
  VARIANT_BOOL ok;
  engine->CreateDatabase(name.get(), &ok);
  require(ok, "making the file");
  Bstr status;
  engine->Connect(name.get(), 0, 0, status.put());
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
    entry(columnName(c), c % 3 == 0 ? L"long" : c % 3 == 1 ? L"double" : L"text(50)");
  }
  entry(L"id", L"index primary");
  entry(L"sKey", L"index");
  engine->CreateTable(table.get(), arrayOf(definition), &ok);
  require(ok, "making the table");
}

EngineObjectUser::EngineObjectUser(const std::string& path)
    : engine_(createObject<IZbEngine>(engineClassId)) {
  Bstr status;
  engine_->Connect(Bstr(fromUtf8(path)).get(), 0, 0, status.put());
  require(status.view() == L"OK", "connecting");
  VARIANT_BOOL ok;
  engine_->SetTable(Bstr(L"T").get(), Bstr(L"sKey").get(), &ok);
  require(ok, "opening the table");
}

void EngineObjectUser::prepareSeek(const std::vector<int>& rows) {
  keys_.clear();
  for (const int row : rows) keys_.emplace_back(fromUtf8(keyOf(row)));
}

void EngineObjectUser::seek() {
  for (const COleVariant& key : keys_) {
    COleVariant record;
    VARIANT_BOOL ok;
    engine_->Seek1(key, record.put(), &ok);
    require(ok, "seeking");
  }
}

void EngineObjectUser::goToTop() {
  COleVariant record;
  VARIANT_BOOL ok;
  engine_->MoveTop(record.put(), &ok);
}

void EngineObjectUser::skip(int times) {
  for (int i = 0; i < times; ++i) {
    COleVariant record;
    VARIANT_BOOL ok;
    engine_->Skip(1, record.put(), &ok);
    require(ok, "walking");
  }
}

void EngineObjectUser::prepareAppend(const std::vector<int>& rows) {
  rows_.clear();
  for (const int row : rows) rows_.push_back(fieldsOf(row));
}

void EngineObjectUser::append() {
  for (const COleSafeArray& row : rows_) {
    COleVariant record;
    VARIANT_BOOL ok;
    engine_->Append(row, 0, record.put(), &ok);
    require(ok, "appending");
  }
}

void EngineObjectUser::prepareReplace(int row, int times) {
  prepareSeek({row - 1});
  seek();
  rows_.clear();
  for (int i = 0; i < times; ++i) {
    rows_.push_back(arrayOf({COleVariant(L"c0"), COleVariant(static_cast<LONG>(i)), COleVariant(L"c2"),
                             COleVariant(fromUtf8(textOf(i)))}));
  }
}

void EngineObjectUser::replace() {
  for (const COleSafeArray& fields : rows_) {
    COleVariant record;
    VARIANT_BOOL ok;
    engine_->Replace(fields, record.put(), &ok);
    require(ok, "replacing");
  }
}

LispApplication::LispApplication(const std::string& path) {
  host_.expect("(zb_connect \"" + path + "\" \"w\")", "T");
  host_.expect("(zb_table \"T\" \"sKey\")", "\"T\"");
  host_.ask("(defun seek-all () (foreach key keys (setq got (zb_seek key))) (not (null got)))");
  host_.ask("(defun skip-all (times) (repeat times (setq got (zb_skip))) (not (null got)))");
  host_.ask("(defun append-all () (foreach row rows (setq got (zb_append row))) (not (null got)))");
  host_.ask("(defun replace-all () (foreach row rows (setq got (zb_replace row))) (not (null got)))");
}

void LispApplication::prepareSeek(const std::vector<int>& rows) {
  std::string form = "(setq keys '(";
  for (const int row : rows) form += "\"" + keyOf(row) + "\" ";
  host_.expect(form + ") got nil ready T)", "T");
}

void LispApplication::seek() { host_.expect("(seek-all)", "T"); }
void LispApplication::goToTop() { host_.expect("(null (zb_top))", "nil"); }
void LispApplication::skip(int times) { host_.expect("(skip-all " + std::to_string(times) + ")", "T"); }

void LispApplication::prepareAppend(const std::vector<int>& rows) {
  std::string form = "(setq rows '(";
  for (const int row : rows) form += lispFieldsOf(row);
  host_.expect(form + ") got nil ready T)", "T");
}

void LispApplication::append() { host_.expect("(append-all)", "T"); }

void LispApplication::prepareReplace(int row, int times) {
  host_.expect("(null (zb_seek \"" + keyOf(row - 1) + "\"))", "nil");
  std::string form = "(setq rows '(";
  for (int i = 0; i < times; ++i) {
    form += "((\"c0\" . " + std::to_string(i) + ") (\"c2\" . \"" + textOf(i) + "\"))";
  }
  host_.expect(form + ") got nil ready T)", "T");
}

void LispApplication::replace() { host_.expect("(replace-all)", "T"); }
