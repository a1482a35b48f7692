#pragma once

#include <string>

#include "zarbo/database/engine_client.h"
#include "zarbo/standards/layer_records.h"

/// What the dialog over the layers works on: one connection, and a record on it for each table.
struct StandardsTables {
  StandardsTables(Engine connection, bool isNamed)
      : engine(std::move(connection)),
        isNamed(isNamed),
        layer(isNamed, &engine.object()),
        key(isNamed, &engine.object()),
        system(isNamed, &engine.object()) {}

  Engine engine;
  /// The database was named by the caller and isn't the drawing's own.
  bool isNamed;
  tblLayer layer;
  tblLayerKey key;
  tblLayerSystem system;

  std::wstring path() { return engine.databaseName(); }
};
