#!/usr/bin/env python3
"""The window under the hand: processor time of a frame while panning and zooming a plan of many entities, as rows for
bench/all.

    bench/window/frames.py build/release/bin/zarbo-host [entities]

Times are user time of the process, so that a shared machine tells nearly the same as an idle one."""
import math
import os
import resource
import subprocess
import sys
import tempfile

FRAMES = 200
ROUNDS = 3
WIDTH, HEIGHT = 1600, 1000


def write_plan(path, count):
    """Short walls in rows, a circle for each tenth, as DXF of the oldest kind, which all read."""
    side = int(math.sqrt(count))
    with open(path, "w") as out:
        out.write("0\nSECTION\n2\nENTITIES\n")
        for number in range(count):
            x, y = (number % side) * 10.0, (number // side) * 10.0
            if number % 10 == 0:
                out.write(f"0\nCIRCLE\n8\n0\n10\n{x}\n20\n{y}\n40\n3.0\n")
            else:
                turn = number % 7 * 0.9
                out.write(f"0\nLINE\n8\n0\n10\n{x}\n20\n{y}\n11\n{x + 8 * math.cos(turn):.4f}\n21\n{y + 8 * math.sin(turn):.4f}\n")
        out.write("0\nENDSEC\n0\nEOF\n")


def user_time(command, **options):
    before = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **options)
    return resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime - before


def run_time(host, plan, deeds, folder):
    """Seconds of user time of a run that opens the plan, shows all of it and does the deeds."""
    script = os.path.join(folder, "deeds.lsp")
    with open(script, "w") as out:
        out.write(f'(host-window "size" {WIDTH} {HEIGHT})(host-window "menu" "Extents")(host-window)\n')
        out.write("\n".join(deeds) + "\n(host-window)\n")
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen")
    return user_time([host, "--window", "--no-module", "--settings", folder, "--batch", script, plan], env=environment)


def pan_deeds(zoom):
    deeds = [f'(host-window "wheel" {zoom} 600 400)', '(host-window "press" 600 400 "middle")']
    deeds += [f'(host-window "move" {600 + 150 * math.sin(i / 9):.0f} {400 + 100 * math.cos(i / 7):.0f})' for i in range(FRAMES)]
    return deeds + ['(host-window "release" 600 400)']


def zoom_deeds():
    return [f'(host-window "wheel" {1 if i // 10 % 2 == 0 else -1} 600 400)' for i in range(FRAMES)]


def row(what, aim, times):
    print(f"row: {what} | ms | - | - | {' '.join(f'{time:.4g}' for time in times)} | {aim}", flush=True)


def main():
    host = sys.argv[1]
    count = int(sys.argv[2]) if len(sys.argv) > 2 else 100000
    motions = [("pan a frame, full view", f"{1000 / 60:.1f}", pan_deeds(0)),
               ("pan a frame, 1/25 of the height", f"{1000 / 60:.1f}", pan_deeds(14.4)),
               ("zoom a frame", "20", zoom_deeds())]
    with tempfile.TemporaryDirectory() as folder:
        plan = os.path.join(folder, "plan.dxf")
        write_plan(plan, count)
        # The same run without the deeds is what opening and ending take; by turns, so that a busy machine slows all.
        opening, moving = [], [[] for _ in motions]
        for _ in range(ROUNDS):
            opening.append(run_time(host, plan, [], folder))
            for times, (_, _, deeds) in zip(moving, motions):
                times.append(run_time(host, plan, deeds, folder))
        row(f"open and show {count:,} entities", "-", [1000 * each for each in opening])
        for times, (what, aim, _) in zip(moving, motions):
            row(f"{what} of {count:,}", aim, [max(1000 * (each - min(opening)) / FRAMES, 0.001) for each in times])


if __name__ == "__main__":
    main()
