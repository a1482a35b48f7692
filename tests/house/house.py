"""Holds the rooms of the house to the table of arrows (arrows.txt), and a few rules that no compiler knows.

Usage: house.py [ROOT]. Prints what breaks a rule, by file and line, and then ends with status 1.
"""
import collections
import pathlib
import re
import sys

HERE = pathlib.Path(__file__).resolve().parent

INCLUDE = re.compile(r'\s*#\s*include\s*(?:"([^"]+)"|<([^>]+)>)')
SYSTEM = re.compile(r"(unistd|fcntl|dlfcn|windows|poll|pwd|spawn|signal|termios)\.h|(sys|arpa|netinet)/")
WIDE_LETTERS = re.compile(r"\b(tow(upper|lower|ctrans)|isw[a-z]+)\s*\(")
# A type at the left margin; those of anonymous namespaces and of other types are nobody else's.
TYPE = re.compile(r"(?:struct|class|union|enum(?: class)?) (?:BRX_API )?([\w:]+(?:<[^{]*>)?)(?! *;)(?=$|[ :{])")
NAMESPACE = re.compile(r"(?:inline )?namespace ?([\w:]*) ?\{")


def arrows():
    """Room: rooms that it may include, from the table, in which arrows point upwards only."""
    table = {}
    for line in (HERE / "arrows.txt").read_text().splitlines():
        if not line or line.startswith("#"):
            continue
        room, _, targets = line.partition(":")
        for target in targets.split():
            if not any(each == target or each.startswith(target + "/") for each in table):
                sys.exit(f"arrows.txt: {room}: no room {target} stands above it")
        table[room] = set(targets.split())
    return table


def room_of(path, table):
    """The room with the longest name in which the file lies; None outside of all."""
    return next((p.as_posix() for p in pathlib.PurePath(path).parents if p.as_posix() in table), None)


def check(root, table):
    """What breaks a rule, one line each."""
    defined = collections.defaultdict(set)
    for top in sorted({room.split("/")[0] for room in table}):
        for path in sorted((root / top).rglob("*")):
            if path.suffix not in (".h", ".cpp", ".c"):
                continue
            name = path.relative_to(root).as_posix()
            room = room_of(name, table)
            if not room:
                yield f"{name}: lies in no room of arrows.txt"
                continue
            yield from check_file(name, room, path.read_text(), table, defined)
    for name, files in sorted(defined.items()):
        if len(files) > 1:
            yield f"{name} is defined in {' and '.join(sorted(files))}"


def check_file(name, room, text, table, defined):
    allowed = table[room]
    may_call_system = room.split("/")[0] in ("platform", "tests", "bench", "fuzz")
    namespaces = []
    for number, line in enumerate(text.splitlines(), 1):
        place = f"{name}:{number}"
        if found := INCLUDE.match(line):
            target = found[1] and room_of(found[1], table)
            if found[1] and not target:
                yield f"{place}: {found[1]} is no path from the top to a file in a room"
            elif target and target != room and not any(target == each or target.startswith(each + "/") for each in allowed):
                yield f"{place}: {room} may not include {target}"
            if found[2] and SYSTEM.match(found[2]) and not may_call_system:
                yield f"{place}: <{found[2]}> is for platform/ alone"
        elif room != "platform/text" and WIDE_LETTERS.search(line.split("//")[0]):
            yield f"{place}: letters are folded and judged by platform/text alone"
        elif found := NAMESPACE.match(line):
            namespaces.append(found[1])
        elif line.startswith("}") and namespaces and "namespace" in line:
            namespaces.pop()
        elif (found := TYPE.match(line)) and "" not in namespaces:
            defined["::".join(namespaces + [found[1]])].add(name)


if __name__ == "__main__":
    root = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else HERE.parent.parent
    problems = list(check(root, arrows()))
    print("\n".join(problems))
    sys.exit(bool(problems))
