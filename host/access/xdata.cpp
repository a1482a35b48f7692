#include "host/access/xdata.h"

#include "host/access/list_reader.h"
#include "host/access/refusal.h"
#include "host/lisp/builtins.h"

namespace host {
namespace {

using lisp::Value;

void requireBraces(const ListGroups& groups) {
  int depth = 0;
  for (const auto& [code, value] : groups) {
    if (code != 1002) continue;
    const bool opens = value->text() == L"{";
    require(opens || value->text() == L"}", Errno::badNesting);
    depth += opens ? 1 : -1;
    require(depth >= 0, Errno::badNesting);
  }
  require(depth == 0, Errno::badNesting);
}

}  // namespace

GroupList xdataGroups(const Value& applications) {
  GroupList data;
  std::string bytes;
  for (const Value& each : lisp::Elements(applications)) {
    if (!each.isCons() || !lisp::car(each).isText())
      lisp::failType(L"stringp", each.isCons() ? lisp::car(each) : each);
    data.append(1001, lisp::car(each).text().c_str());
    const ListGroups groups = groupsOf(lisp::cdr(each));
    requireBraces(groups);
    for (const ListGroup& group : groups) {
      require(group.code >= 1000 && group.code != 1001, Errno::badXdata);
      data.append(bufferOf(group, bytes));
    }
  }
  return data;
}

}  // namespace host
