#!/usr/bin/env python3
"""Drawings go through the host and are looked at by other programs: exchange.py HOST MAKER DATA

HOST is zarbo-host, MAKER make-mixed-drawing, DATA a folder with drawings of other programs. Exit status
77 means that what the test needs isn't here.
"""
import glob
import math
import os
import shutil
import subprocess
import sys
import tempfile
import unittest

try:
    import ezdxf
    from ezdxf import recover
except ImportError:
    sys.exit(77)

host, maker, data = sys.argv[1:4]


def converted(source, target):
    """Reads `source` and writes it as `target`; answers what the host said."""
    done = subprocess.run([host, '--no-module', '--drawing', source, '--output', target, '--eval', '(princ)'],
                          capture_output=True, text=True, timeout=120)
    if done.returncode != 0:
        raise AssertionError(f'{source}: {done.stderr}')
    return done.stderr


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
            mine, theirs = list(block), list(after.blocks.get(block.name))
            self.assertEqual([e.dxftype() for e in mine], [e.dxftype() for e in theirs], block.name)
            for first, second in zip(mine, theirs):
                self.assertEqual([], differences(first, second), f'{block.name}: {first}')
        self.assertEqual([(name, len(group)) for name, group in before.groups],
                         [(name, len(group)) for name, group in after.groups])
        self.assertEqual(set(before.layouts.names()), set(after.layouts.names()))

    def test_drawings_of_others(self):
        files = sorted(glob.glob(os.path.join(data, '*.[dD][xX][fF]')))
        if not files:
            self.skipTest('no drawings of other programs')
        for source in files:
            with self.subTest(os.path.basename(source)):
                target, again = self.path('out.dxf'), self.path('again.dxf')
                converted(source, target)
                before = load(source)
                clean = not before.audit().fixes
                if clean:
                    self.assert_clean(target)
                with open(source, encoding='latin-1') as text:
                    self.assert_same(load(source), load(target), text.read())
                # Through a snapshot nothing more is lost, and the file is the same.
                subprocess.run([host, '--no-module', '--drawing', source, '--eval',
                                f'(host-saveas "{self.path("out.dwg")}")'], check=True, capture_output=True)
                converted(self.path('out.dwg'), again)
                with open(target, 'rb') as one, open(again, 'rb') as other:
                    self.assertEqual(one.read(), other.read())

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
