# SPDX-License-Identifier: GPL-3.0-or-later
# Copyright (C) the Drenova authors
"""Outputs: never onto an input, never onto another file without --replace, whole or not at all."""

import os
import random
import resource
import shutil
import signal
import subprocess
import unittest

from support import (BAD_ARGUMENTS, DONE, INTERRUPTED, KEY, PROGRAM, REFUSED, SECTIONS, TEMPORARY, TRIES, Case, fingerprint,
                     seconds)

CURVES = "#2\n5 300\n15 180\n60 80\n"
RASTER = "ncols 2\nnrows 2\nxllcorner 0\nyllcorner 0\ncellsize 100\n10 11\n12 13\n"


class Targets(Case):

    def setUp(self):
        super().setUp()
        self.project = self.generate(20)
        name = self.run_program("get", self.project, "length", "--format", "csv").output.splitlines()[1].split(",")[0]
        self.write("table.csv", f"name,{KEY}\n{name},2\n")
        self.write("curves.txt", CURVES)
        self.write("ground.asc", RASTER)
        self.write("p.json", '{"01_WASTE_PERCENT": {"BROJ_STANOVNIKA": 1200}}')
        self.write("rain.json", '{"001_RAIN_ITP": {"FILE_PATH": "curves.txt", "FREQUENCY": 2}}')
        self.write("pipes.csv", "group,name,guid,shape,inner_width_mm,inner_height_mm,wall_mm,roughness_mm,type,"
                   "min_diameter_mm\nG,A,,circle,300,300,30,0.4,T,200\n")
        self.write("other", "somebody's work")
        os.link(self.project, self.path("hard"))
        os.link(self.path("table.csv"), self.path("table-hard"))
        os.symlink("net.gpkg", self.path("soft"))
        self.run_program("settings", self.project, "terrain_1=" + self.path("ground.asc"))
        os.replace(self.project, self.path("saved"))  # the save has parted the hard links
        shutil.copy(self.path("saved"), self.project)
        os.remove(self.path("hard"))
        os.link(self.project, self.path("hard"))

    def write(self, name, text):
        with open(self.path(name), "w", encoding="utf-8") as file:
            file.write(text)

    def test_what_an_output_may_be(self):
        """Verb and arguments, output, further options, exit code, names of the files that change."""
        store = ["set", "P", f"{KEY}=1", "--all"]
        rows = [
            (store, "P", [], DONE, ["net.gpkg"]),
            (store, "soft", [], DONE, ["net.gpkg"]),
            (store, "hard", [], REFUSED, []),
            (store, "hard", ["--replace"], DONE, ["hard"]),
            (store, "other", [], REFUSED, []),
            (store, "other", ["--replace"], DONE, ["other"]),
            (store, "new", [], DONE, ["new"]),
            (store, "ground.asc", ["--replace"], BAD_ARGUMENTS, []),
            (["load", "P", "table.csv"], "table.csv", ["--replace"], BAD_ARGUMENTS, []),
            (["load", "P", "table.csv"], "./table.csv", [], BAD_ARGUMENTS, []),
            (["load", "P", "table.csv"], "table-hard", ["--replace"], DONE, ["table-hard"]),
            (["run", "P", "01_WASTE_PERCENT", "--params", "p.json"], "p.json", ["--replace"], BAD_ARGUMENTS, []),
            (["run", "P", "01_WASTE_PERCENT"], "other", [], REFUSED, []),
            (["design", "P", "--params", "p.json"], "p.json", ["--replace"], BAD_ARGUMENTS, []),
            (["design", "P", "--params", "rain.json"], "curves.txt", ["--replace"], BAD_ARGUMENTS, []),
            (["run", "P", "001_RAIN_ITP", "FILE_PATH=curves.txt", "FREQUENCY=2"], "curves.txt", ["--replace"],
             BAD_ARGUMENTS, []),
            (["slopes", "P"], "other", [], REFUSED, []),
            (["check", "P"], "other", [], REFUSED, []),
            (["settings", "P", "turkish=1"], "other", [], REFUSED, []),
            (["directions", "P", "--auto"], "other", [], REFUSED, []),
            (["catalog", "import", "P", "pipes.csv"], "pipes.csv", ["--replace"], BAD_ARGUMENTS, []),
            (["export", "P", "geojson"], "net.gpkg", ["--replace"], BAD_ARGUMENTS, []),
            (["export", "P", "geojson"], "soft", ["--replace"], BAD_ARGUMENTS, []),
            (["export", "P", "geojson"], "ground.asc", ["--replace"], BAD_ARGUMENTS, []),
            (["export", "P", "geojson"], "other", [], REFUSED, []),
            (["export", "P", "geojson"], "other", ["--replace"], DONE, ["other"]),
            (["export", "P", "geojson"], "hard", ["--replace"], DONE, ["hard"]),
            (["export", "P", "csv"], "/dev/null", [], DONE, []),
            (["export", "P", "csv"], "/dev/full", [], REFUSED, []),
            (["generate", "--shape", "line", "--sections", "3"], "other", [], REFUSED, []),
            (["generate", "--shape", "line", "--sections", "3"], "other", ["--replace"], DONE, ["other"]),
        ]
        self.addCleanup(shutil.rmtree, self.folder + "-kept", ignore_errors=True)
        subprocess.run(["cp", "-a", self.folder, self.folder + "-kept"], check=True)
        for words, output, options, code, changed in rows:
            with self.subTest(words=words, output=output, options=options):
                self.restore()
                before = {name: fingerprint(self.path(name)) for name in self.names()}
                arguments = [self.project if word == "P" else word for word in words]
                target = self.project if output == "P" else output
                self.run_program(*arguments, "-o", target, *options, code=code, cwd=self.folder)
                after = {name: fingerprint(self.path(name)) for name in self.names()}
                different = [name for name in sorted(set(before) | set(after)) if before.get(name) != after.get(name)]
                self.assertEqual([name for name in different if name != "soft"], changed)
                self.assertTrue(os.path.islink(self.path("soft")))

    def restore(self):
        for name in self.names():
            os.remove(self.path(name))
        subprocess.run(["cp", "-a", self.folder + "-kept/.", self.folder], check=True)

    def test_results_that_cannot_be_printed_store_nothing(self):
        before = fingerprint(self.project)
        rows = [["run", self.project, "01_WASTE_PERCENT"], ["check", self.project], ["hydraulics", self.project],
                ["design", self.project, "--params", self.path("p.json")],
                ["generate", "--shape", "line", "--sections", "3", "-o", self.path("made")]]
        for arguments in rows:
            stores = self.start(*arguments, "--replace", "-o", self.path("probe")) if "-o" not in arguments else None
            if stores is not None:
                stores.communicate()
            for stream in ("full", "closed"):
                with self.subTest(arguments=arguments, stream=stream):
                    command = [PROGRAM, *arguments]
                    command = ["sh", "-c", 'exec "$@" ' + (">/dev/full" if stream == "full" else ">&-"), "sh", *command]
                    ended = subprocess.run(command, stderr=subprocess.PIPE, check=False)
                    if stores is not None and stores.returncode != DONE and b"nothing was stored" in ended.stderr:
                        continue
                    self.assertEqual(ended.returncode, REFUSED, ended.stderr)
                    self.assertIn(b"standard output: cannot be written", ended.stderr)
                    self.assertEqual(fingerprint(self.project), before)
                    self.assertNotIn("made", self.names())

    def test_a_reader_that_goes_away_ends_nothing(self):
        large = self.generate(SECTIONS, "large.gpkg")
        for arguments in (["run", self.project, "01_WASTE_PERCENT"], ["export", large, "geojson", "-o", "-"],
                          ["export", large, "csv", "-o", "/dev/stdout"]):
            process = self.start(*arguments)
            process.stdout.close()
            with process.stderr as stream:
                errors = stream.read()
            self.assertEqual(process.wait(), DONE, errors)
        self.assertNotEqual(self.run_program("get", self.project, "FLOW_WASTE_PER", "--format", "csv").output.count(",\n"),
                            20)

    def test_closed_standard_streams(self):
        """No file gets the number of a stream that is closed, so that no message is written into it."""
        for closed in ("<&-", "2>&-", "<&- 2>&-", "<&- >&- 2>&-"):
            with self.subTest(closed=closed):
                self.restore_project()
                command = ["sh", "-c", 'exec "$@" ' + closed, "sh", PROGRAM, "set", self.project, f"{KEY}=3", "--all"]
                self.assertEqual(subprocess.run(command, check=False).returncode, DONE)
                self.assertEqual(self.mark(self.project), 3)
        command = ["sh", "-c", 'exec "$@" <&-', "sh", PROGRAM, "load", self.project, "-"]
        ended = subprocess.run(command, stderr=subprocess.PIPE, check=False)
        self.assertEqual(ended.returncode, REFUSED, ended.stderr)

    def restore_project(self):
        shutil.copy(self.path("saved"), self.project)


class Exports(Case):

    def setUp(self):
        super().setUp()
        self.project = self.generate()
        self.file = self.path("town.geojson")
        self.whole = seconds(lambda: self.run_program("export", self.project, "geojson", "-o", self.file))
        self.expected = fingerprint(self.file)

    def left_overs(self):
        return [name for name in self.names() if name.startswith(TEMPORARY)]

    def test_killed_at_any_moment(self):
        chance = random.Random(2)
        codes = set()
        for number in (signal.SIGKILL, signal.SIGTERM, signal.SIGINT):
            for turn in range(max(3, TRIES // 10)):
                with open(self.file, "w", encoding="utf-8") as file:
                    file.write("old")
                process = self.start("export", self.project, "geojson", "-o", self.file, "--replace")
                if turn % 2 == 0:
                    self.wait_for_save(process)
                else:
                    try:
                        process.wait(timeout=chance.uniform(0.05, 1.1 * self.whole))
                    except subprocess.TimeoutExpired:
                        pass
                process.send_signal(number)
                process.communicate()
                codes.add(process.returncode)
                if process.returncode == DONE:
                    self.assertEqual(fingerprint(self.file), self.expected)
                elif number != signal.SIGKILL:
                    self.assertIn(process.returncode, (INTERRUPTED, -number))
                    with open(self.file, encoding="utf-8") as file:
                        self.assertEqual(file.read(), "old")
                    self.assertEqual(self.left_overs(), [])
            self.run_program("export", self.project, "geojson", "-o", self.file, "--replace")
            self.assertEqual(self.left_overs(), [])
        self.assertTrue({-signal.SIGKILL, -signal.SIGTERM, INTERRUPTED} <= codes, codes)

    def test_file_size_limit(self):
        def limit_size():
            resource.setrlimit(resource.RLIMIT_FSIZE, (SECTIONS * 10, SECTIONS * 10))
        ended = self.run_program("export", self.project, "geojson", "-o", self.file, "--replace", code=REFUSED,
                                 preexec_fn=limit_size)
        self.assertIn("File too large", ended.errors)
        self.assertEqual(fingerprint(self.file), self.expected)
        self.assertEqual(self.left_overs(), [])

    def test_an_ignored_signal_stays_ignored(self):
        def ignore():
            signal.signal(signal.SIGINT, signal.SIG_IGN)
        process = self.start("export", self.project, "geojson", "-o", self.file, "--replace", preexec_fn=ignore)
        self.wait_for_save(process)
        process.send_signal(signal.SIGINT)
        process.communicate()
        self.assertEqual(process.returncode, DONE)


if __name__ == "__main__":
    unittest.main()
