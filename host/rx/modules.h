#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "brx/rx_modules.h"
#include "interfaces/function_help.h"
#include "platform/library/library.h"

namespace host {

/// A loaded module. The record outlives the unloading, since LISP may still hold its functions.
struct Application {
  /// Answers a word of `AcRx::AppRetCode`.
  using Entry = int (*)(AcRx::AppMsgCode message, void* applicationId);

  std::wstring fileName;
  std::unique_ptr<platform::Library> library;
  Entry entry = nullptr;
  bool unlocked = false;
  bool worksWithSeveralDocuments = false;
  /// By function code; null where none is registered.
  std::vector<int (*)()> functions;

  bool isLoaded() const { return entry != nullptr; }
  /// What the module tells of one of its functions; null where it tells nothing.
  const FunctionHelp* helpOn(const std::wstring& function) const;
};

/// What the loader needs of the documents, so that it stands below them.
struct DocumentVisitor {
  /// Makes each open document current in turn, calls back, and makes the former one current again.
  std::function<void(const std::function<void()>&)> forEachDocument;
  /// Takes the application's functions out of every document's LISP.
  std::function<void(Application&)> forgetFunctions;
};

class Modules {
 public:
  void setDocuments(DocumentVisitor visitor) { documents_ = std::move(visitor); }
  /// Folders in which modules are looked for after the program's own.
  void setSearchPath(std::vector<std::wstring> folders) { searchPath_ = std::move(folders); }
  /// `fileName` is loaded from `file` from now on.
  void setFileOf(std::wstring fileName, std::wstring file) {
    replacements_.emplace_back(std::move(fileName), std::move(file));
  }

  /// A module that is loaded already counts as success. `problem` says what was wrong.
  bool load(const std::wstring& fileName, std::wstring& problem);
  bool unload(const std::wstring& fileName, std::wstring& problem);
  /// Unloads all, the last loaded first, allowed or not.
  void unloadAll();
  /// Tells all modules, the first loaded first.
  void tellAll(AcRx::AppMsgCode message);
  std::vector<std::wstring> loadedFiles() const;

  /// The application that the host is calling now, or null.
  Application* current() const { return current_; }
  /// Calls one application; what it defines meanwhile belongs to it.
  template <class Work>
  int call(Application& application, Work work) {
    struct Restore {
      Application*& slot;
      Application* former;
      ~Restore() { slot = former; }
    } restore{current_, current_};
    current_ = &application;
    return work();
  }

 private:
  Application* find(const std::wstring& fileName) const;
  std::string locate(const std::wstring& fileName) const;
  int tell(Application& application, AcRx::AppMsgCode message);
  void remove(Application& application);

  std::vector<std::unique_ptr<Application>> all_;
  std::vector<Application*> loaded_;
  std::vector<std::wstring> searchPath_;
  std::vector<std::pair<std::wstring, std::wstring>> replacements_;
  DocumentVisitor documents_;
  Application* current_ = nullptr;
};

Modules& modules();

}  // namespace host
