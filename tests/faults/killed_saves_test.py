# SPDX-License-Identifier: GPL-3.0-or-later
# Copyright (C) the Drenova authors
"""Programs that are killed while they save: the project is the old one or the new one, whole, and the next save works."""

import random
import signal
import subprocess
import unittest

from support import DONE, INTERRUPTED, KEY, TEMPORARY, TRIES, Case, fingerprint, seconds


class KilledSaves(Case):

    def setUp(self):
        super().setUp()
        self.random = random.Random(1)
        self.project = self.generate()
        self.counted = self.counts(self.project)
        self.stored = 0  # the value that the last whole save stored
        self.whole = seconds(lambda: self.run_program("set", self.project, f"{KEY}=0", "--all"))
        self.fingerprint = fingerprint(self.project)

    def left_overs(self):
        return [name for name in self.names() if name != "net.gpkg"]

    def check_old_or_new(self, value):
        """After a try to store value: whether the file is the new one."""
        if fingerprint(self.project) == self.fingerprint:
            return False
        self.assertEqual(self.mark(self.project), value)
        self.assertEqual(self.counts(self.project), self.counted)
        self.stored, self.fingerprint = value, fingerprint(self.project)
        return True

    def end_after(self, process, wait, number):
        """Sends the signal after so many seconds, unless the process has ended by itself."""
        try:
            process.wait(timeout=wait)
        except subprocess.TimeoutExpired:
            process.send_signal(number)
        process.communicate()

    def start_save(self, value):
        return self.start("set", self.project, f"{KEY}={value}", "--all")

    def test_killed_at_any_moment(self):
        hit = new = 0
        for value in range(1, TRIES + 1):
            process = self.start_save(value)
            wait = self.random.uniform(0.0, 1.2 * self.whole)
            before = self.left_overs()
            if value % 2 == 0:  # every other one for certain while it writes
                self.wait_for_save(process)
                wait *= 0.5
            self.end_after(process, wait, signal.SIGKILL)
            new += self.check_old_or_new(value)
            left = self.left_overs()
            self.assertLessEqual(len(left), 1, left)
            self.assertTrue(all(name.startswith(TEMPORARY) for name in left), left)
            hit += left not in ([], before)
        print(f"{TRIES} killed, {hit} of them while writing, {new} after the swap")
        self.assertGreater(hit, 0)
        self.run_program("info", self.project)
        self.run_program("set", self.project, f"{KEY}=-1", "--all")
        self.assertEqual(self.mark(self.project), -1)
        self.assertEqual(self.left_overs(), [])

    def test_interrupted_while_it_saves(self):
        codes = []
        for value in range(1, max(3, TRIES // 10) + 1):
            process = self.start_save(value)
            self.wait_for_save(process)
            self.end_after(process, self.random.uniform(0.0, 0.1 * self.whole), signal.SIGINT)
            self.assertIn(process.returncode, (DONE, INTERRUPTED))
            self.assertEqual(self.check_old_or_new(value), process.returncode == DONE)
            self.assertEqual(self.left_overs(), [])
            codes.append(process.returncode)
        self.assertIn(INTERRUPTED, codes)

    def test_interrupted_at_any_moment_of_a_run(self):
        codes = []
        for tag in range(1, max(3, TRIES // 10) + 1):
            process = self.start("run", self.project, "01_WASTE_PERCENT", f"PERIOD={tag}")
            self.end_after(process, self.random.uniform(0.0, 1.5 * self.whole), signal.SIGINT)
            codes.append(process.returncode)
            # The first moments of a process are not yet its own: there the signal ends it.
            self.assertIn(process.returncode, (DONE, INTERRUPTED, -signal.SIGINT))
            if process.returncode != DONE:
                self.assertEqual(fingerprint(self.project), self.fingerprint)
            self.fingerprint = fingerprint(self.project)
            self.assertEqual(self.mark(self.project), self.stored)
            self.assertEqual(self.left_overs(), [])
        self.assertIn(INTERRUPTED, codes)


if __name__ == "__main__":
    unittest.main()
