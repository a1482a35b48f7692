"""The check itself: each rule catches its breach, and lets through what looks like one."""
import collections
import pathlib
import tempfile
import unittest

import house

TABLE = house.arrows()

BREACHES = [
    # file, text, what is said of it (empty: nothing)
    ("host/rx/a.cpp", '#include "host/documents/variables.h"\n', "host/rx may not include host/documents"),
    ("host/bridge/a.h", '#include "host/access/arguments.h"\n', "host/bridge may not include host/access"),
    ("zarbo/frame/a.h", '#include "zarbo/module/wrappers.h"\n', "zarbo/frame may not include zarbo/module"),
    ("engine/a.cpp", '#include "engine/mdb/import.h"\n', "engine may not include engine/mdb"),
    ("zarbo/module/a.cpp", '#include "host/lisp/value.h"\n', "zarbo/module may not include host/lisp"),
    ("host/rx/a.cpp", '#include "registry.h"\n', "registry.h is no path"),
    ("host/nowhere/a.cpp", "int a;\n", "lies in no room"),
    ("host/rx/a.cpp", "#  include <sys/stat.h>\n", "is for platform/ alone"),
    ("host/rx/a.cpp", "const auto c = std::towupper(d);\n", "letters are folded"),
    ("host/rx/a.cpp", "namespace host {\nstruct Same {};\n}  // namespace host\n", "host::Same is defined in host/lisp/other.h and host/rx/a.cpp"),
    ("host/rx/a.cpp", "namespace host {\nclass Same\n    : Base {};\n}  // namespace host\n", "host::Same is defined in"),
    ("host/rx/a.cpp", '#include "host/console/command_line.h"\n#include "host/rx/registry.h"\n', ""),
    ("tools/a.cpp", "#include <unistd.h>\n", "is for platform/ alone"),
    ("platform/files/a.cpp", "#include <sys/stat.h>\n", ""),
    ("platform/text/a.cpp", "const auto c = std::towupper(d);\n", ""),
    ("host/rx/a.cpp", "namespace host {\nstruct Same;\nnamespace {\nstruct Same {};\n}  // namespace\n}  // namespace host\n", ""),
    ("host/rx/a.cpp", "struct Same {};\n", ""),
]

# Which once tied the rooms of the host into a knot, put back into today's files.
KNOT = [
    ("host/bridge/values.h", "host/access/access_state.h"),
    ("host/calls/served_call.cpp", "host/documents/documents.h"),
    ("host/database/objects.cpp", "host/calls/served_call.h"),
    ("host/database/group_list.cpp", "host/calls/served_call.h"),
    ("host/rx/modules.cpp", "host/calls/served_call.h"),
    ("host/documents/documents.cpp", "host/access/access_state.h"),
]


class HouseTest(unittest.TestCase):
    def test_knot(self):
        top = house.HERE.parent.parent
        for name, target in KNOT:
            with self.subTest(name=name):
                self.assertTrue((top / target).exists())
                text = f'#include "{target}"\n' + (top / name).read_text()
                room, forbidden = (str(pathlib.PurePath(each).parent) for each in (name, target))
                problems = list(house.check_file(name, room, text, TABLE, collections.defaultdict(set)))
                self.assertEqual(problems, [f"{name}:1: {room} may not include {forbidden}"])

    def test_breaches(self):
        for name, text, said in BREACHES:
            with self.subTest(name=name, text=text), tempfile.TemporaryDirectory() as folder:
                for path, content in [
                    ("host/lisp/other.h", "namespace host {\nstruct Same {};\n}  // namespace host\n"),
                    (name, text),
                ]:
                    file = pathlib.Path(folder, path)
                    file.parent.mkdir(parents=True, exist_ok=True)
                    file.write_text(content)
                problems = list(house.check(pathlib.Path(folder), TABLE))
                if said:
                    self.assertEqual(len(problems), 1, problems)
                    self.assertIn(said, problems[0])
                else:
                    self.assertEqual(problems, [])


if __name__ == "__main__":
    unittest.main()
