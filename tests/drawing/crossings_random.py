"""Checks the crossings of duct paths against points computed with 60 decimal digits.

crossings_random.py ZARBO-HOST COUNT: random, tangent and nearly tangent pairs of paths, near the origin and
far from it, go through the LISP functions. Every crossing that is certain must be reported once, in stage
order, and every report must be a crossing that is at least possible within the host's tolerance.
"""
import math
import os
import random
import subprocess
import sys
import tempfile
from decimal import Decimal as D, getcontext

getcontext().prec = 60
RIGHT_ANGLE = 1.570796325
TURN = 2 * math.pi


def polar(point, angle, distance):
    return (point[0] + distance * math.cos(angle), point[1] + distance * math.sin(angle))


def angle_of(start, end):
    found = math.atan2(end[1] - start[1], end[0] - start[0])
    return found + TURN if found < 0 else found


class Segment:
    def __init__(self, start, end):
        self.start, self.end = start, end
        self.length = math.dist(start, end)

    def distance(self, point):
        return math.dist(self.start, point)

    def margin(self, point):
        """How far inside the piece the point lies along it; negative outside."""
        if self.length == 0:
            return -math.dist(self.start, point)
        along = ((point[0] - self.start[0]) * (self.end[0] - self.start[0]) +
                 (point[1] - self.start[1]) * (self.end[1] - self.start[1])) / self.length
        return min(along, self.length - along)


class Arc:
    def __init__(self, centre, radius, start, end):
        self.centre, self.radius, self.start = centre, radius, start
        self.sweep = (end - start) % TURN or TURN

    def point(self, angle):
        return polar(self.centre, angle, self.radius)

    def offset(self, point):
        found = (angle_of(self.centre, point) - self.start) % TURN
        return found - TURN if found - self.sweep > TURN - found else found

    def distance(self, point):
        return self.offset(point) * self.radius

    def margin(self, point):
        return min(self.offset(point), self.sweep - self.offset(point)) * self.radius


class Path:
    """An arc with its leads, as the module builds it of its five numbers."""

    def __init__(self, start, tangent, direction, radius, sweep, extension):
        self.values = (start, tangent, direction, radius, sweep)
        self.direction, self.length = direction, radius * sweep
        centre = polar(start, tangent + RIGHT_ANGLE * direction, radius)
        angle = angle_of(centre, start)
        self.arc = Arc(centre, radius, *((angle, angle + sweep) if direction == 1 else (angle - sweep, angle)))
        self.pieces = [self.arc]
        if extension:
            end = self.arc.point(self.arc.start + self.arc.sweep)
            out = self.arc.start + self.arc.sweep + math.pi / 2
            self.pieces = [Segment(start, polar(start, tangent, -extension)), self.arc,
                           Segment(end, polar(end, out, extension))]

    def reported(self, piece, distance):
        right = self.direction == -1
        if piece is self.arc:
            return self.length - distance if right else distance
        if piece is self.pieces[0]:
            return self.length + distance if right else -distance
        return -distance if right else self.length + distance

    def text(self):
        (x, y), tangent, direction, radius, sweep = self.values
        return f"'({x!r} {y!r} 0.0) {tangent!r} {direction} {radius!r} {sweep!r}"


def decimals(point):
    return D(point[0]), D(point[1])


def lines_cross(a, b):
    (ax, ay), (bx, by) = decimals(a.start), decimals(b.start)
    ux, uy = (q - p for p, q in zip(decimals(a.start), decimals(a.end)))
    vx, vy = (q - p for p, q in zip(decimals(b.start), decimals(b.end)))
    cross = ux * vy - uy * vx
    size = D(a.length) * D(b.length)
    if size == 0 or abs(cross) <= size * D("1e-9"):
        return [], size != 0 and cross != 0  # parallel: the host's tolerance decides
    s = ((bx - ax) * vy - (by - ay) * vx) / cross
    return [(float(ax + ux * s), float(ay + uy * s))], False


def circle_points(centre, along, foot, radius, gap, doubt):
    """Points at both sides of the foot; `gap` is how far from tangent the pair is, negative when apart."""
    if gap < -doubt:
        return []
    half = (radius * radius - foot * foot).copy_abs().sqrt() if radius > abs(foot) else D(0)
    (cx, cy), (ux, uy) = centre, along
    return [(float(cx + ux * foot - uy * half * side), float(cy + uy * foot + ux * half * side)) for side in (1, -1)]


def line_arc(line, arc):
    (ax, ay), (cx, cy), radius = decimals(line.start), decimals(arc.centre), D(arc.radius)
    ux, uy = (q - p for p, q in zip(decimals(line.start), decimals(line.end)))
    length = (ux * ux + uy * uy).sqrt()
    if length == 0:
        return [], False
    ux, uy = ux / length, uy / length
    along = (cx - ax) * ux + (cy - ay) * uy
    off = (cy - ay) * ux - (cx - ax) * uy
    gap, doubt = radius - abs(off), limit(radius, cx, cy)
    # From the centre, the foot lies across the line at the distance `off`.
    return circle_points((cx, cy), (uy, -ux), off, radius, gap, doubt), abs(gap) < doubt


def arcs_cross(a, b):
    (ax, ay), (bx, by), r, q = decimals(a.centre), decimals(b.centre), D(a.radius), D(b.radius)
    dx, dy = bx - ax, by - ay
    d = (dx * dx + dy * dy).sqrt()
    if d < D("1e-7"):
        return [], d != 0
    gap, doubt = min(r + q - d, d - abs(r - q)), limit(r + q, ax, ay)
    foot = (d * d + r * r - q * q) / (2 * d)
    return circle_points((ax, ay), (dx / d, dy / d), foot, r, gap, doubt), abs(gap) < doubt


def limit(*sizes):
    """Within it of a tangent, the number of crossings is the host's to say."""
    return D("1e-9") + D("1e-14") * max(abs(size) for size in sizes)


def crossings(a, b):
    """Points, and whether the pair is so near to tangent or parallel that none of them is certain."""
    if isinstance(a, Segment):
        return lines_cross(a, b) if isinstance(b, Segment) else line_arc(a, b)
    return line_arc(b, a) if isinstance(b, Segment) else arcs_cross(a, b)


class Case:
    def __init__(self, call, stages):
        self.call = call
        self.stages = stages  # of (piece, others, distance function)

    def fault(self, reports):
        scale = max([1.0] + [abs(x) for piece, others, _ in self.stages for each in [piece, *others]
                             for x in (each.centre if isinstance(each, Arc) else each.start)])
        near = 1e-7 * max(1.0, scale * 1e-3)
        left = list(reports)
        for piece, others, distance in self.stages:
            for other in others:
                points, doubtful = crossings(piece, other)
                sizes = [each.radius for each in (piece, other) if isinstance(each, Arc)]
                # Two that are nearly one may be told as the one between them.
                reach = near + (math.sqrt(1e-8 * max(sizes)) if doubtful and sizes else 0)
                reach += math.dist(*points) if doubtful and len(points) == 2 else 0
                for point in points:
                    margin = min(piece.margin(point), other.margin(point))
                    expected = distance(piece.distance(point))
                    found = [each for each in left if abs(each - expected) <= reach]
                    if found and margin > -reach:
                        left.remove(min(found, key=lambda each: abs(each - expected)))
                    elif margin > reach and not doubtful:
                        return f"missing {expected!r}"
        return f"not a crossing: {left}" if left else None


def random_path(rng, centre, extension):
    start = polar(centre, rng.uniform(0, TURN), rng.uniform(0, 30))
    return Path(start, rng.uniform(-TURN, TURN), rng.choice([1, -1]), rng.uniform(0.5, 25),
                rng.uniform(0.05, 6.2), extension)


def touching_path(rng, other, extension):
    """A path whose circle touches the other's from outside or inside, exactly or nearly."""
    miss = rng.choice([0.0, 1e-12, -1e-12, 1e-8, -1e-8, 1e-5, -1e-5])
    radius, angle = rng.uniform(0.5, 25), rng.uniform(0, TURN)
    gap = other.arc.radius + rng.choice([1, -1]) * radius + miss
    centre = polar(other.arc.centre, angle, gap)
    start_angle = rng.uniform(0, TURN)
    start = polar(centre, start_angle, radius)
    return Path(start, start_angle + RIGHT_ANGLE, 1, radius, rng.uniform(3, 6.2), extension)


def random_case(rng):
    centre = rng.choice([(0.0, 0.0), (0.0, 0.0), (4.5e5, -1.2e5), (3.2e6, 5.8e6)])
    extension = rng.choice([0.0, rng.uniform(0.1, 40)])
    a = random_path(rng, centre, extension)
    lisp = f"{extension!r} "
    if rng.random() < 0.5:
        b = touching_path(rng, a, extension) if rng.random() < 0.4 else random_path(rng, centre, extension)
        stages = [(each, b.pieces, lambda d, each=each: a.reported(each, d)) for each in a.pieces]
        return Case(f"(kv_kv-intersectArcArc {lisp}{a.text()} {b.text()})", stages)
    start, end = polar(centre, rng.uniform(0, TURN), rng.uniform(0, 40)), polar(centre, rng.uniform(0, TURN), 35)
    if rng.random() < 0.3:
        angle = rng.uniform(0, TURN)
        touch = polar(a.arc.centre, angle, a.arc.radius + rng.choice([0.0, 1e-12, 1e-8, -1e-8, 1e-5, -1e-5]))
        start, end = polar(touch, angle + math.pi / 2, 20), polar(touch, angle - math.pi / 2, 20)
    line = Segment(polar(start, angle_of(end, start), extension), polar(end, angle_of(start, end), extension))
    ends = f"'({start[0]!r} {start[1]!r} 0.0) '({end[0]!r} {end[1]!r} 0.0)"
    if rng.random() < 0.5:
        stages = [(each, [line], lambda d, each=each: a.reported(each, d)) for each in a.pieces]
        return Case(f"(kv_kv-intersectArcLine {lisp}{a.text()} {ends})", stages)
    return Case(f"(kv_kv-intersectLineArc {lisp}{ends} {a.text()})",
                [(line, a.pieces, lambda d: d - extension)])


PRELUDE = """(defun show (hits) (foreach hit hits (princ (rtos (cdr hit) 2 14) out) (princ " " out)) (princ "\\n" out))
(setq out (open "{file}" "w"))
"""


def main():
    host, count = sys.argv[1], int(sys.argv[2])
    rng = random.Random(20)
    cases = [random_case(rng) for _ in range(count)]
    with tempfile.TemporaryDirectory() as folder:
        script, answers = os.path.join(folder, "cases.lsp"), os.path.join(folder, "answers.txt")
        with open(script, "w") as text:
            text.write(PRELUDE.format(file=answers))
            text.writelines(f"(show {each.call})\n" for each in cases)
            text.write("(close out)\n")
        subprocess.run([host, "--settings", folder, script], check=True, stdout=subprocess.DEVNULL)
        with open(answers) as lines:
            reports = [[float(each) for each in line.split()] for line in lines]
    if len(reports) != count:
        sys.exit(f"{len(reports)} answers to {count} calls")
    faults = [(each, got, fault) for each, got in zip(cases, reports) if (fault := each.fault(got))]
    for each, got, fault in faults[:10]:
        print(f"{each.call}\n  gave {got}: {fault}")
    print(f"{count} pairs of paths, {sum(map(len, reports))} crossings, {len(faults)} faults")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
