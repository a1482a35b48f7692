#include "engine/database.h"

#include <atomic>
#include <filesystem>
#include <mutex>
#include <random>
#include <set>
#include <thread>

#include "engine/file_header.h"
#include "engine/jet_sql/jet_sql.h"
#include "platform/files/native_path.h"
#include "platform/text/quotes.h"
#include "platform/text/utf.h"

namespace {

/// How long a call waits for a lock of another connection, and how often it looks meanwhile. Who waits must
/// look often and at random, or those who come again and again take the lock before him every time.
constexpr std::chrono::milliseconds longestWait(3000);
constexpr int shortestLookMicroseconds = 100, longestLookMicroseconds = 1500;
/// Up to here every entry of every index is compared with its table when a file is opened.
constexpr int64_t fullCheckBytes = 8 << 20;
/// Up to here the structure of all pages is checked; beyond, only that the catalog can be read.
constexpr int64_t quickCheckBytes = 64 << 20;

/// Counted before each is done: who sees the count looks at the file, and finds it done.
std::atomic<uint64_t> commitsOfThisProcess = 0;

int countCommit(void*) {
  ++commitsOfThisProcess;
  return 0;
}

constexpr size_t longestPath = 4095;

// Files in which this process came upon damage while it worked: their next opening looks closely.
class SuspectFiles {
 public:
  static SuspectFiles& all() {
    static SuspectFiles instance;
    return instance;
  }
  void add(const std::string& path) {
    const std::lock_guard lock(mutex_);
    paths_.insert(path);
  }
  bool contains(const std::string& path) {
    const std::lock_guard lock(mutex_);
    return paths_.count(path) != 0;
  }
  void remove(const std::string& path) {
    const std::lock_guard lock(mutex_);
    paths_.erase(path);
  }

 private:
  std::mutex mutex_;
  std::set<std::string> paths_;
};

// How often this process has each file open.
class OpenFiles {
 public:
  using Identity = platform::FileIdentity;
  static OpenFiles& all() {
    static OpenFiles instance;
    return instance;
  }
  bool add(const Identity& file, bool alone) {
    const std::lock_guard lock(mutex_);
    if (alone && files_.count(file) != 0) return false;
    files_.insert(file);
    return true;
  }
  void remove(const Identity& file) {
    const std::lock_guard lock(mutex_);
    if (const auto found = files_.find(file); found != files_.end()) files_.erase(found);
  }

 private:
  std::mutex mutex_;
  std::multiset<Identity> files_;
};

// Only by its attributes: opening and closing a database file by other hands than SQLite's would drop the
// locks that this process has on it, and opening a pipe would wait for its other end.
void requireUsableFile(const std::string& path, bool forWriting) {
  const auto facts = platform::factsOf(path);
  if (!facts) {
    const platform::FileProblem problem = platform::lastFileProblem();
    if (problem == platform::FileProblem::notFound) fail(fileNotFound, path);
    failAtFile(problem, path);
  }
  if (facts->kind == platform::FileFacts::Kind::folder) fail(noRight, path);
  if (facts->kind != platform::FileFacts::Kind::plain || facts->size == 0) fail(notADatabase, path);
  const auto use = forWriting ? platform::FileUse::readAndWrite : platform::FileUse::read;
  if (!platform::mayUse(path, use)) fail(noRight, path);
}

}  // namespace

Database::Database(const std::string& path, Mode mode, Sharing sharing, Writing writing)
    : path_(path), readOnly_(mode == Mode::Read), flows_(mode == Mode::Write && writing == Writing::Flow) {
  if (mode != Mode::Create) requireUsableFile(path, mode == Mode::Write);
  enter(sharing);
  try {
    openChecked(mode);
  } catch (...) {
    OpenFiles::all().remove(identity_);
    throw;
  }
}

// Counts the file at the path as open here.
void Database::enter(Sharing sharing) {
  const Identity identity = fileIdentity(path_);
  if (identity == Identity()) fail(fileNotFound, path_);
  if (!OpenFiles::all().add(identity, sharing == Sharing::NotInThisProcess)) fail(fileInUse, path_);
  identity_ = identity;
}

bool Database::isReplaced() {
  constexpr auto betweenLooks = std::chrono::milliseconds(10);
  const auto time = std::chrono::steady_clock::now();
  if (time - lastLook_ < betweenLooks) return false;
  lastLook_ = time;
  const Identity now = fileIdentity(path_);
  if (now == identity_) return false;
  requireUsableFile(path_, !readOnly_);
  return true;
}

void Database::reopen() {
  statements_.clear();
  flusher_.reset();
  handle_.reset();
  logIsOpen_ = false;
  attached_ = 0;
  newest_ = {};
  const Identity before = identity_;
  enter(Sharing::Any);
  OpenFiles::all().remove(before);
  openChecked(readOnly_ ? Mode::Read : Mode::Write);
}

Database::~Database() {
  close();
  OpenFiles::all().remove(identity_);
}

// Who closes last takes the log away, so that a file at rest is one plain file. A log of a file that was
// replaced isn't by its name any more. What can't be taken away is left to the next who opens the file.
void Database::close() try {
  statements_.clear();
  flusher_.reset();
  const bool mine = handle_ && hasLog() && fileIdentity(path_) == identity_;
  if (mine && !readOnly_) leaveLog(handle());
  const bool left = mine && hasLog();
  handle_.reset();
  if (!left || !platform::mayUse(path_, platform::FileUse::readAndWrite)) return;
  // Others that close in this moment have found each other in the way.
  sqlite3* opened = nullptr;
  const int code = sqlite3_open_v2(path_.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
  handle_.reset(opened);
  if (code == SQLITE_OK) leaveLog(opened);
  handle_.reset();
} catch (const jet::Failure&) {
  handle_.reset();
}

void Database::openChecked(Mode mode) {
  onNetwork_ = platform::isOnNetwork(path_);
  if (onNetwork_) flows_ = false;
  removeForeignLog(path_);
  open(mode == Mode::Read    ? SQLITE_OPEN_READONLY
       : mode == Mode::Write ? SQLITE_OPEN_READWRITE
                             : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  if (!readOnly_ && sqlite3_db_readonly(handle(), "main") == 1) fail(noRight, path_);
  if (mode == Mode::Create) setModes();
}

void Database::open(int flags) {
  statements_.clear();
  sqlite3* opened = nullptr;
  const int code =
      sqlite3_open_v2(path_.c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
  handle_.reset(opened);
  if (code != SQLITE_OK) failSqlite(opened, code, Access::Open, path_);
  configure();
}

void Database::configure() {
  sqlite3* database = handle();
  sqlite3_busy_handler(database, waitForLock, this);
  sqlite3_commit_hook(database, countCommit, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  // A table is renamed without a look at triggers, which the catalog makes anew; others may be past mending.
  sqlite3_db_config(database, SQLITE_DBCONFIG_LEGACY_ALTER_TABLE, 1, nullptr);
  const int code = jet::registerFunctions(database);
  if (code != SQLITE_OK) failSqlite(database, code, Access::Open);
  execute("PRAGMA cell_size_check=ON", Access::Open);
  execute("PRAGMA temp_store=MEMORY", Access::Open);
}

int Database::waitForLock(void* object, int tries) {
  static thread_local std::minstd_rand random(std::random_device{}());
  auto& database = *static_cast<Database*>(object);
  const auto now = std::chrono::steady_clock::now();
  if (tries == 0) database.waitingSince_ = now;
  if (now - database.waitingSince_ >= longestWait) return 0;
  std::uniform_int_distribution<int> pause(shortestLookMicroseconds, longestLookMicroseconds);
  std::this_thread::sleep_for(std::chrono::microseconds(pause(random)));
  return 1;
}

// These read the file, so they come after the first read has shown that it can be read.
void Database::setModes() {
  execute("PRAGMA synchronous=EXTRA", Access::Open);
  execute("PRAGMA cache_size=-16000", Access::Open);
}

int Database::firstRead() {
  return sqlite3_exec(handle(), "SELECT count(*) FROM sqlite_schema", nullptr, nullptr, nullptr);
}

// Work that a connection for reading can't do is done by one for writing, once.
void Database::withRightToWrite(const std::function<void()>& work) {
  if (readOnly_) open(SQLITE_OPEN_READWRITE);
  if (sqlite3_db_readonly(handle(), "main") == 1) fail(noRight, path_);
  work();
  if (readOnly_) open(SQLITE_OPEN_READONLY);
}

bool Database::hasLog() const {
  FileHeader header;
  return readBytes(0, header.bytes(), FileHeader::size) &&
         header.journal() == FileHeader::Journal::WriteAhead;
}

// The file has a log: another program's, that of a killed process, or that of one which writes in this
// moment. Who lets his writes flow goes on with it. Others take it away, or read along while it is in use; on
// network shares, where it isn't safe, nobody does. False when the file is damaged.
bool Database::meetLog() try {
  if (flows_) return true;
  bool left = false;
  withRightToWrite([&] {
    left = leaveLog(handle());
    sqlite3_busy_handler(handle(), waitForLock, this);
  });
  if (!left && onNetwork_) fail(fileInUse, path_);
  return true;
} catch (const jet::Failure& failure) {
  if (failure.error.number == notADatabase) return false;
  if (failure.error.number != noRight || onNetwork_ || !readOnly_) throw;
  open(SQLITE_OPEN_READONLY);
  return true;
}

Database::Health Database::firstLook() {
  FileHeader header;
  const bool hasName = readBytes(0, header.bytes(), FileHeader::size) && header.hasName();
  // Before SQLite looks: it would make files for a log that isn't there.
  if (hasName && header.journal() == FileHeader::Journal::Unknown) return Health::Damaged;
  if (hasName && header.journal() == FileHeader::Journal::WriteAhead && !meetLog()) return Health::Damaged;
  int code = firstRead();
  if (code == SQLITE_READONLY_ROLLBACK || code == SQLITE_READONLY_RECOVERY) {
    // A writer that was killed in the middle left its journal, which has to be played back.
    withRightToWrite([&] { code = firstRead(); });
    if (code == SQLITE_OK) code = firstRead();
  }
  if ((code & 0xFF) == SQLITE_CORRUPT) return Health::Damaged;
  if ((code & 0xFF) == SQLITE_NOTADB) {
    // Under the right name it is one, with a header that can't be understood.
    if (hasName) return Health::Damaged;
    fail(notADatabase, path_);
  }
  // An unreadable schema is told as a plain error with a text of its own.
  if (code == SQLITE_ERROR) return Health::Damaged;
  if (code != SQLITE_OK) failSqlite(handle(), code, Access::Open);
  return Health::Good;
}

Database::Health Database::examine() {
  if (firstLook() == Health::Damaged) return Health::Damaged;
  setModes();
  if (!contentIsGood()) return Health::Damaged;
  SuspectFiles::all().remove(path_);
  return Health::Good;
}

bool Database::contentIsGood() {
  const auto facts = platform::factsOf(path_);
  if (!facts) fail(diskOrNetwork);
  const bool suspect = SuspectFiles::all().contains(path_);
  const char* check = nullptr;
  if (suspect || facts->size <= fullCheckBytes) {
    check = "PRAGMA integrity_check(1)";
  } else if (facts->size <= quickCheckBytes) {
    check = "PRAGMA quick_check(1)";
  }
  try {
    if (check) {
      Statement statement(handle(), check, Access::Open, 0);
      return statement.step() && statement.text(0) == "ok";
    }
    if (hasLog()) return true;  // whose pages the file doesn't have yet
    Statement pages(handle(), "PRAGMA page_count", Access::Open, 0);
    Statement size(handle(), "PRAGMA page_size", Access::Open, 0);
    return pages.step() && size.step() && pages.integer(0) * size.integer(0) <= facts->size;
  } catch (const jet::Failure& failure) {
    if (failure.error.number == notADatabase || failure.error.number == unexpectedFailure) return false;
    throw;
  }
}

void Database::tolerateDamagedSchema() {
  sqlite3_db_config(handle(), SQLITE_DBCONFIG_DEFENSIVE, 0, nullptr);
  execute("PRAGMA writable_schema=ON", Access::Open);
}

void Database::execute(std::string_view sql, Access access) {
  const int code = sqlite3_exec(handle(), std::string(sql).c_str(), nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) failSqlite(handle(), code, access);
}

Statement& Database::prepared(const std::string& sql, Access access) {
  auto found = statements_.find(sql);
  if (found == statements_.end()) found = statements_.emplace(sql, Statement(handle(), sql, access)).first;
  found->second.setAccess(access);
  return found->second;
}

bool Database::readBytes(int64_t place, void* bytes, int count, const char* schema) const {
  sqlite3_file* file = nullptr;
  sqlite3_file_control(handle(), schema, SQLITE_FCNTL_FILE_POINTER, &file);
  return file && file->pMethods && file->pMethods->xRead(file, bytes, count, place) == SQLITE_OK;
}

namespace {

/// Bytes 18 to 43 of the file: which journal it has, the counter of changes, and the schema's.
struct HeaderPart {
  static constexpr int place = 18, size = 26;
  unsigned char bytes[size];
  bool hasLog() const { return bytes[1] == 2; }
  uint32_t changes() const { return bigEndian(bytes + 6); }
  uint32_t schema() const { return bigEndian(bytes + 22); }
};

}  // namespace

void Database::beginReading() {
  stamp_ = {};
  if (!logIsOpen_) {
    HeaderPart header;
    if (!readBytes(HeaderPart::place, header.bytes, HeaderPart::size)) return;  // a file that begins
    if (!header.hasLog()) {
      stamp_ = schemaStamp_ = FileStamp(header.changes());
      schema_ = header.schema();
      return;
    }
    // Asking opens the log.
    Statement mode(handle(), "PRAGMA main.journal_mode", Access::Read, 0);
    logIsOpen_ = mode.step() && mode.text(0) == "wal";
  }
  if (!logIsOpen_) return;
  if (const auto state = newestLogState(handle())) stamp_ = FileStamp(*state);
}

// In a file with a log it stands there, and is asked for anew after commits.
uint32_t Database::schemaVersion(const char* schema) {
  const bool main = std::string_view(schema) == "main";
  if (main && stamp_ == schemaStamp_) return schema_;
  HeaderPart header;
  if (!main && readBytes(HeaderPart::place, header.bytes, HeaderPart::size, schema) && !header.hasLog()) {
    return header.schema();
  }
  Statement& version = prepared("PRAGMA " + ::quoted(schema) + ".schema_version", Access::Read);
  const Run run(version);
  if (!version.step()) fail(diskOrNetwork);
  const auto found = static_cast<uint32_t>(version.integer(0));
  // Within a transaction that writes it may be undone.
  if (main && sqlite3_txn_state(handle(), schema) != SQLITE_TXN_WRITE) {
    schemaStamp_ = stamp_;
    schema_ = found;
  }
  return found;
}

// Where there is a log the look is at memory. Else it is a call of the system, which costs a walk as much as
// all the rest.
bool Database::unchangedSince(const FileStamp& then) {
  if (onNetwork_) return false;
  if (logIsOpen_) {
    const auto state = then.isOfLog() ? newestLogState(handle()) : std::nullopt;
    return state && FileStamp(*state) == then;
  }
  const auto time = std::chrono::steady_clock::now();
  const uint64_t commits = commitsOfThisProcess.load();
  if (commits != commitsBefore_ || time - stampTime_ > longestTrust) {
    HeaderPart header;
    const bool counts = readBytes(HeaderPart::place, header.bytes, HeaderPart::size) && !header.hasLog();
    newest_ = counts ? FileStamp(header.changes()) : FileStamp();
    stampTime_ = time;
    commitsBefore_ = commits;
  }
  return newest_ == then;
}

void Database::beginWriting(Access access) {
  if (sqlite3_get_autocommit(handle()) == 0) return;
  if (flusher_) flusher_->requireHealthy();
  // What writes two files at once is done or not done in both only without logs.
  if (attached_ > 0 && flusher_) {
    settle();
    flusher_.reset();
    leaveLog(handle());
    sqlite3_busy_handler(handle(), waitForLock, this);
    logIsOpen_ = false;
  }
  if (!flows_ || flusher_ || attached_ > 0 || fileIdentity(path_) != identity_) return;
  execute("PRAGMA main.synchronous=EXTRA", Access::Open);
  Statement change(handle(), "PRAGMA main.journal_mode=WAL", access, 0);
  flows_ = change.step() && change.text(0) == "wal";
  while (change.step()) {
  }  // it is done with its last step
  // The first read opens the log, from when on nobody can take it away. Who has done so just now is let have
  // his way until the next change.
  execute("PRAGMA main.schema_version", access);
  Statement mode(handle(), "PRAGMA main.journal_mode", access, 0);
  if (flows_ && mode.step() && mode.text(0) == "wal") flow();
}

// From now on commits are not on the disk before the flusher, or a full log, has brought them there.
void Database::flow() {
  constexpr auto settings = "PRAGMA main.synchronous=NORMAL; PRAGMA main.journal_size_limit=16777216";
  execute(settings, Access::Open);
  flusher_ = std::make_unique<LogFlusher>(path_);
  sqlite3_wal_hook(handle(), committed, this);
}

int Database::committed(void* object, sqlite3*, const char* schema, int pages) {
  constexpr int fullLog = 4000;
  auto& database = *static_cast<Database*>(object);
  if (!database.flusher_ || std::string_view(schema) != "main") return SQLITE_OK;
  database.flusher_->written();
  if (pages >= fullLog) database.flusher_->relieve();
  return SQLITE_OK;
}

void Database::settle() {
  if (flusher_) flusher_->flush();
}

Database::Identity Database::fileIdentity(const std::string& path) {
  return platform::factsOf(path).value_or(platform::FileFacts()).identity;
}

void Database::attach(const std::string& path, const std::string& schema) {
  requireUsableFile(path, false);
  if (fileIdentity(path) == identity_) fail(invalidArgument, "a table can't be linked to its own file");
  const auto run = [&](const std::string& sql) {
    const int code = sqlite3_exec(handle(), sql.c_str(), nullptr, nullptr, nullptr);
    if (code == SQLITE_OK) return;
    const jet::Error error = errorOfSqlite(handle(), code, Access::Open, path);
    detach(schema);
    throw jet::Failure{error};
  };
  removeForeignLog(path);
  run("ATTACH " + ::quoted(path) + " AS " + ::quoted(schema));
  ++attached_;
  // The first look at its tables.
  run("SELECT 1 FROM " + ::quoted(schema) + ".sqlite_schema LIMIT 1");
  if (!Statement(handle(), "SELECT 1 FROM " + ::quoted(schema) + ".sqlite_schema WHERE name = 'zb_tables'",
                 Access::Open, 0)
           .step()) {
    detach(schema);
    fail(notADatabase, path);
  }
  // Within a transaction this is refused, and FULL stays, which only leaves the end of the journal to
  // chance.
  sqlite3_exec(handle(), ("PRAGMA " + ::quoted(schema) + ".synchronous=EXTRA").c_str(), nullptr, nullptr,
               nullptr);
}

void Database::detach(const std::string& schema) {
  const std::string sql = "DETACH " + ::quoted(schema);
  if (sqlite3_exec(handle(), sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK) --attached_;
}

Transaction::Transaction(Database& database, Kind kind, Access access)
    : database_(database), access_(access), outer_(sqlite3_get_autocommit(database.handle()) != 0) {
  if (!outer_) return;
  // The state before a reading transaction is as old as what it reads, or older; once a writing one has
  // begun, which it may wait for, nobody changes the state any more.
  kind == Kind::Write ? database.beginWriting(access) : database.beginReading();
  Statement& begin = database_.prepared(kind == Kind::Read ? "BEGIN" : "BEGIN IMMEDIATE", access);
  const Run run(begin);
  begin.step();
  if (kind == Kind::Read) return;
  try {
    database.beginReading();
  } catch (...) {
    sqlite3_exec(database.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
    throw;
  }
}

void Transaction::commit() {
  if (outer_) {
    Statement& statement = database_.prepared("COMMIT", access_);
    const Run run(statement);
    statement.step();
  }
  done_ = true;
}

Transaction::~Transaction() {
  if (done_ || !outer_ || sqlite3_get_autocommit(database_.handle()) != 0) return;
  sqlite3_exec(database_.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void noteDamage(const char* path) {
  if (path) SuspectFiles::all().add(path);
}

std::string quoted(std::string_view name) { return inQuotes(name, '"'); }

std::string fullPath(std::wstring_view path) {
  if (path.empty() || path.find(L'\0') != std::wstring_view::npos) fail(badFileName, toUtf8(path));
  const std::string result = platform::nativePath(path);
  if (result.size() > longestPath) fail(badPath, result.substr(0, 60) + "…");
  return platform::absolutePath(result);
}
