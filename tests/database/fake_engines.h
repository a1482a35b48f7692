#pragma once

#include <gtest/gtest.h>

#include <deque>

#include "host/console/command_line.h"
#include "host/documents/documents.h"
#include "platform/com/class_objects.h"
#include "tests/support/fake_engine.h"
#include "tests/support/recording_call.h"
#include "zarbo/database/connections.h"
#include "zarbo/database/failure.h"

/// Drawings with the records that the module keeps for them, and engines that hold no data.
class FakeEngines : public testing::Test {
 protected:
  FakeEngines()
      : registration_(registerClassObject(engineClassId, [this](const IID& iid, void** object) {
          engines.emplace_back();
          if (prepare) prepare(engines.back());
          return engines.back().QueryInterface(iid, object);
        })) {}

  void SetUp() override {
    openDrawing(L"A.dwg");
    lastErrorText().clear();
    host::commandLine().setShown(false);
    host::commandLine().takeRecord();
  }
  void TearDown() override {
    ensureConnection();
    dropHeadRecord();
    closeAllConnections();
    host::documents().closeAll();
    host::documents().discardClosed();
    for (const FakeEngine& each : engines) EXPECT_EQ(each.references, 0u);
  }

  static void openDrawing(const std::wstring& name) {
    host::documents().create(name);
    addDrawingRecord();
  }
  static void activate(const std::wstring& name) {
    host::documents().activate(*host::documents().find(name));
    ensureConnection();
  }
  /// The result of `(zb_connect …)`, made as the wrapper makes it.
  static std::wstring connect(const wchar_t* path, const wchar_t* mode = L"w") {
    ensureConnection();
    return served(acutBuildList(RTSTR, path, RTSTR, mode, RTNONE), [] { code = zbConnect(); });
  }
  static std::wstring activeName() {
    ensureConnection();
    return served(nullptr, [] { zbMdb(); });
  }

  inline static int code = 0;
  std::deque<FakeEngine> engines;
  std::function<void(FakeEngine&)> prepare;

 private:
  ClassRegistration registration_;
};
