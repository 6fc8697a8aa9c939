# SPDX-License-Identifier: GPL-3.0-or-later
# Copyright (C) the Drenova authors
"""Plants breaches of the house rules in small trees and expects scripts/house-rules to report exactly those.

Forbidden words are joined from pieces here, as in the script.
"""

import os
import subprocess
import sys
import tempfile
import unittest

SCRIPT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "scripts", "house-rules")
HEAD = "// SPDX-License-Identifier: GPL-3.0-or-later\n// Copyright (C) the Drenova authors\n"  # lines 1 and 2

# A tree that keeps every rule, near misses included. Planted files are laid over it.
CLEAN = {
    "host/gis_core/DataBox.h": HEAD + "#include <string>\n",
    "host/gis_core/InstallationPaths.cpp": HEAD + "std::ifstream input(path);\n",
    "host/network_core/Section.h": HEAD + '#include "host/gis_core/DataBox.h"\n',
    "host/workspace_core/Log.h": HEAD + '#include "host/network_core/Section.h"\n',
    "flow/FlowKeys.h": HEAD + '#include "host/network_core/Section.h"\n',
    "waste/Waste.cpp": HEAD + '#include "flow/FlowKeys.h"\n// unlike atof(text), and never std::ofstream\n'
                              'auto text = "fopen(x)";\n'
                              'auto one = fmt::sprintf("%d", 1);\n/* sscanf(\n */ int part = 1;\n',
    "structures/DlgSBW_Draw.h": HEAD + "#include <QDialog>\n",
    "rain/editions/DlgCoefficients.cpp": HEAD + '#include <QtWidgets/QDialog>\n#include "host/desktop/PictureBox.h"\n',
    "apps/workspace/Main.cpp": HEAD + "#include <QApplication>\n",
    "host/desktop/PictureBox.h": HEAD + "#include <QWidget>\n",
    "host/project_io/base/Failure.h": HEAD,
    "host/project_io/store/Rows.h": HEAD + '#include "host/project_io/base/Failure.h"\n',
    "host/project_io/ProjectIo.cpp": HEAD + '#include "host/project_io/store/Rows.h"\n',
    "plugin/Queue.h": HEAD + "#include <Queue.h>\n",
    "tests/waste/Waste_test.cpp": HEAD + '#include "waste/Waste.h"\n#include <QTest>\ndouble x = atof("1");\n',
    "waste/Waste.h": HEAD,
    "docs/notes.md": "An inspector takes part in 3 of the works; special networks; the tmp folder.\n",
}

# name: (planted files, what the lines of the report have to begin with, in any order)
BREACHES = {
    "higher floor": ({"host/gis_core/Up.h": HEAD + '#include "host/network_core/Section.h"\n'},
                     ["host/gis_core/Up.h:3: host/gis_core may not include host/network_core",
                      # that closes a circle with Section.h as well
                      "host/gis_core/Up.h:3: host/gis_core includes host/network_core on a circle",
                      "host/network_core/Section.h:3: host/network_core includes host/gis_core on a circle"]),
    "rightwards": ({"flow/Right.cpp": HEAD + '\n  #  include "plugin/Queue.h"\n'},
                   ["flow/Right.cpp:4: flow may not include plugin"]),
    "a room to its right": ({"host/project_io/base/Up.h": HEAD + '#include "host/project_io/store/Rows.h"\n'},
                            ["host/project_io/base/Up.h:3: the room base of host/project_io may not include"]),
    "a room includes what is beside the rooms": (
        {"host/project_io/ProjectIo.h": HEAD,
         "host/project_io/store/Down.cpp": HEAD + '#include "host/project_io/ProjectIo.h"\n'},
        ["host/project_io/store/Down.cpp:3: the room store of host/project_io may not include"]),
    "no room": ({"host/project_io/misc/A.h": HEAD}, ["host/project_io/misc/A.h:1: misc is no room"]),
    "host knows the module": ({"host/sewage_calculations/Run.cpp": HEAD + '#include "waste/Waste.h"\n'},
                              ["host/sewage_calculations/Run.cpp:3: host/sewage_calculations may not include waste"]),
    "folder on no floor": ({"host/misc/A.h": HEAD, "plugin/B.cpp": HEAD + '#include "host/misc/A.h"\n'},
                           ["plugin/B.cpp:3: host/misc is on no floor"]),
    "product includes tests": ({"tests/support/S.h": HEAD, "rain/R.cpp": HEAD + '#include "tests/support/S.h"\n'},
                               ["rain/R.cpp:3: tests/support is on no floor"]),
    "not from the root": ({"waste/Near.cpp": HEAD + '#include "Waste.h"\n'},
                          ['waste/Near.cpp:3: "Waste.h" is no file']),
    "circle": ({"tests/a/A.h": HEAD + '#include "tests/b/B.h"\n', "tests/b/B.h": HEAD + '#include "tests/c/C.h"\n',
                "tests/c/C.h": HEAD + '#include "tests/a/A.h"\n#include "waste/Waste.h"\n'},
               ["tests/a/A.h:3: tests/a includes tests/b on a circle", "tests/b/B.h:3: tests/b includes tests/c on a",
                "tests/c/C.h:3: tests/c includes tests/a on a circle"]),
    "Qt in a calculator": ({"rain/Walk.cpp": HEAD + "#include <QString>\n"}, ["rain/Walk.cpp:3: QString is Qt"]),
    "Qt in a library": ({"host/cad_wrapper/Dlg.h": HEAD + "#include <QtCore/QObject>\n"},
                        ["host/cad_wrapper/Dlg.h:3: QtCore/QObject is Qt"]),
    "Qt beside the dialogs": ({"structures/SBW_Draw.cpp": HEAD + "#include <QDialog>\n",
                               "plugin/MyDlg.h": HEAD + '#include "moc_Panel.cpp"\n'},
                              ["structures/SBW_Draw.cpp:3: QDialog is Qt", "plugin/MyDlg.h:3: moc_Panel.cpp is Qt"]),
    "Qt in the command line": ({"apps/cli/Main.cpp": HEAD + "#include <QApplication>\n"},
                               ["apps/cli/Main.cpp:3: QApplication is Qt"]),
    "file streams": ({"rain/Curves.cpp": HEAD + "std::ifstream a;\nstd::ofstream b;\nauto c = std::fopen(p, m);\n"},
                     [f"rain/Curves.cpp:{line}: " for line in (3, 4, 5)]),
    "file system": ({"flow/F.cpp": HEAD + "std::filesystem::remove(p);\nfs::create_directories(p);\n::open(p, 0);\n"},
                    [f"flow/F.cpp:{line}: " for line in (3, 4, 5)]),
    "beside the adapter": ({"host/gis_core/Paths.cpp": HEAD + "std::ifstream a;\n"}, ["host/gis_core/Paths.cpp:3: "]),
    "databases": ({"analysis/A.cpp": HEAD + "sqlite3_open_v2(p, &d, 0, 0);\nGDALOpenEx(p, 0, 0, 0, 0);\n"},
                  [f"analysis/A.cpp:{line}: " for line in (3, 4)]),
    "locale": ({"host/project_io/N.cpp": HEAD + "std::stod(t);\nstrtod(t, 0);\natof(t);\nstd::sscanf(t, f);\n"
                                                "setlocale(LC_ALL, n);\nstd::snprintf(b, 9, f);\n"},
               [f"host/project_io/N.cpp:{line}: " for line in range(3, 9)]),
    "after a comment": ({"flow/C.cpp": HEAD + "/* one\ntwo */ auto s = \"//\"; atof(s); // three\n"},
                        ["flow/C.cpp:4: atof follows the locale"]),
    "no head": ({"flow/H.h": "\n" + HEAD, "flow/I.h": HEAD.splitlines()[0] + "\n", "flow/J.cpp": ""},
                ["flow/H.h:1: ", "flow/I.h:2: ", "flow/J.cpp:1: "]),
    "too long": ({"flow/Long.cpp": HEAD + "\n" * 599, "flow/Full.cpp": HEAD + "\n" * 598},
                 ["flow/Long.cpp:601: 601 lines"]),
    "words": ({"docs/w.md": "\nthe Spe" "cification\nsee spe" "c.md\nPart " "3.1\nsub" "system 4\nissue" " 2 of it\n"},
              [f"docs/w.md:{line}: " for line in range(2, 7)]),
    "machine and hosts": ({"cmake/m.cmake": "set(A /wo" "rk/x)\n# /ro" "ot/x\n# py" "pi.org\n# deb." "debian.org\n"},
                          [f"cmake/m.cmake:{line}: " for line in range(1, 5)]),
    "guide": ({"docs/where-to-look.md": "| `flow/`, `flow/Flow` | `CNode` |\n| `flow/Gone` |\n"},
              ["docs/where-to-look.md:2: flow/Gone is neither"]),
    "file name": ({"docs/Net_Spe" "cification.bin": "\0"}, ["docs/Net_Spe" "cification.bin:1: the file name"]),
}


def lay(root, files):
    for path, text in files.items():
        full = os.path.join(root, path)
        os.makedirs(os.path.dirname(full), exist_ok=True)
        with open(full, "w", encoding="utf-8") as file:
            file.write(text)


def run(root):
    done = subprocess.run([sys.executable, "-B", SCRIPT, root], capture_output=True, text=True, check=False)
    return done.returncode, done.stdout.splitlines()


class HouseRules(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)

    def tree(self, name, files):
        root = os.path.join(self.folder.name, name.replace(" ", "_"))
        lay(root, CLEAN)
        lay(root, files)
        return root

    def test_clean_tree_has_no_breach(self):
        self.assertEqual(run(self.tree("clean", {})), (0, []))

    def test_each_breach_is_reported_and_nothing_else(self):
        for name, (files, expected) in BREACHES.items():
            with self.subTest(name):
                code, lines = run(self.tree(name, files))
                self.assertEqual(code, 1)
                self.assertEqual(len(lines), len(expected), lines)
                for start in expected:
                    self.assertTrue(any(line.startswith(start) for line in lines), f"{start} not in {lines}")

    def test_version_control_decides_what_belongs(self):
        breach = HEAD + "#include <QString>\n"
        root = self.tree("clone", {"flow/Tracked.cpp": breach, "flow/New.cpp": breach, "flow/Left.cpp": breach,
                                   ".gitignore": "Left.cpp\n"})
        subprocess.run(["git", "-C", root, "init", "-q"], check=True)
        subprocess.run(["git", "-C", root, "add", "flow/Tracked.cpp", "flow/Left.cpp", "-f"], check=True)
        subprocess.run(["git", "-C", root, "rm", "-q", "--cached", "flow/Left.cpp"], check=True)
        self.assertEqual([line.split(":")[0] for line in run(root)[1]], ["flow/New.cpp", "flow/Tracked.cpp"])


if __name__ == "__main__":
    unittest.main()
