"""Draws the rooms and their arrows (arrows.txt) as docs/arrows.svg.

Usage: draw.py FILE writes it, draw.py --check FILE ends with status 1 when the file shows another house.
Arrows that follow from others are left out, and those to brx and platform, on which all stand.
"""
import collections
import pathlib
import sys

import house

WIDTH, HEIGHT, GAP_X, GAP_Y, MARGIN = 104, 30, 16, 42, 20
HOUSES = ["host", "zarbo", "engine"]  # from left to right
COLOURS = {"host": "#eef3f8", "zarbo": "#eef6ee", "engine": "#fbf3e8"}


def reduced(table):
    """The arrows inside the houses that don't follow from others."""
    rooms = {room for room in table if house_of(room) in HOUSES}
    targets = {
        room: {
            to for to in rooms if to != room and house_of(to) == house_of(room)
            and any(to == each or to.startswith(each + "/") for each in table[room])
        }
        for room in rooms
    }

    def reach(room):
        return set().union(*({to} | reach(to) for to in targets[room]))

    return {
        room: {to for to in targets[room] if not any(to in reach(other) for other in targets[room] - {to})}
        for room in rooms
    }


def house_of(room):
    return room.split("/")[0]


def places(arrows):
    """Room: its left upper corner; each house: left edge and width; the number of rows; the right edge."""

    def depth(room):
        return 1 + max(map(depth, arrows[room]), default=-1)

    def middle(room):
        """Of what it stands on."""
        return sum(at[to][0] for to in arrows[room]) / max(1, len(arrows[room])), room

    rows = max(map(depth, arrows)) + 1
    at, spans, left = {}, {}, MARGIN
    for name in HOUSES:
        layers = collections.defaultdict(list)
        for room in sorted(arrows):
            if house_of(room) == name:
                layers[depth(room)].append(room)
        width = max(map(len, layers.values())) * (WIDTH + GAP_X) + GAP_X
        for level in sorted(layers):
            step = width / len(layers[level])
            for i, room in enumerate(sorted(layers[level], key=middle)):
                y = MARGIN + 30 + (rows - 1 - level) * (HEIGHT + GAP_Y)
                at[room] = (left + step * (i + 0.5) - WIDTH / 2, y)
        spans[name] = (left, width)
        left += width + GAP_X
    return at, spans, rows, left - GAP_X


def box(x, y, width, height, fill, text, weight="normal"):
    return (
        f'<rect x="{x:g}" y="{y:g}" width="{width:g}" height="{height:g}" rx="6" fill="{fill}" stroke="#8a97a6"/>\n'
        f'<text x="{x + width / 2:g}" y="{y + height / 2 + 4:g}" text-anchor="middle" font-weight="{weight}"'
        f' fill="#223">{text}</text>\n'
    )


def drawn(table):
    arrows = reduced(table)
    at, spans, rows, right = places(arrows)
    floor = MARGIN + 30 + rows * (HEIGHT + GAP_Y)
    width, height = right + MARGIN, floor + 2 * HEIGHT + 14 + MARGIN
    out = [
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width:g} {height:g}"'
        ' font-family="DejaVu Sans, sans-serif" font-size="12">\n'
        f'<rect width="{width:g}" height="{height:g}" fill="#fff"/>\n'
        '<defs><marker id="a" viewBox="0 0 8 8" refX="7" refY="4" markerWidth="6" markerHeight="6" orient="auto">'
        '<path d="M0 0 8 4 0 8z" fill="#445"/></marker></defs>\n'
    ]
    for name, (left, span) in spans.items():
        out.append(
            f'<rect x="{left:g}" y="{MARGIN}" width="{span:g}" height="{floor - MARGIN - 20:g}" rx="8"'
            f' fill="{COLOURS[name]}" stroke="#8a97a6"/>\n'
            f'<text x="{left + 10:g}" y="{MARGIN + 18}" font-weight="bold" fill="#334">{name}/</text>\n'
        )
    for room in sorted(arrows):
        for to in sorted(arrows[room]):
            x, y = at[room][0] + WIDTH / 2, at[room][1] + HEIGHT
            u, v = at[to][0] + WIDTH / 2, at[to][1]
            out.append(
                f'<path d="M{x:g} {y:g} C{x:g} {y + 26:g} {u:g} {v - 26:g} {u:g} {v:g}" stroke="#445" fill="none"'
                ' marker-end="url(#a)"/>\n'
            )
    for room in sorted(at):
        out.append(box(*at[room], WIDTH, HEIGHT, "#fff", room.partition("/")[2] or room))
    platform = " · ".join(sorted(room.split("/")[1] for room in table if room.startswith("platform/")))
    for row, names in enumerate([["interfaces", "solid"], ["brx", f"platform: {platform}"]]):
        left, y = MARGIN, floor + row * (HEIGHT + 14)
        for name, share in zip(names, (0.25, 0.75)):
            span = share * (right - MARGIN - GAP_X)
            out.append(box(left, y, span, HEIGHT, "#f2f0f6", name, "bold"))
            left += span + GAP_X
    return "".join(out) + "</svg>\n"


if __name__ == "__main__":
    file = pathlib.Path(sys.argv[-1])
    picture = drawn(house.arrows())
    if sys.argv[1] != "--check":
        file.write_text(picture)
    elif not file.exists() or file.read_text() != picture:
        sys.exit(f"{file}: shows another house than arrows.txt; draw it anew with\n  python3 {__file__} {file}")
