"""handed_on.py HOST SUPPORT-FOLDER… --modules DIR [--step READER]: what other programs see of solids.

Draws the example, writes it in every format, and reads the files independently: STEP with a modeller, IFC and glTF with
their own readers, DXF with ezdxf, STL and the triangles of glTF here. Elements and volumes must be those that the host
tells. Readers that aren't there are skipped.
"""
import argparse
import json
import os
import struct
import subprocess
import sys
import tempfile

here = os.path.dirname(os.path.abspath(__file__))
failures = []


BLOCKS = '''(progn (setvar "CMDECHO" 0)
  (setq set (ssadd) e (entnext) n 0)
  (while (and e (< n 3)) (if (host-solid e) (setq set (ssadd e set) n (1+ n))) (setq e (entnext e)))
  (command "_.COPY" set "" "0,0" "0,5000" "")
  (setq set (ssadd) e (entlast) n 0)
  (setq all nil e (entnext)) (while e (setq all (cons e all) e (entnext e)))
  (foreach e (list (car all) (cadr all) (caddr all)) (ssadd e set))
  (command "_.-BLOCK" "Parts" "0,5000" set "")
  (entmake '((0 . "INSERT") (2 . "Parts") (10 0.0 9000.0 50.0) (41 . -1.5) (42 . 2.0) (43 . 0.5) (50 . 0.7)))
  (entmake '((0 . "BLOCK") (2 . "Row") (70 . 0) (10 0.0 0.0 0.0)))
  (entmake '((0 . "INSERT") (2 . "Parts") (10 0.0 0.0 0.0) (50 . 0.3) (70 . 2) (71 . 2) (44 . 3000.0) (45 . 2000.0)))
  (entmake '((0 . "ENDBLK")))
  (entmake '((0 . "INSERT") (2 . "Row") (10 0.0 -9000.0 0.0) (41 . 0.5) (42 . 0.5) (43 . 0.5)))
  (princ))'''

# Handle path, bodies and volume of each solid that model space shows.
TOLD = '''(progn
  (defun group (code data otherwise) (cond ((cdr (assoc code data))) (otherwise)))
  (defun tell (e path scale / s data size column)
    (setq data (entget e) path (strcat path (cdr (assoc 5 data))))
    (if (setq s (host-solid e))
      (princ (strcat "\\n" path " " (itoa (cdr (assoc "bodies" s))) " " (rtos (* scale (cdr (assoc "volume" s))) 2 12))))
    (if (= (cdr (assoc 0 data)) "INSERT")
      (progn
        (setq size (abs (* scale (group 41 data 1.0) (group 42 data 1.0) (group 43 data 1.0)))
              column (* (group 70 data 1) (group 71 data 1)) n 0)
        (if (= column 1)
          (inside (cdr (assoc 2 data)) (strcat path "/") size)
          (while (< n column) (setq n (1+ n)) (inside (cdr (assoc 2 data)) (strcat path ":" (itoa n) "/") size))))))
  (defun inside (block path scale / e)
    (setq e (cdr (assoc -2 (tblsearch "BLOCK" block))))
    (while e (tell e path scale) (setq e (entnext e))))
  (setq e (entnext))
  (while e (tell e "" 1.0) (setq e (entnext e)))
  (princ))'''


def check(what, found, wanted, relative=0.0):
    good = abs(found - wanted) <= relative * abs(wanted) if relative else found == wanted
    print(f"{'ok  ' if good else 'BAD '} {what}: {found} (wanted {wanted})")
    if not good:
        failures.append(what)


def run(*command):
    done = subprocess.run(command, capture_output=True, text=True, timeout=240)
    if done.returncode:
        sys.exit(f"{command[0]} {command[1:3]}: exit status {done.returncode}: {done.stderr}")
    return done.stdout


def volume_of(triangles):
    """Of a closed surface, and whether each directed edge has its opposite."""
    six, edges = 0.0, {}
    origin = triangles[0][0]
    for corners in triangles:
        a, b, c = ([p[i] - origin[i] for i in range(3)] for p in corners)
        six += (a[0] * (b[1] * c[2] - b[2] * c[1]) - a[1] * (b[0] * c[2] - b[2] * c[0])
                + a[2] * (b[0] * c[1] - b[1] * c[0]))
        for i in range(3):
            edge = (corners[i], corners[(i + 1) % 3])
            edges[edge] = edges.get(edge, 0) + 1
    closed = all(edges.get((q, p), 0) == n for (p, q), n in edges.items())
    return six / 6, closed


def read_stl(path):
    data = open(path, "rb").read()
    count = struct.unpack_from("<I", data, 80)[0]
    check("STL length", len(data), 84 + 50 * count)
    return [tuple(struct.unpack_from("<3f", data, 84 + 50 * i + 12 + 12 * k) for k in range(3)) for i in range(count)]


def read_glb(path):
    data = open(path, "rb").read()
    magic, version, length = struct.unpack_from("<4sII", data)
    check("glTF head", (magic, version, length), (b"glTF", 2, len(data)))
    size = struct.unpack_from("<I", data, 12)[0]
    scene = json.loads(data[20:20 + size])
    binary = data[20 + size + 8:]
    meshes = []
    for node in scene["nodes"]:
        accessor = scene["accessors"][scene["meshes"][node["mesh"]]["primitives"][0]["attributes"]["POSITION"]]
        view = scene["bufferViews"][accessor["bufferView"]]
        numbers = struct.unpack_from(f"<{accessor['count'] * 3}f", binary, view["byteOffset"])
        points = [tuple(numbers[i:i + 3]) for i in range(0, len(numbers), 3)]
        meshes.append((node["extras"]["handle"], [tuple(points[i:i + 3]) for i in range(0, len(points), 3)]))
    return meshes


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("host")
    parser.add_argument("support", nargs="+")
    parser.add_argument("--modules", default="")
    parser.add_argument("--step", default="")
    options = parser.parse_args()
    work = tempfile.mkdtemp()
    host = [options.host, "--settings", work + "/settings"]
    for each in options.support:
        host += ["--support", each]
    drawing = work + "/ducts.dwg"
    run(*host, options.support[0] + "/duct_solids.lsp", "--output", drawing)
    # A part of it stands in a block as well, which two references show: one turned, enlarged and mirrored, one a grid
    # inside of another block.
    run(*host, "--drawing", drawing, "--eval", BLOCKS, "--output", drawing)
    told_lines = [line.split() for line in run(*host, "--drawing", drawing, "--eval", TOLD).splitlines()]
    volumes = {line[0]: float(line[2]) for line in told_lines if len(line) == 3}
    bodies = sum(int(line[1]) for line in told_lines if len(line) == 3)
    total, metres = sum(volumes.values()), 0.0254 ** 3
    print(len(volumes), "elements,", bodies, "bodies, volume", total)
    check("enough to look at", len(volumes) > 20, True)
    check("in blocks", sum("/" in handle for handle in volumes), 3 * (1 + 4))
    for ending in ("ifc", "step", "stl", "glb"):
        run(*host, "--drawing", drawing, "--output", f"{work}/ducts.{ending}")
    run(*host, "--drawing", drawing, "--output", work + "/ducts.dxf", "--meshes")

    check("STL volume", volume_of(read_stl(work + "/ducts.stl"))[0], total, 1e-5)
    meshes = read_glb(work + "/ducts.glb")
    check("glTF elements", sorted(handle for handle, _ in meshes), sorted(volumes))
    for handle, triangles in meshes:
        found, closed = volume_of(triangles)
        if not closed or abs(found - volumes[handle] * metres) > 1e-4 * volumes[handle] * metres:
            check(f"glTF {handle} closed", closed, True)
            check(f"glTF {handle}", found, volumes[handle] * metres, 1e-4)
    if options.step:
        solids = [line.split() for line in run(options.step, work + "/ducts.step").splitlines() if line.startswith(("valid", "invalid"))]
        check("STEP solids", len(solids), bodies)
        check("STEP solids that are valid", sum(word == "valid" for word, _ in solids), bodies)
        check("STEP volume", sum(float(v) for _, v in solids), total * 25.4 ** 3, 1e-9)
    if os.path.isdir(options.modules + "/web-ifc"):
        lines = [line.split() for line in run("node", here + "/check_ifc.js", options.modules, work + "/ducts.ifc").splitlines()]
        elements = {line[0]: (line[1], float(line[2])) for line in lines if len(line) == 3}
        check("IFC elements", sorted(elements), sorted(volumes))
        check("IFC volume", sum(volume for _, volume in elements.values()), total * metres, 1e-5)
        kinds = {kind for kind, _ in elements.values()}
        check("IFC classes", sorted(kinds), ["IfcDiscreteAccessory", "IfcDuctFitting", "IfcDuctSegment"])
    if os.path.isdir(options.modules + "/gltf-validator"):
        check("glTF validator", run("node", here + "/check_gltf.js", options.modules, work + "/ducts.glb"), "")
    try:
        import ezdxf
    except ImportError:
        ezdxf = None
    if ezdxf:
        document = ezdxf.readfile(work + "/ducts.dxf")
        check("DXF faults", len(document.audit().errors), 0)
        found = document.modelspace().query("MESH")
        direct = [line for line in told_lines if len(line) == 3 and "/" not in line[0]]
        check("DXF meshes", len(found), sum(int(line[1]) for line in direct))
        total_found = 0.0
        for mesh in found:
            points = [tuple(p) for p in mesh.vertices]
            triangles = [(points[f[0]], points[f[i]], points[f[i + 1]]) for f in mesh.faces for i in range(1, len(f) - 1)]
            total_found += volume_of(triangles)[0]
        check("DXF volume", total_found, sum(float(line[2]) for line in direct), 1e-9)
    sys.exit(1 if failures else 0)


main()
