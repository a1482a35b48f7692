#!/usr/bin/env python3
"""The window under the hand: processor time of a frame while panning and zooming a plan of many entities, and beside
LibreCAD, under the same display server, opening the same file and panning it.

    bench/window/frames.py build/release/bin/zarbo-host [entities]

Times are user time of the process, so that a shared machine tells nearly the same as an idle one. LibreCAD's part
needs xvfb, xdotool and librecad, and is left out without them."""
import math
import os
import resource
import shutil
import subprocess
import sys
import tempfile
import time

FRAMES = 200
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


def scripted(host, plan, deeds, folder):
    """Milliseconds of user time for a frame: the same run with and without the deeds."""
    times = []
    for part in ([], deeds):
        script = os.path.join(folder, "deeds.lsp")
        with open(script, "w") as out:
            out.write(f'(host-window "size" {WIDTH} {HEIGHT})(host-window "menu" "Extents")(host-window)\n')
            out.write("\n".join(part) + "\n(host-window)\n")
        environment = dict(os.environ, QT_QPA_PLATFORM="offscreen")
        times.append(min(user_time([host, "--window", "--no-module", "--settings", folder, "--batch", script, plan],
                                   env=environment) for _ in range(3)))
    return (times[1] - times[0]) * 1000 / FRAMES


def pan_deeds(zoom):
    deeds = [f'(host-window "wheel" {zoom} 600 400)', '(host-window "press" 600 400 "middle")']
    deeds += [f'(host-window "move" {600 + 150 * math.sin(i / 9):.0f} {400 + 100 * math.cos(i / 7):.0f})' for i in range(FRAMES)]
    return deeds + ['(host-window "release" 600 400)']


def zoom_deeds():
    return [f'(host-window "wheel" {1 if i // 10 % 2 == 0 else -1} 600 400)' for i in range(FRAMES)]


def ticks(pid):
    with open(f"/proc/{pid}/stat") as stat:
        return int(stat.read().rsplit(")", 1)[1].split()[11])


def until_rest(pid, rest=2.0, most=300):
    """Seconds of user time when the process has been at rest for a while."""
    last, since, end = ticks(pid), time.time(), time.time() + most
    while time.time() - since < rest and time.time() < end:
        time.sleep(0.1)
        now = ticks(pid)
        if now - last > 1:
            last, since = now, time.time()
    return last / os.sysconf("SC_CLK_TCK")


def on_display(command, environment):
    """User time for opening, and for a pan of so many steps, in seconds."""
    program = subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                               stdin=subprocess.DEVNULL)
    try:
        opened = until_rest(program.pid, 4.0)

        def hand(*words):
            subprocess.run(["xdotool", *map(str, words)], check=True, env=environment)

        hand("mousemove", 600, 450)
        hand("mousedown", 2)
        for step in range(FRAMES):
            hand("mousemove", 600 + round(150 * math.sin(step / 9)), 450 + round(100 * math.cos(step / 7)))
        hand("mouseup", 2)
        return opened, until_rest(program.pid) - opened
    finally:
        program.kill()
        program.wait()


def beside_librecad(host, plan, folder):
    missing = [each for each in ("Xvfb", "xdotool", "librecad") if not shutil.which(each)]
    if missing:
        return print("LibreCAD beside it: left out without " + ", ".join(missing))
    reading, writing = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", f"{WIDTH}x{HEIGHT}x24"],
                              pass_fds=[writing], stderr=subprocess.DEVNULL)
    try:
        display = ":" + os.read(reading, 10).decode().strip()
        environment = dict(os.environ, DISPLAY=display, HOME=folder, XDG_RUNTIME_DIR=folder)
        environment.pop("QT_QPA_PLATFORM", None)
        config = os.path.join(folder, ".config", "LibreCAD")
        os.makedirs(config)
        with open(os.path.join(config, "LibreCAD.conf"), "w") as out:
            out.write("[Startup]\nFirstLoad=false\n[Defaults]\nUnit=Millimeter\n[Appearance]\nLanguage=en\nLanguageCmd=en\n")
        own = on_display([host, "--window", "--no-module", "--settings", folder, plan], environment)
        other = on_display(["librecad", plan], environment)
    finally:
        server.kill()
        server.wait()
    for what, ours, theirs in (("opening", own[0], other[0]), (f"panning by {FRAMES} steps", own[1], other[1])):
        print(f"{what}: {ours:.2f} s, LibreCAD {theirs:.2f} s, ratio {ours / max(theirs, 0.01):.2f}")


def main():
    host = sys.argv[1]
    count = int(sys.argv[2]) if len(sys.argv) > 2 else 100000
    with tempfile.TemporaryDirectory() as folder:
        plan = os.path.join(folder, "plan.dxf")
        write_plan(plan, count)
        print(f"{count} entities, {WIDTH} x {HEIGHT} pixels, user time of a frame:")
        print(f"  panning at full view    {scripted(host, plan, pan_deeds(0), folder):.1f} ms")
        print(f"  panning at 1/25         {scripted(host, plan, pan_deeds(14.4), folder):.1f} ms")
        print(f"  zooming                 {scripted(host, plan, zoom_deeds(), folder):.1f} ms")
        beside_librecad(host, plan, folder)


main()
