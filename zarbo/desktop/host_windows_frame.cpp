#include "platform/desktop/desktop.h"
#include "zarbo/desktop/host_windows.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/frame/list_builder.h"

namespace {

using MainWindow = platform::Desktop::MainWindow;

constexpr int meterDone = 0;
constexpr int meterRefused = -1;

template <class Change>
void changeMainWindow(Change change) {
  MainWindow state = platform::desktop().mainWindow();
  change(state);
  platform::desktop().setMainWindow(std::move(state));
}

}  // namespace

int setStatusBarProgressMeter() {
  acedRetNil();
  LispArgs args;
  std::wstring label;
  int32_t minimum, maximum;
  if (!getString(args.cursor, label) || !getLong(args.cursor, minimum) || !getLong(args.cursor, maximum))
    return wrongType;
  changeMainWindow([&](MainWindow& state) {
    state.meterShown = true;
    state.progressLabel = label;
    state.progress = state.progressMinimum = minimum;
    state.progressMaximum = maximum;
  });
  retNumber(meterDone);
  return done;
}

int setStatusBarProgressMeterPos() {
  acedRetNil();
  LispArgs args;
  int32_t position;
  if (!getLong(args.cursor, position)) return wrongType;
  if (!platform::desktop().mainWindow().meterShown) {
    retNumber(meterRefused);
    return done;
  }
  changeMainWindow([&](MainWindow& state) { state.progress = position; });
  retNumber(meterDone);
  return done;
}

int restoreStatusBar() {
  acedRetVoid();
  changeMainWindow([](MainWindow& state) { state.meterShown = false; });
  return done;
}

void enableMainWindow(bool enabled) {
  changeMainWindow([&](MainWindow& state) { state.enabled = enabled; });
}

int kvEnableAutoCadWindow() {
  acedRetVoid();
  enableMainWindow(true);
  return done;
}

int kvDisableAutoCadWindow() {
  acedRetVoid();
  enableMainWindow(false);
  return done;
}

int kvGetAcadWindowText() {
  acedRetStr(platform::desktop().mainWindow().text.c_str());
  return done;
}

int kvSetAcadWindowText() {
  acedRetNil();
  LispArgs args;
  std::wstring title;
  if (getString(args.cursor, title)) {
    changeMainWindow([&](MainWindow& state) { state.text = title; });
  }
  return done;
}
