#!/usr/bin/env python3
"""Dialogs whose database gets into trouble while they are open: trouble.py HOST SHARE

Another process locks the file, or writes over it, at a moment that the application's LISP tells. What was there stays,
the program goes on, and what can't be written is left as it was.
"""
import os
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import threading
import time
import unittest

host, share = sys.argv[1:3]

# The export button is the moment: LISP says so, and waits until the other process has done its part.
BEGIN = r'''
(defun util-showLayerKey (key) T)
(defun util-showTextStyle (key) T)
(defun moment (/ patience)
  (close (open "{folder}/now" "w"))
  (setq patience 0)
  (while (and (not (findfile "{folder}/done")) (< patience 200)) (sleep 50) (setq patience (1+ patience)))
  (if (not (findfile "{folder}/done")) (princ (strcat "nothing " "happened"))))
(defun util-exportLayerSystem-noName (system path) (moment))
(defun util-LayerkeyRename (key) key)
(defun sleep (n / from) (setq from (getvar "MILLISECS")) (while (< (- (getvar "MILLISECS") from) n)))
'''


class Trouble(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder)
        self.database = os.path.join(self.folder, 'standards.kv')
        shutil.copy(os.path.join(share, 'standards.kv'), self.database)

    def run_host(self, forms, prefix=()):
        """Values and texts of the forms, each form's behind its own line."""
        script = os.path.join(self.folder, 'script.lsp')
        with open(script, 'w', encoding='utf-8') as file:
            file.write((BEGIN + forms).replace('{folder}', self.folder))
        done = subprocess.run([*prefix, host, '--settings', self.folder + '/settings', '--batch', script],
                              capture_output=True, text=True, timeout=120)
        self.assertEqual((0, ''), (done.returncode, done.stderr))
        self.assertNotIn('nothing happened', done.stdout)
        return done.stdout

    def at_the_moment(self, act):
        """`act` runs when LISP says so; the result is called when the host is through."""
        def wait():
            while not os.path.exists(self.folder + '/now'):
                if over.wait(0.02):
                    return
            undo.append(act())
            open(self.folder + '/done', 'w').close()
            over.wait()
        over, undo = threading.Event(), []
        thread = threading.Thread(target=wait)
        thread.start()

        def end():
            over.set()
            thread.join()
            for each in undo:
                if each:
                    each()
        return end

    def layers(self):
        with sqlite3.connect(self.database) as connection:
            return connection.execute('SELECT * FROM tblLayer ORDER BY ixLayer').fetchall()

    def locked(self, kind, actions):
        def lock():
            connection = sqlite3.connect(self.database, isolation_level=None, check_same_thread=False)
            connection.execute('BEGIN ' + kind)
            return connection.close
        before = self.layers()
        end = self.at_the_moment(lock)
        try:
            said = self.run_host('(host-dialog \'("click" 1053) ' + actions + ''')
(princ (kv_kv-customizeLayers "{folder}/standards.kv"))
(host-dialog-log)
(+ 1 1)
''')
        finally:
            end()
        self.assertIn('=> 2', said)
        self.assertEqual(before, self.layers())

    def test_locked_against_writers(self):
        self.locked('IMMEDIATE', '\'("cell" 1050 2 1 "OTHER") \'("click" 2)')

    def test_locked_against_all(self):
        started = time.monotonic()
        self.locked('EXCLUSIVE', '\'("click" 1061) \'("click" 2)')
        self.assertLess(time.monotonic() - started, 60)

    def test_damaged_while_it_is_open(self):
        def damage():
            with open(self.database, 'r+b') as file:
                for page in range(1, os.path.getsize(self.database) // 4096):
                    file.seek(page * 4096)
                    file.write(b'\xff' * 512)
        end = self.at_the_moment(damage)
        try:
            said = self.run_host('''(host-dialog '("click" 1053) '("click" 1061) '("cell" 1050 1 1 "OTHER") '("click" 2))
(kv_kv-customizeLayers "{folder}/standards.kv")
(+ 1 1)
(host-dialog '("click" 1))
(kv_kv-customizeTextStyles "{folder}/standards.kv" nil)
(+ 2 2)
''')
        finally:
            end()
        self.assertIn('=> 2', said)
        self.assertIn('Database Error', said)
        self.assertIn('=> 4', said)

    def test_read_only(self):
        os.chmod(self.database, 0o444)
        prefix = ['setpriv', '--bounding-set', '-dac_override'] if os.geteuid() == 0 else []
        if prefix and subprocess.run([*prefix, 'true'], capture_output=True).returncode:
            self.skipTest('rights can\'t be dropped')
        said = self.run_host('''
(host-answer "OK" "OK" "OK" "OK")
(kv_kv-customizeLayers "{folder}/standards.kv")
(kv_kv-LayerSystemOptionsPlumb "{folder}/standards.kv" 1)
(kv_kv-customizeTextStyles "{folder}/standards.kv" nil)
(kv_kv-customizeLabelGroup "Air Device" "" "{folder}/standards.kv" nil)
(progn (foreach box (host-boxes) (print (list (car box) (cadr box) (caddr box)))) (princ))
''', prefix)
        box = '("Korvane" "Database is read-only. Cannot be viewed at this time." 48)'
        self.assertEqual(4, said.count(box), said)


if __name__ == '__main__':
    unittest.main(argv=sys.argv[:1], verbosity=1)
