#!/usr/bin/env python3
"""Drawings go through the host and are looked at by other programs: exchange.py HOST MAKER FUZZ DATA

HOST is zarbo-host, MAKER make-mixed-drawing, FUZZ the folder of the fuzzers with their seeds, DATA a
folder with drawings of other programs. Exit status 77 means that what the test needs isn't here.
"""
import glob
import math
import os
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
import zlib

try:
    import ezdxf
    from ezdxf import recover
    from ezdxf.math import Matrix44, Vec2, Vec3
    from ezdxf.render import forms, mleader
except ImportError:
    sys.exit(77)

host, maker, fuzz, data = sys.argv[1:5]


def converted(source, target):
    """Reads `source` and writes it as `target`; answers what the host said."""
    done = subprocess.run([host, '--no-module', '--drawing', source, '--output', target, '--eval', '(princ)'],
                          capture_output=True, text=True, timeout=120)
    if done.returncode != 0:
        raise AssertionError(f'{source}: {done.stderr}')
    return done.stderr


def run_lisp(source, target, forms):
    """Opens `source`, evaluates the forms and writes `target`; answers what was printed."""
    words = [word for form in forms for word in ('--eval', form)]
    done = subprocess.run([host, '--no-module', '--drawing', source, '--output', target, *words],
                          capture_output=True, text=True, timeout=120)
    if done.returncode != 0:
        raise AssertionError(f'{source}: {done.stderr}')
    return done.stdout + done.stderr


def load(path):
    """The drawing, by the strict reader where it can."""
    try:
        return ezdxf.readfile(path)
    except ezdxf.DXFError:
        return recover.readfile(path)[0]


def value(entity, name):
    found = entity.dxf.get_default(name)
    if isinstance(found, (ezdxf.math.Vec3, tuple, list)):
        return tuple(round(float(x), 9) for x in found)
    if isinstance(found, float):
        return round(found % 360 if name.endswith('angle') or name == 'rotation' else found, 9)
    return found


# Handles and owners of an upgraded file are new; the rest of these are the writing program's business.
PASSED_OVER = {'handle', 'owner', 'layout', 'paperspace', 'plotstyle_handle', 'material_handle', 'unknown1',
               'n_seqend', 'attribs_follow', 'render_mode'}


def described(entity):
    names = set(entity.dxfattribs()) - PASSED_OVER
    text = entity.text if entity.dxftype() == 'MTEXT' else None
    parts = []
    if entity.dxftype() == 'LWPOLYLINE':
        parts = [tuple(round(x, 9) for x in point) for point in with_widths(entity)]
        names.discard('count')
    return names, text, parts


def with_widths(polyline):
    """Vertices that have no width of their own have the one of the whole."""
    whole = polyline.dxf.get('const_width', 0)
    return [(x, y, start or whole, end or whole, bulge) for x, y, start, end, bulge in polyline.get_points()]


def subentities(entity):
    return {'POLYLINE': lambda: entity.vertices, 'INSERT': lambda: entity.attribs}.get(entity.dxftype(), list)()


def differences(first, second):
    """What of `first` isn't in `second` as it was."""
    names, *rest = described(first)
    found = [(name, value(first, name), value(second, name)) for name in names
             if value(first, name) != value(second, name)]
    found += [(mine, theirs) for mine, theirs in zip(rest, described(second)[1:]) if mine != theirs]
    if len(subentities(first)) != len(subentities(second)):
        found.append((subentities(first), subentities(second)))
    for mine, theirs in zip(subentities(first), subentities(second)):
        found += differences(mine, theirs)
    return found


def around(place, matrix):
    x, y = place
    return Matrix44.translate(-x, -y, 0) @ matrix @ Matrix44.translate(x, y, 0)


def mirror(angle):
    return Matrix44.z_rotate(-angle) @ Matrix44.scale(1, -1, 1) @ Matrix44.z_rotate(angle)


def carried_entities():
    """A drawing of what the host has no classes for."""
    drawing = ezdxf.new('R2010', setup=True)
    space = drawing.modelspace()
    space.add_linear_dim(base=(3, 2), p1=(0, 0), p2=(3, 0), angle=30).render()
    space.add_radius_dim(center=(5, 5), radius=2, angle=45).render()
    hatch = space.add_hatch(color=2)
    hatch.set_pattern_fill('ANSI31', scale=0.5)
    hatch.paths.add_polyline_path([(0, 0, 0.5), (4, 0, 0), (4, 3, -0.25), (0, 3, 0)], is_closed=True)
    edges = hatch.paths.add_edge_path()
    edges.add_line((10, 0), (14, 0))
    edges.add_arc((14, 2), 2, -90, 90, ccw=True)
    edges.add_arc((12, 4), 2, 0, 180, ccw=False)
    edges.add_ellipse((10, 2), (0, 2), 0.5, 10, 170, ccw=True)
    edges.add_spline(control_points=[(10, 4), (9, 3), (11, 1), (10, 0)], knot_values=[0, 0, 0, 0, 1, 1, 1, 1])
    image = drawing.add_image_def('wall.png', (640, 480))
    space.add_image(image, (1, 1), (4, 3), rotation=20)
    space.add_xline((1, 2), (1, 1))
    space.add_ray((1, 2), (1, 0, 1))
    space.add_mline([(0, 0), (3, 0), (3, 4)])
    forms.cube().render_polyface(space)
    forms.cube().render_mesh(space)
    leader = space.add_multileader_mtext('Standard')
    leader.set_content('Supply\\nAir')
    for side in (mleader.ConnectionSide.left, mleader.ConnectionSide.right):
        leader.add_leader_line(side, [Vec2(-20, 15), Vec2(-12, 3)])
    leader.build(insert=Vec2(5, 0), rotation=20)
    space.add_region().sat = ['400 0 1 0', 'End-of-ACIS-data']
    return drawing


def picture(dimension):
    block = dimension.get_geometry_block()
    return [place for line in block.query('LINE') for place in (line.dxf.start, line.dxf.end)]


def edge_places(edge):
    if edge.EDGE_TYPE == 'LineEdge':
        return [edge.start, edge.end]
    if edge.EDGE_TYPE == 'SplineEdge':
        return edge.control_points
    if edge.EDGE_TYPE == 'ArcEdge':
        middle = math.radians(edge.start_angle + (edge.end_angle - edge.start_angle) % 360 / 2)
        return [edge.center, edge.start_point, edge.end_point, edge.center + Vec2.from_angle(middle, edge.radius)]
    ends = edge.construction_tool().vertices([edge.start_param, edge.end_param])
    return [edge.center, *(Vec2(p) for p in ends)]


def leader_places(leader):
    context = leader.context
    corner = context.mtext.insert
    places = [context.base_point, context.plane_origin, corner, corner + context.mtext.text_direction * context.char_height]
    for part in context.leaders:
        places += [part.last_leader_point, part.last_leader_point + part.dogleg_vector * part.dogleg_length]
        places += [p for line in part.lines for p in line.vertices]
    return places


def boundary(hatch):
    elevation = hatch.dxf.elevation.z
    places = []
    for path in hatch.paths:
        for edge in getattr(path, 'edges', []):
            places += [Vec3(p) for p in edge_places(edge)]
        places += [Vec3(x, y, elevation) for x, y, bulge in getattr(path, 'vertices', [])]
    for line in hatch.pattern.lines:
        base = Vec3(line.base_point)
        places += [base, base + Vec3(line.offset), base + Vec3.from_deg_angle(line.angle, Vec3(line.offset).magnitude)]
    return places


# Kinds that the host carries, with places of each by which a change is told.
PLACES = {
    'DIMENSION': lambda e: [e.dxf.defpoint, *picture(e)],
    'HATCH': boundary,
    'IMAGE': lambda e: [e.dxf.insert, e.dxf.insert + e.dxf.u_pixel, e.dxf.insert + e.dxf.v_pixel],
    'XLINE': lambda e: [e.dxf.start],
    'RAY': lambda e: [e.dxf.start],
    'MLINE': lambda e: [e.dxf.start_location, *(v.location for v in e.vertices)],
    'POLYLINE': lambda e: [v.dxf.location for v in e.vertices if not v.is_face_record],
    'MESH': lambda e: [Vec3(v) for v in e.vertices],
    'MULTILEADER': leader_places,
}


def snapshot_of(seed):
    """A snapshot of format 1 from a seed: contents of chunks behind their lengths of three bytes."""
    made = b'\x89ZBDWG\r\n' + struct.pack('<I', 1)
    for tag in (b'CLAS', b'VARS', b'OBJS', b'OBJS', b'ENDS'):
        length = int.from_bytes(seed[:3], 'big')
        content, seed = seed[3:3 + length], seed[3 + length:]
        size = struct.pack('<Q', len(content))
        made += tag + struct.pack('<I', zlib.crc32(tag + size + content)) + size + content
    return made


class Exchange(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder)

    def path(self, name):
        return os.path.join(self.folder, name)

    def assert_clean(self, path):
        auditor = ezdxf.readfile(path).audit()
        self.assertEqual([], [(e.code, e.message) for e in auditor.errors], path)
        self.assertEqual([], [(e.code, e.message) for e in auditor.fixes], path)

    def assert_same(self, before, after, source):
        self.assertEqual({layer.dxf.name for layer in before.layers} - {layer.dxf.name for layer in after.layers},
                         set())
        for table in ('linetypes', 'styles', 'dimstyles', 'ucs', 'views'):
            for record in getattr(before, table):
                self.assertTrue(getattr(after, table).has_entry(record.dxf.name), record.dxf.name)
        for block in before.blocks:
            if block.name.startswith('_') and block.name not in source:
                continue  # ezdxf gives arrows to old files
            # A reference to the block itself is refused.
            mine = [e for e in block if e.dxftype() != 'INSERT' or e.dxf.name != block.name]
            theirs = list(after.blocks.get(block.name))
            self.assertEqual([e.dxftype() for e in mine], [e.dxftype() for e in theirs], block.name)
            for first, second in zip(mine, theirs):
                self.assertEqual([], differences(first, second), f'{block.name}: {first}')
        self.assertEqual([(name, len(group)) for name, group in before.groups],
                         [(name, len(group)) for name, group in after.groups])
        self.assertEqual(set(before.layouts.names()), set(after.layouts.names()))

    def test_drawings_of_others(self):
        files = sorted(glob.glob(os.path.join(data, '*.[dD][xX][fF]')))
        files += sorted(glob.glob(os.path.join(fuzz, 'dxf', 'seeds', '*.dxf')))
        if not files:
            self.skipTest('no drawings of other programs')
        for source in files:
            with self.subTest(os.path.basename(source)):
                target, again = self.path('out.dxf'), self.path('again.dxf')
                converted(source, target)
                try:
                    before = load(source)
                except ezdxf.DXFError:
                    before = None  # too damaged for the other reader
                if before:
                    if not before.audit().fixes:
                        self.assert_clean(target)
                    with open(source, encoding='latin-1') as text:
                        self.assert_same(load(source), load(target), text.read())
                # Through a snapshot nothing more is lost, and the file is the same.
                subprocess.run([host, '--no-module', '--drawing', source, '--eval',
                                f'(host-saveas "{self.path("out.dwg")}")'], check=True, capture_output=True)
                converted(self.path('out.dwg'), again)
                with open(target, 'rb') as one, open(again, 'rb') as other:
                    self.assertEqual(one.read(), other.read())

    def test_snapshots_of_older_formats(self):
        for seed in sorted(glob.glob(os.path.join(fuzz, 'snapshot', 'seeds', '*'))):
            with self.subTest(os.path.basename(seed)):
                source = self.path('seed.dwg')
                with open(seed, 'rb') as contents, open(source, 'wb') as file:
                    file.write(snapshot_of(contents.read()))
                first, second = self.path('first.dxf'), self.path('second.dxf')
                self.assertEqual('', converted(source, first))
                self.assert_clean(first)
                self.assertEqual('', converted(first, second))
                self.assert_same(load(first), load(second), '')

    def test_entities_of_old_files(self):
        drawing = ezdxf.new('R12', setup=True)
        space = drawing.modelspace()
        space.add_linear_dim(base=(3, 2), p1=(0, 0), p2=(3, 0), angle=30).render()
        space.add_aligned_dim(p1=(0, 0), p2=(3, 4), distance=1).render()
        space.add_radius_dim(center=(5, 5), radius=2, angle=45).render()
        space.add_diameter_dim(center=(5, 5), radius=2, angle=45).render()
        space.add_angular_dim_3p(base=(2, 2), center=(0, 0), p1=(3, 0), p2=(0, 3)).render()
        forms.cube().render_polyface(space)
        space.add_polymesh((3, 3)).set_mesh_vertex((1, 1), (1, 2, 3))
        source, target = self.path('old.dxf'), self.path('new.dxf')
        drawing.saveas(source)
        converted(source, target)
        self.assert_clean(target)
        after = load(target)
        self.assert_same(load(source), after, '')
        for mine, theirs in zip(space.query('DIMENSION'), after.modelspace().query('DIMENSION')):
            self.assertEqual(mine.dimtype, theirs.dimtype)
            for name in ('defpoint', 'defpoint2', 'defpoint3', 'defpoint4', 'defpoint5', 'geometry'):
                self.assertEqual(value(mine, name), value(theirs, name), name)

    def test_carried_entities_are_transformed(self):
        source = self.path('carried.dxf')
        carried_entities().saveas(source)
        moves = {
            '_.MOVE "_ALL" "" "0,0" "10,5"': Matrix44.translate(10, 5, 0),
            '_.ROTATE "_ALL" "" "1,2" 30': around((1, 2), Matrix44.z_rotate(math.radians(30))),
            '_.SCALE "_ALL" "" "1,2" 2.5': around((1, 2), Matrix44.scale(2.5)),
            '_.MIRROR "_ALL" "" "0,0" "2,1" "_Yes"': mirror(math.atan2(1, 2)),
        }
        for command, matrix in moves.items():
            with self.subTest(command):
                target = self.path('moved.dxf')
                name, rest = command.split(' ', 1)
                said = run_lisp(source, target, [f'(command "{name}" {rest})'])
                self.assert_clean(target)
                before, after = load(source).modelspace(), load(target).modelspace()
                mirrored = 'MIRROR' in command
                for kind, places in PLACES.items():
                    found = list(zip(before.query(kind), after.query(kind)))
                    self.assertTrue(found, kind)
                    for mine, theirs in found:
                        stays = kind in ('MLINE', 'MULTILEADER') and mirrored
                        self.assert_places([p if stays else matrix.transform(p) for p in places(mine)],
                                           places(theirs), kind)
                self.assertIn('3 were not changed' if mirrored else '1 was not changed', said)
                self.assertEqual(before.query('REGION').first.sat, after.query('REGION').first.sat)

    def assert_places(self, wanted, found, kind):
        self.assertEqual(len(wanted), len(found), kind)
        for one in wanted:  # ends of a mirrored arc change places
            self.assertLess(min(one.distance(other) for other in found), 1e-6, f'{kind}: {one} not in {found}')

    def test_copies_of_dimensions_have_pictures_of_their_own(self):
        source, target = self.path('carried.dxf'), self.path('copied.dxf')
        carried_entities().saveas(source)
        run_lisp(source, target, ['(command "_.COPY" "_ALL" "" "0,0" "10,5" "")'])
        self.assert_clean(target)
        after = load(target)
        dimensions = list(after.modelspace().query('DIMENSION'))
        self.assertEqual(4, len(dimensions))
        self.assertEqual(4, len({each.dxf.geometry for each in dimensions}))
        move = Matrix44.translate(10, 5, 0)
        for mine, theirs in zip(dimensions[:2], dimensions[2:]):
            self.assert_places([move.transform(p) for p in picture(mine)], picture(theirs), 'DIMENSION')
        self.assertEqual(1, len(after.modelspace().query('REGION')))

    def test_drawings_of_the_host(self):
        target = self.path('mixed.dxf')
        subprocess.run([maker, '2000', target], check=True)
        self.assert_clean(target)
        drawing = ezdxf.readfile(target)
        self.assertEqual(2005, len(drawing.modelspace()))
        self.assertEqual('250', drawing.modelspace().query('INSERT[layer=="0"]')[0].get_attrib_text('FLOW'))
        text = drawing.modelspace().query('TEXT').first
        self.assertEqual('Supply 12½ ° Ø6', text.dxf.text)
        self.assertAlmostEqual(math.degrees(0.5), text.dxf.rotation)
        self.assertEqual([(1000, 'flow'), (1040, 250.5), (1071, 70000)],
                         [tuple(tag) for tag in drawing.modelspace()[0].get_xdata('KORVANE') if tag[0] != 1001])
        self.assertIn('ODD', drawing.groups)

    def test_empty_drawing(self):
        target = self.path('empty.dxf')
        subprocess.run([host, '--no-module', '--output', target, '--eval', '(princ)'], check=True,
                       capture_output=True)
        self.assert_clean(target)

    @unittest.skipUnless(shutil.which('librecad'), 'no LibreCAD')
    def test_other_program_draws(self):
        source = self.path('mixed.dxf')
        subprocess.run([maker, '100', source], check=True)
        bare = self.path('bare.dxf')
        ezdxf.new().saveas(bare)
        for drawing in (source, bare):
            subprocess.run(['librecad', 'dxf2pdf', '-o', drawing.replace('.dxf', '.pdf'), drawing], check=True,
                           timeout=60, capture_output=True,
                           env=dict(os.environ, QT_QPA_PLATFORM='offscreen', HOME=self.folder))
        # Lines and letters of 100 entities take much more than an empty sheet.
        self.assertGreater(os.path.getsize(self.path('mixed.pdf')), os.path.getsize(self.path('bare.pdf')) + 20000)


if __name__ == '__main__':
    unittest.main(argv=sys.argv[:1], verbosity=1)
