# SPDX-License-Identifier: GPL-3.0-or-later
# Copyright (C) the Drenova authors
"""What the tests of faults share: the built program, a folder for each test, and what must be true of a project file.

Environment: DRENOVA_PROGRAM is the built command line; DRENOVA_FAULTS_TRIES (100) processes are killed, with networks of
DRENOVA_FAULTS_SECTIONS (20000) sections.
"""

import hashlib
import os
import shutil
import sqlite3
import subprocess
import tempfile
import time
import unittest

PROGRAM = os.environ["DRENOVA_PROGRAM"]
TRIES = int(os.environ.get("DRENOVA_FAULTS_TRIES", "100"))
SECTIONS = int(os.environ.get("DRENOVA_FAULTS_SECTIONS", "20000"))

DONE, NOTHING_STORED, BAD_ARGUMENTS, BAD_INPUT, REFUSED, STOPPED, INTERRUPTED = 0, 1, 2, 3, 4, 5, 130

KEY = "FLOW_USER"  # an attribute of sections that no step of these tests computes
TEMPORARY = ".drenova-save-"  # with this the names of files begin that a save has not finished


def environment(**further):
    """Of a user without a locale and without files of his own."""
    kept = {name: value for name, value in os.environ.items() if not name.startswith(("LC_", "LANG"))}
    return {**kept, "LC_ALL": "C", **further}


class Ended:
    """How a run of the program ended."""

    def __init__(self, code, output, errors):
        self.code, self.output, self.errors = code, output, errors


class Case(unittest.TestCase):
    """A test with a folder of its own."""

    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="drenova-faults-")
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)

    def path(self, name="net.gpkg"):
        return os.path.join(self.folder, name)

    def start(self, *arguments, **options):
        options.setdefault("env", environment())
        for stream in ("stdin", "stdout", "stderr"):
            options.setdefault(stream, subprocess.DEVNULL if stream == "stdin" else subprocess.PIPE)
        return subprocess.Popen([PROGRAM, *arguments], **options)

    def run_program(self, *arguments, code=DONE, feed=None, **options):
        """Runs the program to its end, which has to be that code."""
        if feed is not None:
            options["stdin"] = subprocess.PIPE
        process = self.start(*arguments, **options)
        output, errors = process.communicate(feed)
        ended = Ended(process.returncode, (output or b"").decode(), (errors or b"").decode())
        self.assertEqual(ended.code, code, f"{arguments}: {ended.errors}")
        return ended

    def generate(self, sections=SECTIONS, name="net.gpkg"):
        self.run_program("generate", "--shape", "tree", "--sections", str(sections), "-o", self.path(name))
        return self.path(name)

    def names(self):
        return sorted(os.listdir(self.folder))

    def mark(self, path):
        """The one value that all sections have under KEY, of a file that has to be sound."""
        file = sqlite3.connect(f"file:{path.replace('%', '%25').replace('?', '%3f')}?mode=ro", uri=True)
        try:
            self.assertEqual(file.execute("PRAGMA integrity_check").fetchall(), [("ok",)])
            marks = file.execute(f"SELECT DISTINCT {KEY} FROM sections").fetchall()
        finally:
            file.close()
        self.assertEqual(len(marks), 1, "a mixture of two saves")
        return marks[0][0]

    def counts(self, path):
        file = sqlite3.connect(f"file:{path}?mode=ro", uri=True)
        try:
            return [file.execute(f"SELECT count(*) FROM {layer}").fetchone()[0]
                    for layer in ("nodes", "sections", "catchments")]
        finally:
            file.close()

    def wait_for_save(self, process):
        """Until the process has begun to write a new file or has ended."""
        before = set(self.names())
        while process.poll() is None:
            if any(name.startswith(TEMPORARY) for name in set(self.names()) - before):
                return


def fingerprint(path):
    with open(path, "rb") as file:
        return hashlib.sha256(file.read()).hexdigest()


def state(path):
    """What a program that only reads must not change."""
    status = os.stat(path)
    return fingerprint(path), status.st_mtime_ns, status.st_ino, status.st_mode


def seconds(step):
    begin = time.perf_counter()
    step()
    return time.perf_counter() - begin
