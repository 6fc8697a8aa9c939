# SPDX-License-Identifier: GPL-3.0-or-later
# Copyright (C) the Drenova authors
"""Two programs with one project: a save over changes that were not read is refused, and nothing of the other is lost."""

import os
import shutil
import sqlite3
import subprocess
import unittest

from support import BAD_INPUT, DONE, KEY, REFUSED, Case, fingerprint


class Rivals(Case):

    def setUp(self):
        super().setUp()
        self.project = self.generate(300)

    def open_and_hold(self):
        """A process that has read the project and waits for the table that it is to load."""
        process = self.start("--verbose", "load", self.project, "-", stdin=subprocess.PIPE)
        self.assertIn(b" read in ", process.stderr.readline())
        return process

    def let_go(self, process):
        name = self.first_name()
        _, errors = process.communicate(f"name,{KEY}\n{name},2\n".encode())
        return process.returncode, errors.decode()

    def first_name(self):
        listed = self.run_program("get", self.project, "length", "--format", "csv").output
        return listed.splitlines()[1].split(",")[0]

    def assert_refused(self, process, message):
        code, errors = self.let_go(process)
        self.assertEqual(code, REFUSED, errors)
        self.assertIn(message, errors)
        self.assertFalse([name for name in self.names() if name.startswith(".")])

    def test_alone(self):
        self.assertEqual(self.let_go(self.open_and_hold())[0], DONE)

    def test_saved_by_another(self):
        process = self.open_and_hold()
        self.run_program("set", self.project, f"{KEY}=1", "--all")
        saved = fingerprint(self.project)
        self.assert_refused(process, "was replaced by another program since it was opened here")
        self.assertEqual(fingerprint(self.project), saved)

    def test_changed_in_place(self):
        process = self.open_and_hold()
        with sqlite3.connect(self.project) as other:
            other.execute("INSERT INTO drenova_settings (id, name, value) VALUES (100, 'note', 'x')")
        other.close()
        saved = fingerprint(self.project)
        self.assert_refused(process, "was changed by another program since it was opened here")
        self.assertEqual(fingerprint(self.project), saved)

    def test_removed(self):
        process = self.open_and_hold()
        kept = self.path("kept.gpkg")
        shutil.copy(self.project, kept)
        os.remove(self.project)
        _, errors = process.communicate(f"name,{KEY}\n".encode())
        # An empty table stores nothing, but the file is gone all the same.
        self.assertNotEqual(process.returncode, DONE, errors.decode())
        self.assertEqual(self.names(), ["kept.gpkg"])

    def test_replaced_by_hand(self):
        process = self.open_and_hold()
        shutil.copy(self.project, self.path("other.gpkg"))
        os.replace(self.path("other.gpkg"), self.project)
        self.assert_refused(process, "was replaced by another program since it was opened here")

    def test_in_use(self):
        """A program of SQLite that is writing and does not end: after half a minute the save gives up."""
        other = sqlite3.connect(self.project, isolation_level=None)
        other.execute("BEGIN IMMEDIATE")
        self.run_program("info", self.project)
        ended = self.run_program("set", self.project, f"{KEY}=1", "--all", code=REFUSED)
        self.assertIn("is being used by another program", ended.errors)
        other.execute("ROLLBACK")
        other.close()
        self.run_program("set", self.project, f"{KEY}=1", "--all")

    def test_many_at_once(self):
        for _ in range(5):
            rivals = {value: self.start("set", self.project, f"{KEY}={value}", "--all") for value in (10, 20, 30, 40)}
            stored = []
            for value, process in rivals.items():
                _, errors = process.communicate()
                self.assertIn(process.returncode, (DONE, REFUSED), errors)
                if process.returncode == DONE:
                    stored.append(value)
            self.assertIn(self.mark(self.project), stored)
            self.assertEqual(self.names(), ["net.gpkg"])


class ForeignFiles(Case):

    def setUp(self):
        super().setUp()
        self.project = self.generate(20)

    def change(self, sql):
        with sqlite3.connect(self.project) as file:
            file.execute(sql)
        file.close()

    def assert_refused(self, code, *parts):
        before = fingerprint(self.project)
        for arguments in (["info", self.project], ["get", self.project, "length"],
                      ["set", self.project, f"{KEY}=1", "--all"]):
            ended = self.run_program(*arguments, code=code)
            for part in (self.project, *parts):
                self.assertIn(part, ended.errors)
        self.assertEqual(fingerprint(self.project), before)
        self.assertEqual(self.names(), ["net.gpkg"])

    def test_newer_schema(self):
        self.change("UPDATE drenova_meta SET value = '99' WHERE name = 'schema_version'")
        self.assert_refused(BAD_INPUT, "a newer program", "found schema version 99", "expected 1")

    def test_cut_off(self):
        whole = os.path.getsize(self.project)
        for size in (0, 1, 50, 100, 4096, whole // 2, whole - 1):
            with self.subTest(size=size):
                shutil.copy(self.project, self.path("whole"))
                os.truncate(self.project, size)
                code = self.start("info", self.project)
                code.communicate()
                self.assertEqual(code.returncode, BAD_INPUT)
                os.replace(self.path("whole"), self.project)

    def test_no_project(self):
        with open(self.project, "wb") as file:
            file.write(b"a letter to the editor\n" * 100)
        self.assert_refused(BAD_INPUT, "is not a project file")

    def test_a_language_that_is_a_path(self):
        self.change("INSERT INTO drenova_settings (id, name, value) VALUES (100, 'language', '../../../etc/x')")
        ended = self.run_program("info", self.project)
        self.assertIn("found the language", ended.errors)

    def test_messages_hold_no_control_characters(self):
        self.change("UPDATE drenova_meta SET value = char(27) || ']0;x' || char(7) WHERE name = 'schema_version'")
        self.assert_refused(BAD_INPUT, "?]0;x?")


if __name__ == "__main__":
    unittest.main()
