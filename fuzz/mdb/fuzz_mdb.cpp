// The reader of Jet files on a damaged sample. The input is a list of damages, six bytes each: where (three
// bytes), how many bytes (one), which byte, and a step by which it changes. What libmdb does with it is its
// own affair, and the reason why reading has a process of its own, here too; what this program's code does
// wrong is a finding.

#include <sanitizer/asan_interface.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>

#include "engine/mdb/jet_schema.h"
#include "engine/mdb/jet_table.h"
#include "engine/mdb/jet_values.h"
#include "tests/mdb/sample_file.h"

namespace {

constexpr int findingStatus = 99, longestSeconds = 20;

void readAll(std::vector<uint8_t> content) {
  try {
    mdb::JetFile file{std::span<uint8_t>(content)};
    for (const mdb::JetObject& object : file.objects()) {
      if (object.kind != MDB_TABLE) continue;
      try {
        mdb::JetTable table(file, object);
        for (std::vector<Stored> row; table.next(row);) {
        }
      } catch (const mdb::JetError&) {
      }
    }
    mdb::readRelations(file);
    mdb::readQueries(file);
    mdb::describeLinks(file);
  } catch (const mdb::JetError&) {
  }
}

// The innermost frames of a report tell whose fault it is; an interceptor's own stands before the caller's.
void judge(const char* report) {
  const char* frame = std::strstr(report, "#0");
  const char* end = frame ? std::strstr(frame, "#3") : nullptr;
  const std::string innermost = frame ? std::string(frame, end ? end : frame + std::strlen(frame)) : report;
  if (innermost.find("libmdb") != std::string::npos || innermost.find("libglib") != std::string::npos)
    _exit(0);
  const ssize_t ignored = write(STDOUT_FILENO, report, std::strlen(report));
  static_cast<void>(ignored);
  _exit(findingStatus);
}

void readInProcessOfItsOwn(const std::vector<uint8_t>& content) {
  const pid_t child = fork();
  if (child == 0) {
    std::signal(SIGSEGV, SIG_DFL);
    std::signal(SIGABRT, SIG_DFL);
    alarm(longestSeconds);
    if (!std::freopen("/dev/null", "w", stderr)) _exit(0);
    __asan_set_error_report_callback(judge);
    readAll(content);
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  if (WIFEXITED(status) && WEXITSTATUS(status) == findingStatus) std::abort();
}

std::vector<uint8_t> damaged(const uint8_t* data, size_t size) {
  static const std::vector<uint8_t> sample = sampleJetFile().finish();
  std::vector<uint8_t> content = sample;
  uint32_t hash = 1;
  for (size_t i = 0; i < size; ++i) hash = hash * 16777619 ^ data[i];
  for (; size >= 6; data += 6, size -= 6) {
    size_t place = static_cast<size_t>(data[0] | data[1] << 8 | data[2] << 16) % content.size();
    uint8_t byte = data[4];
    for (int i = 0; i <= data[3] && place < content.size();
         ++i, ++place, byte = static_cast<uint8_t>(byte + data[5]))
      content[place] = byte;
  }
  // Each input brings some more of its own: the file is large, and inputs begin small.
  std::minstd_rand random(hash);
  for (auto count = random() % 30; count > 0; --count)
    content[random() % content.size()] = static_cast<uint8_t>(random());
  return content;
}

// What parses bytes without libmdb.
void readParts(mdb::ByteView bytes) {
  const auto attempt = [](const auto& work) {
    try {
      work();
    } catch (const mdb::JetError&) {
    }
  };
  bool exact = true;
  mdb::textOfJet4(bytes);
  attempt([&] { mdb::guidText(bytes); });
  attempt([&] { mdb::decimalAsCurrency(bytes, 2); });
  attempt([&] { mdb::decimalAsDouble(bytes, 20, exact); });
  for (const bool isJet3 : {false, true})
    attempt([&] { mdb::parseIndexes(bytes, isJet3, {{0, "a"}, {1, "b"}}, mdb::textOfJet4); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  readParts({data, size});
  readInProcessOfItsOwn(damaged(data, size));
  return 0;
}
