#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>

/// A process that holds a file's lock until the object goes: alone, or against writers only.
class LockHolder {
 public:
  explicit LockHolder(const std::string& path, const char* lock = "BEGIN EXCLUSIVE") {
    EXPECT_EQ(pipe(ready_), 0);
    EXPECT_EQ(pipe(finish_), 0);
    child_ = fork();
    if (child_ == 0) {
      sqlite3* database;
      sqlite3_open(path.c_str(), &database);
      sqlite3_exec(database, lock, nullptr, nullptr, nullptr);
      char go = 'x';
      const bool told = write(ready_[1], &go, 1) == 1 && read(finish_[0], &go, 1) == 1;
      _exit(told ? 0 : 1);
    }
    char go = 'x';
    EXPECT_EQ(read(ready_[0], &go, 1), 1);
  }
  ~LockHolder() {
    EXPECT_EQ(write(finish_[1], "x", 1), 1);
    waitpid(child_, nullptr, 0);
    for (const int descriptor : {ready_[0], ready_[1], finish_[0], finish_[1]}) ::close(descriptor);
  }

 private:
  int ready_[2], finish_[2];
  pid_t child_;
};
