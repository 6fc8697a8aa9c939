# SPDX-License-Identifier: GPL-3.0-or-later
# Copyright (C) the Drenova authors
"""Runs the commands of the documentation and compares what they print.

In a block marked "console" a line that begins with "$ " is a command (a "\\" at its end joins the next line, "# exit N"
names an exit code other than 0). The lines below it are its standard output; "..." stands for any number of lines, and
a command without lines below it may print anything. Columns may be spaced otherwise, numbers differ by 1e-6.
A block below a line "`NAME`:" is a file of that name, and some command has to name it.
Each page runs in a folder of its own where data/ is the project's.
"""

import os
import pathlib
import re
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
PROGRAM = pathlib.Path(os.environ["DRENOVA_PROGRAM"])
BLOCK = re.compile(r"^```console\n(.*?)^```$", re.MULTILINE | re.DOTALL)
EXAMPLE = re.compile(r"^`([\w.-]+)`:\n\n```\w+\n(.*?)^```$", re.MULTILINE | re.DOTALL)


def commands(page):
    """Each command of the page with its exit code and its expected lines."""
    found = []
    for block in BLOCK.findall(page):
        for line in re.sub(r"\\\n *", "", block).splitlines():
            if line.startswith("$ "):
                command, _, code = line[2:].partition("# exit ")
                found.append((command.strip(), int(code or 0), []))
            else:
                found[-1][2].append(line)
    return found


def is_same(expected, printed):
    if expected == printed:
        return True
    try:
        return abs(float(expected) - float(printed)) <= 1e-6 * abs(float(expected))
    except ValueError:
        return False


def split(line):
    return re.split(r"[\s,]+", line.strip())


def matches(expected, printed):
    """Whether the printed lines are the expected ones."""
    if not expected:
        return not printed
    if expected[0] == "...":
        return any(matches(expected[1:], printed[i:]) for i in range(len(printed) + 1))
    if not printed:
        return False
    left, right = split(expected[0]), split(printed[0])
    same = len(left) == len(right) and all(map(is_same, left, right))
    return same and matches(expected[1:], printed[1:])


class Docs(unittest.TestCase):

    def test_commands(self):
        pages = [ROOT / "README.md", *sorted((ROOT / "docs").glob("*.md")), *sorted((ROOT / "data").rglob("*.md"))]
        count = 0
        for page in pages:
            with tempfile.TemporaryDirectory() as folder:
                os.symlink(ROOT / "data", os.path.join(folder, "data"))
                environment = {**os.environ, "DRENOVA_HOME": os.path.join(folder, "home"), "LC_ALL": "C.UTF-8",
                               "PATH": f"{PROGRAM.parent}:{os.environ['PATH']}"}
                text = page.read_text(encoding="utf-8")
                for name, example in EXAMPLE.findall(text):
                    pathlib.Path(folder, name).write_text(example, encoding="utf-8")
                    with self.subTest(page=page.name, example=name):
                        self.assertTrue(any(name in command.split() for command, _, _ in commands(text)))
                for command, code, expected in commands(text):
                    count += 1
                    with self.subTest(page=page.name, command=command):
                        ended = subprocess.run(["bash", "-c", command], cwd=folder, env=environment, check=False,
                                               stdin=subprocess.DEVNULL, capture_output=True, encoding="utf-8")
                        self.assertEqual(ended.returncode, code, ended.stderr)
                        if expected:
                            self.assertTrue(matches(expected, ended.stdout.splitlines()), ended.stdout)
        self.assertGreater(count, 20)


if __name__ == "__main__":
    unittest.main()
