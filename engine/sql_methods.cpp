#include "engine/engine_object.h"

HRESULT EngineObject::ExecuteSql(BSTR, VARIANT* rows, VARIANT_BOOL* ok) {
  return attempt(rows, ok, []() -> COleSafeArray { fail(unexpectedFailure, "SQL is not built in"); });
}
HRESULT EngineObject::ExecuteStatement(BSTR, VARIANT_BOOL* ok) {
  return attempt(ok, [] { fail(unexpectedFailure, "SQL is not built in"); });
}
HRESULT EngineObject::ExecuteCommand(BSTR, LONG* count, VARIANT_BOOL* ok) {
  if (!count) return E_POINTER;
  *count = 0;
  return attempt(ok, [] { fail(unexpectedFailure, "SQL is not built in"); });
}
HRESULT EngineObject::RunQuery(BSTR, VARIANT, VARIANT* rows, VARIANT_BOOL* ok) {
  return attempt(rows, ok, []() -> COleSafeArray { fail(unexpectedFailure, "SQL is not built in"); });
}
HRESULT EngineObject::CreateQuery(BSTR, BSTR, VARIANT_BOOL* ok) {
  return attempt(ok, [] { fail(unexpectedFailure, "SQL is not built in"); });
}
HRESULT EngineObject::LinkTable(BSTR, BSTR, BSTR, VARIANT_BOOL* linked, VARIANT_BOOL* ok) {
  if (!linked) return E_POINTER;
  *linked = VARIANT_FALSE;
  return attempt(ok, [] { fail(unexpectedFailure, "links are not built in"); });
}
