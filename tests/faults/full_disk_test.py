# SPDX-License-Identifier: GPL-3.0-or-later
# Copyright (C) the Drenova authors
"""Full disks, places that cannot be written, too little memory: exit code 4, and the project stays as it was.

Disks of the test's own are mounted in a namespace of its own, where the system allows that.
"""

import contextlib
import os
import resource
import shutil
import subprocess
import sys
import unittest

from support import DONE, KEY, PROGRAM, REFUSED, SECTIONS, Case, fingerprint, state

MOUNTS = "DRENOVA_FAULTS_MOUNTS"  # set where this process may mount


def enter_namespace():
    """Goes on in a namespace of its own, when there can be one."""
    if MOUNTS in os.environ or shutil.which("unshare") is None:
        return
    command = ["unshare", "--mount"] + (["--map-root-user"] if os.geteuid() != 0 else [])
    probe = subprocess.run(command + ["mount", "-t", "tmpfs", "tmpfs", "/mnt"], stderr=subprocess.DEVNULL, check=False)
    if probe.returncode == 0:
        os.environ[MOUNTS] = "1"
        os.execvp(command[0], command + [sys.executable, "-B", *sys.argv])


@unittest.skipUnless(MOUNTS in os.environ, "this process may not mount")
class OwnDisk(Case):

    def mount(self, options):
        place = self.path("disk")
        os.mkdir(place)
        subprocess.run(["mount", "-t", "tmpfs", "-o", options, "tmpfs", place], check=True)
        self.addCleanup(subprocess.run, ["umount", place], check=True)
        return place

    def test_full_disk(self):
        good = self.generate()
        size = os.path.getsize(good)
        place = self.mount(f"size={size + size // 2}")
        project = os.path.join(place, "net.gpkg")
        shutil.copy(good, project)
        before = state(project)
        for arguments in (["set", project, f"{KEY}=1", "--all"], ["set", project, f"{KEY}=1", "--all", "-o", project + "2"]):
            ended = self.run_program(*arguments, code=REFUSED)
            self.assertIn("disk is full", ended.errors)
            self.assertEqual(state(project), before)
            self.assertEqual(os.listdir(place), ["net.gpkg"])
        filler = os.open(os.path.join(place, "filler"), os.O_WRONLY | os.O_CREAT)
        with contextlib.suppress(OSError):
            while os.write(filler, b"\0" * 4096):
                pass
        os.close(filler)
        self.run_program("info", project)
        self.run_program("set", project, f"{KEY}=1", "--all", code=REFUSED)
        self.assertEqual(state(project), before)
        os.remove(os.path.join(place, "filler"))
        subprocess.run(["mount", "-o", f"remount,size={3 * size}", place], check=True)
        self.run_program("set", project, f"{KEY}=1", "--all")
        self.assertEqual(self.mark(project), 1)

    def test_read_only_disk(self):
        good = self.generate(100)
        place = self.mount("size=16m")
        project = os.path.join(place, "net.gpkg")
        shutil.copy(good, project)
        subprocess.run(["mount", "-o", "remount,ro", place], check=True)
        before = state(project)
        self.run_program("info", project, "--json")
        self.run_program("get", project, "length")
        self.run_program("set", project, f"{KEY}=1", "--all", "-o", self.path("copy.gpkg"))
        self.assertEqual(self.mark(self.path("copy.gpkg")), 1)
        for arguments in (["set", project, f"{KEY}=1", "--all"], ["run", project, "01_WASTE_PERCENT"],
                      ["new", os.path.join(place, "new.gpkg")]):
            ended = self.run_program(*arguments, code=REFUSED)
            self.assertIn("Read-only file system", ended.errors)
        self.assertEqual(os.listdir(place), ["net.gpkg"])
        self.assertEqual(state(project), before)


class Limits(Case):

    def test_file_size_limit(self):
        project = self.generate(SECTIONS // 10)
        before = state(project)
        size = os.path.getsize(project)
        for limit in (0, 1, 4096, 100_000, size // 2, size - 1):
            def limit_size(limit=limit):
                resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))
            ended = self.run_program("set", project, f"{KEY}=1", "--all", code=REFUSED, preexec_fn=limit_size)
            self.assertIn("net.gpkg", ended.errors)
            self.assertEqual(state(project), before)
            self.assertEqual(self.names(), ["net.gpkg"])
        self.run_program("set", project, f"{KEY}=1", "--all", preexec_fn=lambda: resource.setrlimit(
            resource.RLIMIT_FSIZE, (3 * size, 3 * size)))

    def test_memory_limit(self):
        """As long as nothing is missing but memory: the project stays, and no file is left beside it."""
        project = self.generate()
        source = self.path("net.geojson")
        self.run_program("export", project, "geojson", "-o", source)
        before = state(project)
        names = self.names()
        codes = set()
        for megabytes in (4000, 160, 120, 90, 70, *range(60, 30, -3), 20):
            def limit_memory(bytes_=megabytes << 20):
                resource.setrlimit(resource.RLIMIT_AS, (bytes_, bytes_))
            probe = self.start("--version", preexec_fn=limit_memory)
            probe.communicate()
            if probe.returncode != DONE:
                break  # it cannot even begin, as under sanitizers
            for arguments in (["set", project, f"{KEY}=1", "--all"], ["import", source, "-o", project, "--replace"]):
                process = self.start(*arguments, preexec_fn=limit_memory)
                _, errors = process.communicate()
                codes.add(process.returncode)
                self.assertIn(process.returncode, (DONE, REFUSED), errors)
                if process.returncode == REFUSED:
                    self.assertIn(b"memory", errors)
                    self.assertEqual(state(project), before)
                before = state(project)
                self.assertEqual(self.names(), names)
        if codes:
            self.assertEqual(codes, {DONE, REFUSED})

    def test_results_that_cannot_be_written(self):
        project = self.generate(100)
        for arguments in (["get", project, "length"], ["info", project, "--json"], ["calculators"], ["--help"]):
            with open("/dev/full", "wb") as full:
                ended = self.run_program(*arguments, code=REFUSED, stdout=full)
            self.assertIn("No space left on device", ended.errors)
        with open("/dev/full", "wb") as full:
            self.assertEqual(subprocess.run([PROGRAM, "nonsense"], stderr=full, check=False).returncode, 2)

    def test_a_reader_that_goes_away(self):
        project = self.generate(SECTIONS)
        before = fingerprint(project)
        process = self.start("get", project, "length")
        process.stdout.readline()
        process.stdout.close()
        with process.stderr as stream:
            errors = stream.read()
        self.assertEqual(process.wait(), DONE, errors)  # he has seen enough
        self.assertEqual(errors, b"")
        self.assertEqual(fingerprint(project), before)

    def test_places_without_permission(self):
        """As root by a user whom permissions bind."""
        project = self.generate(100)
        before = state(project)
        os.chmod(project, 0o644)
        os.chmod(self.folder, 0o555)
        nobody = 65534
        user = {"user": nobody, "group": nobody, "extra_groups": []} if os.geteuid() == 0 else {}
        try:
            self.start("--version", **user).communicate()
        except OSError as reason:
            self.skipTest(f"another user may not run the program: {reason}")
        self.run_program("info", project, **user)
        self.run_program("get", project, "length", **user)
        for arguments in (["set", project, f"{KEY}=1", "--all"], ["new", self.path("new.gpkg")]):
            ended = self.run_program(*arguments, code=REFUSED, **user)
            self.assertIn("Permission denied", ended.errors)
        os.chmod(self.folder, 0o755)
        self.assertEqual(state(project)[:3], before[:3])
        self.assertEqual(self.names(), ["net.gpkg"])


if __name__ == "__main__":
    enter_namespace()
    unittest.main()
