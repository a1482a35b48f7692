#include "platform/archive/archive_writer.h"

#include <zip.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <optional>

#include "platform/archive/entries.h"
#include "platform/archive/extraction.h"
#include "platform/files/file_facts.h"
#include "platform/files/native_path.h"
#include "platform/files/whole_file.h"
#include "platform/text/utf.h"
#include "platform/text/xml_text.h"

namespace platform {

namespace {

/// The level at which the usual archivers work; the library's own default is the slowest one.
constexpr zip_uint32_t usualLevel = 6;

/// An end record that counts no entries: all that an empty archive holds. The library would write none.
constexpr std::string_view emptyArchive("PK\5\6\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 22);

bool writeEmptyArchive(const std::string& path) {
  WholeFile file(path);
  file.write(emptyArchive);
  return file.commit();
}

/// The full path without the root and without steps upward.
std::string withoutRoot(const std::string& path) {
  std::error_code problem;
  return std::filesystem::absolute(path, problem).lexically_normal().relative_path().native();
}

}  // namespace

struct ArchiveWriter::State {
  zip_t* archive = nullptr;
  std::string path;
  std::string lastError;
  EntryNames names;
  bool mendsNames = false;

  ~State() { drop(); }
  void drop() {
    if (archive) zip_discard(archive);
    archive = nullptr;
  }

  bool failed(const std::string& place, const std::string& reason) {
    lastError = place + ": " + reason;
    return false;
  }

  bool openWith(const std::string& file, int flags) {
    drop();
    names.clear();
    path = file;
    int code = 0;
    archive = zip_open(file.c_str(), flags, &code);
    if (archive) return true;
    zip_error_t error;
    zip_error_init_with_code(&error, code);
    failed(file, zip_error_strerror(&error));
    zip_error_fini(&error);
    return false;
  }

  bool appendFile(const std::string& file, std::string name) {
    // The library reads the file only when the archive is written; by then nobody could be told.
    const auto facts = factsOf(file);
    if (!facts || facts->kind != FileFacts::Kind::plain || !mayUse(file, FileUse::read))
      return failed(file, "is no readable file");
    if (mendsNames) name = names.mended(name);
    if (const std::string reason = names.add(name, false); !reason.empty()) return failed(file, reason);
    zip_source_t* const source = zip_source_file(archive, file.c_str(), 0, -1);
    if (!source) return failed(file, zip_strerror(archive));
    const zip_int64_t index = zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8);
    if (index < 0) {
      zip_source_free(source);
      return failed(file, zip_strerror(archive));
    }
    return zip_set_file_compression(archive, static_cast<zip_uint64_t>(index), ZIP_CM_DEFLATE, usualLevel) ==
           0;
  }

  bool appendFolderEntry(const std::string& folder) {
    std::string name = withoutRoot(folder);
    if (mendsNames) std::replace(name.begin(), name.end(), ':', '_');
    if (const std::string reason = names.add(name, true); !reason.empty()) return failed(folder, reason);
    return zip_dir_add(archive, name.c_str(), ZIP_FL_ENC_UTF_8) >= 0 || failed(folder, zip_strerror(archive));
  }

  bool appendFolder(const std::string& folder) {
    if (!appendFolderEntry(folder)) return false;
    std::error_code problem;
    std::filesystem::recursive_directory_iterator entry(folder, problem);
    for (; !problem && entry != std::filesystem::recursive_directory_iterator(); entry.increment(problem)) {
      const std::string path = entry->path().native();
      std::error_code ignored;
      if (!(entry->is_directory(ignored) ? appendFolderEntry(path) : appendFile(path, withoutRoot(path))))
        return false;
    }
    return !problem || failed(folder, problem.message());
  }
};

ArchiveWriter::ArchiveWriter() : state_(std::make_unique<State>()) {}
ArchiveWriter::~ArchiveWriter() = default;

void ArchiveWriter::setMendNames(bool mend) { state_->mendsNames = mend; }

bool ArchiveWriter::create(const std::wstring& path) {
  const std::string file = nativePath(path);
  const std::optional<std::string> place = replaceableFile(file);
  if (!place) return state_->failed(file, std::strerror(errno));
  if (!mayUse(splitPath(*place).folder, FileUse::readAndWrite))
    return state_->failed(file, "the folder can't be written");
  return state_->openWith(*place, ZIP_CREATE | ZIP_TRUNCATE);
}

bool ArchiveWriter::append(const std::wstring& path, bool keepPath) {
  const std::string file = nativePath(path);
  if (!state_->archive) return state_->failed(file, "no archive is open");
  const auto facts = factsOf(file);
  if (keepPath && facts && facts->kind == FileFacts::Kind::folder) return state_->appendFolder(file);
  return state_->appendFile(file, keepPath ? withoutRoot(file) : splitPath(file).name);
}

bool ArchiveWriter::writeAndClose() {
  if (!state_->archive) return state_->failed(state_->path, "no archive is open");
  if (zip_get_num_entries(state_->archive, 0) == 0) {
    state_->drop();
    return writeEmptyArchive(state_->path) || state_->failed(state_->path, "can't be written");
  }
  if (zip_close(state_->archive) != 0) {
    state_->failed(state_->path, zip_strerror(state_->archive));
    state_->drop();
    return false;
  }
  state_->archive = nullptr;
  return true;
}

bool ArchiveWriter::open(const std::wstring& path) { return state_->openWith(nativePath(path), ZIP_RDONLY); }

bool ArchiveWriter::extractAll(const std::wstring& folder, const ExtractLimits& limits) {
  if (!state_->archive) return state_->failed(state_->path, "no archive is open");
  std::string reason;
  if (extractArchive(state_->archive, nativePath(folder), limits, reason)) return true;
  return state_->failed(state_->path, reason);
}

const std::string& ArchiveWriter::lastError() const { return state_->lastError; }

void ArchiveWriter::close() { state_->drop(); }

bool ArchiveWriter::saveLastError(const std::wstring& file) const {
  WholeFile report(nativePath(file));
  report.write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<error>" + xmlText(state_->lastError) +
               "</error>\n");
  return report.commit();
}

}  // namespace platform
