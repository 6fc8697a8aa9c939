# SPDX-License-Identifier: GPL-3.0-or-later
# Copyright (C) the Drenova authors
"""What may surround a program: foreign libraries, pipes and devices as files, control characters in names, an environment
without a home, programs that read the project just now."""

import glob
import json
import os
import pty
import re
import shutil
import signal
import sqlite3
import subprocess
import unittest

from support import BAD_INPUT, DONE, KEY, PROGRAM, REFUSED, Case, environment, fingerprint

HOSTILE = "A\x1b]0;x\x07\x7f\u0085\u202e=cmd"
HIDDEN = re.compile("[\x00-\x08\x0b-\x1f\x7f\u0080-\u009f\u202a-\u202e\u2066-\u2069]")


class Libraries(Case):

    def test_run_paths_are_beside_the_file(self):
        """An empty element or a relative one names the current folder, where anybody may have put a library."""
        top = os.path.dirname(os.path.dirname(PROGRAM))
        files = [path for path in glob.glob(top + "/bin/*") + glob.glob(top + "/lib/*.so") if os.path.isfile(path)]
        self.assertIn(PROGRAM, files)
        for path in files:
            head = subprocess.run(["readelf", "-d", path], capture_output=True, check=True).stdout.decode()
            self.assertNotIn("(RPATH)", head, path)
            for run_path in re.findall(r"\(RUNPATH\).*\[(.*)\]", head):
                for element in run_path.split(":"):
                    self.assertRegex(element, r"^\$ORIGIN(/\.\./lib)?$", path)

    def test_a_library_in_the_current_folder_is_not_loaded(self):
        needed = subprocess.run(["readelf", "-d", PROGRAM], capture_output=True, check=True).stdout.decode()
        names = re.findall(r"\(NEEDED\).*\[(.*)\]", needed) + ["libfmt.so.9", "OLMXSewageCalculationsWsPlugin.so"]
        for name in names:
            with open(self.path(name), "w", encoding="utf-8") as file:
                file.write("no library")
        self.run_program("calculators", cwd=self.folder, env=environment(DRENOVA_MODULE=self.path(names[-1])))


class Inputs(Case):

    def setUp(self):
        super().setUp()
        self.project = self.generate(20)
        os.mkfifo(self.path("pipe"))
        os.mkdir(self.path("folder"))

    def test_what_is_no_file_is_refused_at_once(self):
        rows = [["info", "F"], ["import", "F", "--format", "geojson", "-o", "new.gpkg"],
                ["import", "F", "--format", "inp", "-o", "new.gpkg"], ["load", self.project, "F"], ["curves", "F"],
                ["catalog", "import", self.project, "F"], ["run", self.project, "01_WASTE_PERCENT", "--params", "F"],
                ["design", self.project, "--params", "F"], ["settings", self.project, "terrain_1=F"],
                ["set", self.project, f"{KEY}=1", "--all", "--replace", "-o", "F"]]
        for words in rows:
            for name in ("pipe", "folder", "/dev/zero", "/dev/tty"):
                with self.subTest(words=words, name=name):
                    process = self.start(*[word.replace("F", name) if word in ("F", "terrain_1=F") else word
                                           for word in words], cwd=self.folder)
                    _, errors = process.communicate(timeout=20)
                    self.assertEqual(process.returncode, REFUSED, errors)
                    self.assertIn(os.path.basename(name).encode(), errors)

    def test_rasters_are_plain_files_of_two_formats(self):
        grid = "ncols 2\nnrows 2\nxllcorner 0\nyllcorner 0\ncellsize 100\n10 11\n12 13\n"
        rows = {"ground.asc": (grid, DONE),
                "ground.vrt": ('<VRTDataset rasterXSize="2" rasterYSize="2"><GeoTransform>0,1,0,0,0,-1</GeoTransform>'
                               '<VRTRasterBand dataType="Float32" band="1"><SimpleSource><SourceFilename>'
                               "ground.asc</SourceFilename></SimpleSource></VRTRasterBand></VRTDataset>", BAD_INPUT),
                "ground.xml": ("<GDAL_WMS><Service name='TMS'><ServerUrl>http://127.0.0.1:9/</ServerUrl></Service>"
                               "</GDAL_WMS>", BAD_INPUT)}
        for name, (text, code) in rows.items():
            with open(self.path(name), "w", encoding="utf-8") as file:
                file.write(text)
            self.run_program("settings", self.project, "terrain_1=" + self.path(name), code=code)
        for name in ("/vsicurl/http://127.0.0.1:9/a.tif", "/vsizip/a.zip/a.tif", "GTIFF_DIR:1:ground.asc"):
            self.run_program("settings", self.project, "terrain_1=" + name, code=REFUSED)

    def change(self, sql, *values):
        with sqlite3.connect(self.project) as file:
            file.execute("DROP TRIGGER IF EXISTS rtree_sections_geom_update3")
            file.execute("DROP TRIGGER IF EXISTS rtree_sections_geom_update4")
            file.execute(sql, values)
        file.close()

    def test_control_characters_never_reach_a_terminal(self):
        self.change("UPDATE sections SET name = ? || substr(name, 2) WHERE fid = 1", HOSTILE)
        self.change("UPDATE sections SET SECTION_SLOPE = -1 WHERE fid = 1")
        for arguments in (["get", self.project, "length"], ["get", self.project, "length", "--format", "csv"],
                          ["get", self.project, "length", "--format", "json"], ["check", self.project],
                          ["slopes", self.project], ["get", self.project, "length", "--names", HOSTILE[:4]],
                          [HOSTILE], ["info", HOSTILE], ["export", self.project, "geojson", "-o", "-"]):
            with self.subTest(arguments=arguments):
                master, slave = pty.openpty()
                process = self.start(*arguments, stdout=slave)
                os.close(slave)
                shown = b""
                try:
                    while piece := os.read(master, 65536):
                        shown += piece
                except OSError:  # the program has closed the terminal
                    pass
                os.close(master)
                _, errors = process.communicate()
                text = shown.decode().replace("\r\n", "\n") + errors.decode()
                self.assertIsNone(HIDDEN.search(text), repr(text))

    def test_spreadsheets_run_no_names(self):
        self.change("UPDATE sections SET name = '=1+1' WHERE fid = 1")
        table = self.run_program("get", self.project, KEY, "--format", "csv").output
        self.assertIn("\n'=1+1,", table)
        with open(self.path("back.csv"), "w", encoding="utf-8") as file:
            file.write(f"name,{KEY}\n'=1+1,7\n")
        self.run_program("load", self.project, self.path("back.csv"))
        shown = self.run_program("get", self.project, KEY, "--names", "=1+1", "--format", "json").output
        self.assertEqual(json.loads(shown)[0][KEY], 7)

    def test_an_unknown_language(self):
        self.change("INSERT INTO drenova_settings (id, name, value) VALUES (100, 'language', 'xx')")
        ended = self.run_program("info", self.project)
        self.assertIn("its texts are in English", ended.errors)
        self.run_program("settings", self.project, "language=hr")
        self.assertEqual(self.run_program("info", self.project).errors, "")

    def test_without_a_home(self):
        with open(self.path("curves.txt"), "w", encoding="utf-8") as file:
            file.write("#2\n5 300\n15 180\n60 80\n")
        empty = {name: value for name, value in environment().items() if name not in ("HOME", "XDG_DATA_HOME")}
        for env in (empty, {**empty, "HOME": ""}, {**empty, "HOME": self.path("none"), "XDG_DATA_HOME": "relative"}):
            process = self.start("run", self.project, "01_WASTE_PERCENT", env=env, cwd=self.folder)
            process.communicate()
            self.assertEqual(process.returncode, DONE)
            self.assertNotIn("relative", self.names())


class Readers(Case):

    def setUp(self):
        super().setUp()
        self.project = self.generate(20)

    def test_a_save_waits_for_a_reader(self):
        reader = sqlite3.connect(self.project, isolation_level=None)
        reader.execute("BEGIN")
        reader.execute("SELECT count(*) FROM nodes").fetchall()
        process = self.start("set", self.project, f"{KEY}=1", "--all")
        line = process.stderr.readline()
        self.assertIn(b"waiting for another program", line)
        self.assertIsNone(process.poll())
        reader.execute("COMMIT")
        reader.close()
        _, errors = process.communicate()
        self.assertEqual(process.returncode, DONE, errors)
        self.assertEqual(self.mark(self.project), 1)

    def test_a_waiting_save_can_be_interrupted(self):
        before = fingerprint(self.project)  # closing the file would end the locks of this process
        reader = sqlite3.connect(self.project, isolation_level=None)
        reader.execute("BEGIN IMMEDIATE")
        process = self.start("set", self.project, f"{KEY}=1", "--all")
        process.stderr.readline()
        process.send_signal(signal.SIGINT)
        process.communicate()
        self.assertEqual(process.returncode, 130)
        reader.close()
        self.assertEqual((fingerprint(self.project), self.names()), (before, ["net.gpkg"]))

    def test_a_reader_keeps_its_state(self):
        """Whatever is saved while it reads."""
        for _ in range(10):
            readers = [self.start("info", self.project, "--json") for _ in range(3)]
            shutil.copy(self.project, self.path("copy"))
            os.replace(self.path("copy"), self.project)
            for reader in readers:
                output, errors = reader.communicate()
                self.assertEqual(reader.returncode, DONE, errors)
                self.assertEqual(json.loads(output)["sections"], 20)

    def test_a_run_twice_gives_the_same_bytes(self):
        for arguments in (["check", self.project], ["run", self.project, "01_WASTE_PERCENT"]):
            for name in ("a.gpkg", "b.gpkg"):
                process = self.start(*arguments, "--replace", "-o", self.path(name))
                process.communicate()
                self.assertEqual(process.returncode, DONE)
            self.assertEqual(fingerprint(self.path("a.gpkg")), fingerprint(self.path("b.gpkg")))


if __name__ == "__main__":
    unittest.main()
