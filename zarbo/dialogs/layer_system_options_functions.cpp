#include <functional>
#include <optional>

#include "brx/lisp_calls.h"
#include "platform/text/digits.h"
#include "zarbo/database/connections.h"
#include "zarbo/dialogs/customization_functions.h"
#include "zarbo/dialogs/dialog_database.h"
#include "zarbo/dialogs/layer_system_options.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/widgets/dialog.h"

namespace {

/// The arguments from the path on, and the dialog on the database that they name. `run` is given the
/// connection, whether it was named, and the system.
int openOptions(ArgCursor& cursor, const std::function<void(IZbEngine*, bool, int32_t)>& run) {
  std::wstring path;
  const bool isNamed = getString(cursor, path);
  if (!isNamed && activeConnection()) path = activeConnection().databaseName();
  PrivateDatabase database;
  double number;
  if (!database || !getNumber(cursor, number)) return done;
  if (!database.open(path, printFailure)) return done;
  const ModuleResources resources;
  run(&database.engine().object(), isNamed, truncated(number));
  return done;
}

template <class Options>
int openPlainOptions() {
  acedRetNil();
  LispArgs args;
  return openOptions(args.cursor, [](IZbEngine* connection, bool isNamed, int32_t system) {
    Options(connection, isNamed, system).doModal();
  });
}

}  // namespace

int kvLayerSystemOptionsPlumb() { return openPlainOptions<CLayerSystemOptionsPlumb>(); }

int kvLayerSystemOptionsHvac() { return openPlainOptions<CLayerSystemOptionsHVAC>(); }

int kvLayerSystemOptionsElec() {
  acedRetNil();
  LispArgs args;
  std::wstring word;
  getString(args.cursor, word);
  return openOptions(args.cursor, [&](IZbEngine* connection, bool isNamed, int32_t system) {
    CLayerSystemOptionsElec(connection, isNamed, system, word).doModal();
  });
}
