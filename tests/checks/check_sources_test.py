# Copyright (c) 2026 the qxdraw authors
# SPDX-License-Identifier: MIT
"""Plants faults in small source trees and sees whether check_sources.py finds exactly these."""

import tempfile
import unittest
from pathlib import Path

import check_sources

HEAD = "// Copyright (c) 2026 the qxdraw authors\n// SPDX-License-Identifier: MIT\n\n"
HEADER = HEAD + "#pragma once\n\n"

UTIL, GEOMETRY = "qx/foundation/util/QxU.h", "qx/foundation/geometry/QxG.h"
DRAWING, DETAIL = "qx/drawing/QxD.h", "qx/drawing/internal/QxDetail.h"
NESTING, EVENTS, XML = "qx/nesting/QxN.h", "qx/events/QxE.h", "qx/xml/QxX.h"
DOOR = "qx/spatial/internal/IndexUpkeep.h"

# A file, what it includes, and whether that is a fault.
INCLUDES = (
    ("src/" + GEOMETRY, (UTIL,), False),
    ("src/" + NESTING, (EVENTS, DRAWING), False),
    ("src/" + XML, (NESTING,), False),
    ("src/qx/drawing/internal/QxMore.h", (DETAIL,), False),
    ("src/qx/drawing/QxD.cpp", (DOOR, EVENTS, DETAIL), False),
    ("src/qx/qxdraw.h", (UTIL, XML), False),
    ("tests/QxDTest.cpp", (DETAIL, "support/Local.h"), False),
    ("src/" + UTIL, (GEOMETRY,), True),
    ("src/qx/foundation/graph/QxA.cpp", (DRAWING,), True),
    ("src/" + DRAWING, (NESTING,), True),
    ("src/qx/events/QxE.cpp", (XML,), True),
    ("src/qx/drawing/QxD.cpp", (NESTING,), True),
    ("src/" + DRAWING, (DOOR,), True),
    ("src/qx/events/QxE.cpp", (DRAWING,), True),
    ("src/" + DRAWING, (DETAIL,), True),
    ("tools/qxdraw/main.cpp", (DETAIL,), True),
    ("src/qx/drawing/QxD.cpp", ("QxD.h",), True),
    ("src/qx/nesting/QxN.cpp", ("qx/nesting/QxGone.h",), True),
    ("src/qx/nowhere/QxY.h", (DRAWING,), True),
)


class SourceChecks(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")

    def header(self, name, *included):
        self.write(name, HEADER + "".join(f'#include "{other}"\n' for other in included))

    def faults(self, check, *arguments):
        return [fault.split(":")[0] for fault in check(self.root, *arguments)]

    def test_includes(self):
        known = (UTIL, GEOMETRY, DRAWING, DETAIL, NESTING, EVENTS, XML, DOOR)
        for name, included, is_fault in INCLUDES:
            with self.subTest(name=name, included=included):
                for other in known:
                    self.header("src/" + other)
                self.header(name, *included)
                expected = [name] if is_fault else []
                self.assertEqual(self.faults(check_sources.check_includes), expected)
                (self.root / name).unlink()
        self.header("src/" + XML)
        self.write("src/qx/xml/QxX.cpp", HEAD + f"#include <{XML}>\n#include <vector>\n")
        self.assertEqual(self.faults(check_sources.check_includes), ["src/qx/xml/QxX.cpp"])

    def test_the_library_opens_records_in_the_bracket_only(self):
        record = "QxGeometricUpdateInfo"
        opened = f"{record} own(graph, 0, 1);\n"
        self.write("src/qx/drawing/bounds/internal/Change.h", opened)
        self.write(f"src/qx/drawing/bounds/{record}.cpp", f"{record}::{record}(QxDGraph*) {{}}\n")
        self.write("tests/QxDTest.cpp", opened)
        named = f"class {record};\nvoid told({record}* own, const {record}& other);  // {opened}"
        self.write("src/qx/drawing/QxD.cpp", named)
        self.assertEqual(self.faults(check_sources.check_records), [])
        for fault in (
            opened,
            f"{record} own{{graph, 0, 1}};\n",
            f"struct Both {{\n    {record} own;\n}};\n",
            f"auto own = {record}(graph, 0, 1);\n",
            f"auto own = std::make_unique<{record}>(graph, 0, 1);\n",
            f"using Info = {record};\nInfo own(graph, 0, 1);\n",
        ):
            self.write("src/qx/drawing/QxD.cpp", named + fault)
            self.assertEqual(len(self.faults(check_sources.check_records)), 1, fault)

    def test_umbrella_is_complete_and_sorted(self):
        names = ("qx/drawing/QxA.h", "qx/drawing/QxB.h", DETAIL)
        self.assertEqual(len(self.faults(check_sources.check_umbrella)), 1)
        for name in names:
            self.header("src/" + name)
        for order, faults in (((0, 1), 0), ((0,), 1), ((1, 0), 1), ((0, 1, 2), 1), ((0, 0, 1), 1)):
            self.header("src/qx/qxdraw.h", *(names[i] for i in order))
            self.assertEqual(len(self.faults(check_sources.check_umbrella)), faults, order)

    def test_licence_head_and_pragma(self):
        script = HEAD.replace("//", "#")
        self.write("CMakeLists.txt", script)
        self.write(".ci/run", "#!/bin/sh\n" + script)
        self.header("src/qx/drawing/QxA.h")
        self.assertEqual(self.faults(check_sources.check_heads), [])
        bad = {"src/qx/drawing/QxA.h": HEAD, "tests/QxATest.cpp": "", "run.sh": "#!/bin/sh\n"}
        for name, text in bad.items():
            self.write(name, text + "echo\n")
        self.assertEqual(self.faults(check_sources.check_heads), list(bad))

    def test_program_and_output_in_the_readme_are_the_real_ones(self):
        self.write("examples/first_drawing.cpp", HEAD + "int main() {}\n")
        self.write("README.md", "```cpp\nint main() {}\n```\n\n```text\nhello\n```\n")
        for name, faults in (("hello", 0), ("bye", 1), ("hello; exit 3", 1)):
            self.write("program", f"#!/bin/sh\necho {name}\n")
            (self.root / "program").chmod(0o755)
            found = self.faults(check_sources.check_output, self.root / "program")
            self.assertEqual(len(found), faults, name)
        self.assertEqual(self.faults(check_sources.check_readme), [])
        self.write("examples/first_drawing.cpp", HEAD + "int main() { return 1; }\n")
        self.assertEqual(self.faults(check_sources.check_readme), ["README.md"])


if __name__ == "__main__":
    unittest.main()
