#include "engine/jet_snapshot.h"

#include <filesystem>
#include <mutex>

#include "engine/errors/errors.h"
#include "platform/files/file_facts.h"
#include "platform/library/library.h"
#include "platform/process/programs.h"

namespace {

// The state of a file from which something was made.
platform::FileFacts stateOf(const std::string& path) {
  const auto facts = platform::factsOf(path);
  if (!facts) fail(fileNotFound, path);
  return *facts;
}

std::string readerProgram() {
  const std::filesystem::path own = platform::fileOfCode(reinterpret_cast<const void*>(&readerProgram));
  return own.empty() ? "zarbo-mdb" : (own.parent_path() / "zarbo-mdb").string();
}

[[noreturn]] void failReading(const std::string& text) {
  throw jet::Failure{{notADatabase, text, std::nullopt}};
}

}  // namespace

std::shared_ptr<const JetSnapshot> JetSnapshot::of(const std::string& source) {
  static std::mutex mutex;
  static std::shared_ptr<const JetSnapshot> last;
  static platform::FileFacts lastState;
  const std::lock_guard lock(mutex);
  const platform::FileFacts state = stateOf(source);
  if (last && last->source() == source && state == lastState) return last;
  last.reset();
  last = std::make_shared<const JetSnapshot>(source);
  lastState = state;
  return last;
}

JetSnapshot::JetSnapshot(const std::string& source)
    : source_(source), folder_(std::filesystem::temp_directory_path().string()) {
  if (!folder_.good()) fail(noRight, std::filesystem::temp_directory_path().string());
  path_ = folder_.path() + "/snapshot.kv";
  std::string errors;
  const std::string program = readerProgram();
  const int status = runProgram({program, "import", "--quiet", source, path_}, errors);
  if (status == 0) return;
  if (status < 0 || errors.empty())
    failReading("The Jet file '" + source + "' can't be read: " + program + " doesn't run.");
  errors.erase(errors.find_last_not_of('\n') + 1);
  failReading("The Jet file can't be read. " + errors);
}
