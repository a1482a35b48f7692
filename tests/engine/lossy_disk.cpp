#include "tests/engine/lossy_disk.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <map>
#include <mutex>
#include <vector>

namespace {

constexpr size_t sector = 512;

struct Event {
  enum Kind { Write, Truncate, Sync, Delete, SyncFolder } kind;
  std::string file;
  size_t place = 0;  // of a write; the new size of a cut; where the diary was when a synchronisation began
  std::string bytes;
  LossyDisk::Clock::time_point time = LossyDisk::Clock::now();
};

/// A file on the disk, and what was done to it since it was synchronised.
struct DiskFile {
  std::string content;
  bool exists = false;
  std::vector<const Event*> pending;
};

void put(std::string& content, size_t place, std::string_view bytes) {
  if (content.size() < place + bytes.size()) content.resize(place + bytes.size(), '\0');
  content.replace(place, bytes.size(), bytes);
}

void apply(const Event& event, DiskFile& file) {
  file.exists = event.kind != Event::Delete;
  if (event.kind == Event::Write) put(file.content, event.place, event.bytes);
  if (event.kind == Event::Truncate) file.content.resize(event.place, '\0');
  if (event.kind == Event::Delete) file.content.clear();
}

/// What became of changes that nobody waited for. After a deletion that didn't reach the disk the old file is
/// there, and what was written to the new one is another file's.
void applySome(DiskFile& file, std::mt19937& random) {
  for (const Event* event : file.pending) {
    if (event->kind == Event::Delete && random() % 2 == 0) return;
    if (event->kind == Event::Truncate && random() % 2 == 0) continue;
    if (event->kind != Event::Write) {
      apply(*event, file);
      continue;
    }
    for (size_t at = 0; at < event->bytes.size(); at += sector) {
      if (random() % 2 == 0) continue;
      file.exists = true;
      put(file.content, event->place + at, std::string_view(event->bytes).substr(at, sector));
    }
  }
}

}  // namespace

struct LossyDisk::State {
  std::string folder;
  sqlite3_vfs vfs{};
  sqlite3_vfs* below = nullptr;
  std::map<std::string, DiskFile> before;  // what was in the folder at the begin
  mutable std::mutex mutex;
  std::vector<Event> diary;
  std::atomic<bool> syncsFail = false;

  void note(Event event) {
    const std::lock_guard lock(mutex);
    diary.push_back(std::move(event));
  }
};

namespace {

/// SQLite's file object; the system's stands right behind it.
struct File {
  sqlite3_file base;
  LossyDisk::State* disk;
  std::string* name;  // null for files that aren't watched
  sqlite3_file* below() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

File& of(sqlite3_file* file) { return *reinterpret_cast<File*>(file); }
LossyDisk::State& of(sqlite3_vfs* vfs) { return *static_cast<LossyDisk::State*>(vfs->pAppData); }

template <auto Method, class... Arguments>
int pass(sqlite3_file* file, Arguments... arguments) {
  sqlite3_file* const below = of(file).below();
  return (below->pMethods->*Method)(below, arguments...);
}

int closeFile(sqlite3_file* file) {
  const int code = pass<&sqlite3_io_methods::xClose>(file);
  delete of(file).name;
  return code;
}

int writeFile(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 place) {
  if (of(file).name) {
    of(file).disk->note({Event::Write, *of(file).name, static_cast<size_t>(place),
                         std::string(static_cast<const char*>(bytes), static_cast<size_t>(count))});
  }
  return pass<&sqlite3_io_methods::xWrite>(file, bytes, count, place);
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size) {
  if (of(file).name) of(file).disk->note({Event::Truncate, *of(file).name, static_cast<size_t>(size), {}});
  return pass<&sqlite3_io_methods::xTruncate>(file, size);
}

int syncFile(sqlite3_file* file, int flags) {
  LossyDisk::State& disk = *of(file).disk;
  if (!of(file).name) return pass<&sqlite3_io_methods::xSync>(file, flags);
  if (disk.syncsFail) return SQLITE_IOERR_FSYNC;
  // Others may write meanwhile.
  size_t begin;
  {
    const std::lock_guard lock(disk.mutex);
    begin = disk.diary.size();
  }
  const int code = pass<&sqlite3_io_methods::xSync>(file, flags);
  disk.note({Event::Sync, *of(file).name, begin, {}});
  return code;
}

const sqlite3_io_methods methods = [] {
  sqlite3_io_methods all{};
  all.iVersion = 2;
  all.xClose = closeFile;
  all.xRead = pass<&sqlite3_io_methods::xRead>;
  all.xWrite = writeFile;
  all.xTruncate = truncateFile;
  all.xSync = syncFile;
  all.xFileSize = pass<&sqlite3_io_methods::xFileSize>;
  all.xLock = pass<&sqlite3_io_methods::xLock>;
  all.xUnlock = pass<&sqlite3_io_methods::xUnlock>;
  all.xCheckReservedLock = pass<&sqlite3_io_methods::xCheckReservedLock>;
  all.xFileControl = pass<&sqlite3_io_methods::xFileControl>;
  all.xSectorSize = pass<&sqlite3_io_methods::xSectorSize>;
  // Nothing is promised about the order and wholeness of writes.
  all.xDeviceCharacteristics = [](sqlite3_file*) { return 0; };
  all.xShmMap = pass<&sqlite3_io_methods::xShmMap>;
  all.xShmLock = pass<&sqlite3_io_methods::xShmLock>;
  all.xShmBarrier = [](sqlite3_file* file) { of(file).below()->pMethods->xShmBarrier(of(file).below()); };
  all.xShmUnmap = pass<&sqlite3_io_methods::xShmUnmap>;
  return all;
}();

int openFile(sqlite3_vfs* vfs, const char* path, sqlite3_file* file, int flags, int* flagsOut) {
  LossyDisk::State& disk = of(vfs);
  File& own = of(file);
  own = File{{nullptr}, &disk, nullptr};
  const int code = disk.below->xOpen(disk.below, path, own.below(), flags, flagsOut);
  if (!own.below()->pMethods) return code;
  own.base.pMethods = &methods;
  const std::filesystem::path whole(path ? path : "");
  if (whole.parent_path() == disk.folder) own.name = new std::string(whole.filename());
  return code;
}

// The first synchronisation of a new file brings its name to the disk as well: so do the file systems that
// are in use, and SQLite synchronises the folder then.
int deleteFile(sqlite3_vfs* vfs, const char* path, int syncFolder) {
  LossyDisk::State& disk = of(vfs);
  const int code = disk.below->xDelete(disk.below, path, syncFolder);
  const std::filesystem::path whole(path);
  if (whole.parent_path() != disk.folder || code != SQLITE_OK) return code;
  disk.note({Event::Delete, whole.filename(), 0, {}});
  if (syncFolder) disk.note({Event::SyncFolder, "", 0, {}});
  return code;
}

}  // namespace

LossyDisk::LossyDisk(std::string folder) : state_(std::make_unique<State>()) {
  state_->folder = std::move(folder);
  for (const auto& each : std::filesystem::directory_iterator(state_->folder)) {
    std::ifstream in(each.path(), std::ios::binary);
    state_->before[each.path().filename()] = {
        {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()}, true, {}};
  }
  state_->below = sqlite3_vfs_find(nullptr);
  state_->vfs = *state_->below;
  state_->vfs.zName = "lossy";
  state_->vfs.pAppData = state_.get();
  state_->vfs.szOsFile = static_cast<int>(sizeof(File)) + state_->below->szOsFile;
  state_->vfs.xOpen = openFile;
  state_->vfs.xDelete = deleteFile;
  sqlite3_vfs_register(&state_->vfs, 1);
}

LossyDisk::~LossyDisk() {
  sqlite3_vfs_unregister(&state_->vfs);
  sqlite3_vfs_register(state_->below, 1);
}

size_t LossyDisk::events() const {
  const std::lock_guard lock(state_->mutex);
  return state_->diary.size();
}

LossyDisk::Clock::time_point LossyDisk::timeOf(size_t event) const { return state_->diary[event].time; }

void LossyDisk::failSyncs(bool fail) { state_->syncsFail = fail; }

void LossyDisk::loseAt(size_t event, const std::string& folder, std::mt19937& random) const {
  std::map<std::string, DiskFile> files = state_->before;
  // Brings the first changes of a file to the disk.
  const auto settle = [](DiskFile& file, auto end) {
    std::for_each(file.pending.begin(), end, [&](const Event* each) { apply(*each, file); });
    file.pending.erase(file.pending.begin(), end);
  };
  for (const Event* each = state_->diary.data(); each != state_->diary.data() + event; ++each) {
    if (each->kind == Event::SyncFolder) {
      // Deletions are there; what was written to a new file of the name need not be.
      for (auto& [name, file] : files) {
        const auto last = std::find_if(file.pending.rbegin(), file.pending.rend(),
                                       [](const Event* one) { return one->kind == Event::Delete; });
        settle(file, last.base());
      }
    } else if (each->kind == Event::Sync) {
      auto& pending = files[each->file].pending;
      const Event* const begin = state_->diary.data() + each->place;
      settle(files[each->file],
             std::find_if(pending.begin(), pending.end(), [&](const Event* one) { return one >= begin; }));
    } else {
      files[each->file].pending.push_back(each);
    }
  }
  for (auto& [name, file] : files) {
    applySome(file, random);
    if (!file.exists) continue;
    std::ofstream(folder + "/" + name, std::ios::binary) << file.content;
  }
}
