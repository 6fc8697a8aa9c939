# SPDX-License-Identifier: GPL-3.0-or-later
# Copyright (C) the Drenova authors
"""Names and paths in every script, and locales that write numbers in another way."""

import json
import os
import shutil
import subprocess
import unittest

from support import Case, environment, fingerprint

NAMES = ["Šaht Čakovec-1", "東京", "Ľúbica 😀", "Хасково", "O'Brien \"x\"", "-1,5;%s", "e\u0301\u200b"]
FOLDER = "Čakovec 東京 😀 'a' \"b\" %41 ?c#d"


def exchange_text(names):
    """A line of nodes with these names, sections named after their starts."""
    features = [{"layer": "node", "name": name, "TERRAIN_1": 100.5 - place} for place, name in enumerate(names)]
    features += [{"layer": "section", "name": f"{a} →", "from": a, "to": b, "length": 12.25,
                  "LEVEL_LINE_0": 98.75 - place, "LEVEL_LINE_1": 98.5 - place, "SECTION_SLOPE": 20.5}
                 for place, (a, b) in enumerate(zip(names, names[1:]))]
    return json.dumps({"type": "FeatureCollection", "features": [
        {"type": "Feature", "geometry": None, "properties": properties} for properties in features]}, ensure_ascii=False)


def comma_locale(folder):
    """The environment of a user who writes 1,5, where such a locale can be had."""
    installed = subprocess.run(["locale", "-a"], capture_output=True, check=False).stdout.decode().lower().split()
    if "de_de.utf8" in installed:
        return environment(LC_ALL="de_DE.UTF-8")
    if shutil.which("localedef") is not None:
        place = os.path.join(folder, "locales")
        os.mkdir(place)
        made = subprocess.run(["localedef", "-i", "de_DE", "-f", "UTF-8", os.path.join(place, "de_DE.UTF-8")],
                              capture_output=True, check=False)
        if made.returncode == 0:
            # The C library keeps the list of such a path for good: not a leak of the program.
            options = "detect_leaks=0:" + os.environ.get("ASAN_OPTIONS", "").replace("detect_leaks=1", "")
            return environment(LC_ALL="de_DE.UTF-8", LOCPATH=place, ASAN_OPTIONS=options.strip(":"))
    return environment(LC_ALL="C.UTF-8")


class Places(Case):

    def make(self, folder, **options):
        """A project of the names in a folder, everything that can be read of it, and its bytes."""
        os.mkdir(self.path(folder))
        project = os.path.join(self.path(folder), "Mreža №1.gpkg")
        source = os.path.join(self.path(folder), "izvor ž.geojson")
        with open(source, "w", encoding="utf-8") as file:
            file.write(exchange_text(NAMES))
        read = [self.run_program("import", source, "-o", project, **options),
                self.run_program("set", project, "FLOW_USER=1.5", "--names", f"{NAMES[1]} →", **options),
                self.run_program("slopes", project, **options),
                self.run_program("check", project, "--format", "json", **options),
                self.run_program("run", project, "01_WASTE_PERCENT", "PRIRAST=2.5", **options),
                *(self.run_program("get", project, "FLOW_USER", "length", "FLOW_WASTE_PER", "--format", kind, **options)
                  for kind in ("table", "csv", "json")),
                self.run_program("get", project, "TERRAIN_1", "--on", "nodes", "--format", "json", **options),
                self.run_program("form", project, "01_WASTE_PERCENT", "--json", **options),
                self.run_program("export", project, "geojson", "-o", "-", **options)]
        return project, [ended.output.replace(self.path(folder), "") for ended in read]

    def test_names_and_paths_in_every_script(self):
        project, read = self.make(FOLDER)
        nodes = json.loads(read[-3])
        self.assertEqual([node["name"] for node in nodes], NAMES)
        listed = json.loads(read[-4])
        self.assertEqual([section["name"] for section in listed], [f"{name} →" for name in NAMES[:-1]])
        self.assertEqual([section["FLOW_USER"] for section in listed], [None, 1.5, None, None, None, None])
        again = self.path("ponovo.gpkg")
        self.run_program("import", "-", "--format", "geojson", "-o", again, feed=read[-1].encode())
        self.assertEqual(self.run_program("export", again, "geojson", "-o", "-").output, read[-1])
        names = os.listdir(os.path.dirname(project))
        self.assertEqual(sorted(names), ["Mreža №1.gpkg", "izvor ž.geojson"])

    def test_every_locale_gives_the_same(self):
        plain, expected = self.make("plain")
        comma, read = self.make("comma", env=comma_locale(self.folder))
        self.assertEqual(read, expected)
        self.assertEqual(fingerprint(comma), fingerprint(plain))


if __name__ == "__main__":
    unittest.main()
