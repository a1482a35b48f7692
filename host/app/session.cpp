#include "host/app/session.h"

#include <cstdio>
#include <iterator>
#include <stdexcept>

#include "host/access/access_functions.h"
#include "host/app/help.h"
#include "host/bridge/document_lisp.h"
#include "host/commands/command_functions.h"
#include "host/console/command_line.h"
#include "host/dialogs/dialog_functions.h"
#include "host/documents/documents.h"
#include "host/documents/variables.h"
#include "host/editor/editor_functions.h"
#include "host/rx/modules.h"
#include "host/script/script_functions.h"
#include "platform/com/automation.h"
#include "platform/com/class_objects.h"
#include "platform/settings/settings.h"
#include "platform/text/utf.h"

namespace host {
namespace {

const wchar_t* const solidModule = L"kv_kv-solidBrx21x64.arx";

void load(const std::wstring& module) {
  std::wstring problem;
  if (!modules().load(module, problem)) {
    std::fprintf(stderr, "zarbo-host: %s\n", toUtf8(problem).c_str());
  }
}

void loadModules(const Options& options) {
  if (!options.solid.empty()) {
    modules().setFileOf(solidModule, fromUtf8(options.solid));
    load(solidModule);
  } else {
    std::wstring ignored;
    modules().load(solidModule, ignored);
  }
  if (!options.noModule) load(fromUtf8(options.module));
}

void openDrawings(const Options& options) {
  for (const std::string& each : options.drawings) {
    std::wstring problem;
    if (!documents().openFile(fromUtf8(each), problem)) throw std::runtime_error(toUtf8(problem));
  }
  if (options.drawings.empty()) documents().create(L"");
}

/// The sections in which modules keep the user's values, which they open and never make.
void makeSections() {
  const std::wstring root = L"Software\\Korvane Software\\";
  for (const wchar_t* const section : {L"Shared", L"Electrical", L"HVAC", L"Plumbing"}) {
    if (platform::subsections(root + section)) continue;
    if (platform::makeSection(root + section) == platform::SettingStatus::done) continue;
    std::fprintf(stderr, "zarbo-host: %s: the user's settings can't be kept\n",
                 platform::settingsFolder().c_str());
    return;
  }
}

/// The user's settings may name the library of a class.
void useSettings(const Options& options) {
  if (!options.settings.empty()) platform::setSettingsFolder(options.settings);
  makeSections();
  setClassLibraryResolver([](const CLSID& classId) {
    wchar_t text[39];
    StringFromGUID2(classId, text, static_cast<int>(std::size(text)));
    return platform::classLibrary(text);
  });
}

}  // namespace

Session::Session(const Options& options, std::function<void(lisp::Interpreter&)> defineMore) {
  useSettings(options);
  std::vector<std::wstring> folders;
  for (const std::string& each : options.support) folders.push_back(fromUtf8(each));
  setSupportPath(folders);
  modules().setSearchPath(folders);
  setDocumentLispMaker([defineMore = std::move(defineMore)] {
    auto made = std::make_unique<InterpreterOfDocument>();
    defineScriptFunctions(made->interpreter());
    defineEditorFunctions(made->interpreter());
    defineAccessFunctions(made->interpreter());
    defineCommandFunctions(made->interpreter());
    defineDialogFunctions(made->interpreter());
    defineHelp(made->interpreter());
    if (defineMore) defineMore(made->interpreter());
    return made;
  });
  openDrawings(options);
  loadModules(options);
}

Session::~Session() {
  // What modules say at the end is of no interest to anybody.
  commandLine().setShown(false);
  documents().closeAll();
  documents().deleteClosedDrawings();
  modules().unloadAll();
}

}  // namespace host
