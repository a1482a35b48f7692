#!/usr/bin/env bash
# Installs a build into a folder, moves the folder, and works with the program from there: install.sh BUILD
set -euo pipefail
build=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "$*" >&2; exit 1; }

cmake --install "$build" --prefix "$work/first" >"$work/log" 2>&1 || { cat "$work/log"; fail "cmake --install failed"; }
mv "$work/first" "$work/there"
there=$work/there
share=$there/share/zarbo

# Nothing knows where it was built.
for file in "$there"/lib*/zarbo/* "$there"/lib*/*/zarbo/*; do
  [ -f "$file" ] || continue
  if readelf -d "$file" | grep -E 'R(UN)?PATH' | grep -v '\[\$ORIGIN\]'; then fail "$file looks for libraries elsewhere"; fi
done

host=(env -i HOME="$work" PATH=/usr/bin:/bin "$there/bin/zarbo-host" --settings "$work/settings" --support "$share/examples" --support "$share")
said() { "${host[@]}" --eval "$1" 2>&1 | tail -1; }
[ "$(said "(zb_connect \"$share/standards.kv\" \"r\")")" = T ] || fail "module, engine or sample database don't find each other"
[ "$(said '(cdr (car (kv_kv-leader-explode (kv_kv-leader-insert (list (list 0 0 0) (list 1 1 0) (list 2 1 0)) "0" "DuctTag" 0.1))))')" != nil ] ||
  fail "the sample blocks aren't found"
"${host[@]}" "$share/examples/floor_plan.lsp" --output "$work/plan.png" >"$work/log" 2>&1 || { cat "$work/log"; fail "the example doesn't run"; }
[ -s "$work/plan.png" ] || fail "no picture"
"$there/bin/zarbo-mdb" --help >/dev/null || fail "zarbo-mdb doesn't start"
[ -f "$there/share/doc/zarbo/docs/functions.md" ] || fail "the documents are missing"
