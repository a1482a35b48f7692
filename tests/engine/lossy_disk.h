#pragma once

#include <sqlite3.h>

#include <chrono>
#include <memory>
#include <random>
#include <string>

/// A disk under SQLite that keeps a diary of all that is written to files, so that the files can be shown as
/// a loss of power at any moment would have left them: what was synchronised is there, of the rest each
/// sector may or may not be, in any order, and so it is with files that were made or deleted.
class LossyDisk {
 public:
  using Clock = std::chrono::steady_clock;

  /// From now on SQLite's files in `folder` go through it; what is there already is on the disk.
  explicit LossyDisk(std::string folder);
  ~LossyDisk();
  LossyDisk(const LossyDisk&) = delete;
  LossyDisk& operator=(const LossyDisk&) = delete;

  /// Whether SQLite is told from now on that nothing can be brought to the disk.
  void failSyncs(bool fail);
  /// Entries of the diary so far.
  size_t events() const;
  Clock::time_point timeOf(size_t event) const;
  /// Writes into `folder` what is left when the power goes behind `event`.
  void loseAt(size_t event, const std::string& folder, std::mt19937& random) const;

  struct State;

 private:
  std::unique_ptr<State> state_;
};
