# Copyright (c) 2026 the qxdraw authors
# SPDX-License-Identifier: MIT
"""Plants faults in small source trees and sees whether check_sources.py finds exactly these."""

import tempfile
import unittest
from pathlib import Path

import check_sources

HEAD = "// Copyright (c) 2026 the qxdraw authors\n// SPDX-License-Identifier: MIT\n\n"
HEADER = HEAD + "#pragma once\n\n"


class TreeTest(unittest.TestCase):
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


class IncludesTest(TreeTest):
    def setUp(self):
        super().setUp()
        for name in (
            "foundation/util/QxU.h",
            "foundation/geometry/QxG.h",
            "foundation/graph/QxA.h",
            "drawing/QxD.h",
            "drawing/internal/QxDetail.h",
            "nesting/QxN.h",
            "events/QxE.h",
            "xml/QxX.h",
        ):
            self.header(f"src/qx/{name}")

    def faults(self):
        return [fault.split(":")[0] for fault in check_sources.check_includes(self.root)]

    def test_downward_and_sideways_is_fine(self):
        self.header("src/qx/foundation/geometry/QxG.h", "qx/foundation/util/QxU.h")
        self.header("src/qx/nesting/QxN.h", "qx/events/QxE.h", "qx/drawing/QxD.h")
        self.header("src/qx/xml/QxX.h", "qx/nesting/QxN.h")
        self.header("src/qx/drawing/internal/QxMore.h", "qx/drawing/internal/QxDetail.h")
        self.header("tests/QxDTest.cpp", "qx/drawing/internal/QxDetail.h", "support/Local.h")
        self.assertEqual(self.faults(), [])

    def test_upward_is_a_fault(self):
        self.header("src/qx/foundation/util/QxU.h", "qx/foundation/geometry/QxG.h")
        self.header("src/qx/foundation/graph/QxA.cpp", "qx/drawing/QxD.h")
        self.header("src/qx/drawing/QxD.h", "qx/nesting/QxN.h")
        self.header("src/qx/events/QxE.cpp", "qx/xml/QxX.h")
        self.assertEqual(
            self.faults(),
            [
                "src/qx/drawing/QxD.h",
                "src/qx/events/QxE.cpp",
                "src/qx/foundation/graph/QxA.cpp",
                "src/qx/foundation/util/QxU.h",
            ],
        )

    def test_drawing_sources_reach_up_through_the_doors_only(self):
        door = "qx/spatial/internal/IndexUpkeep.h"
        self.header(f"src/{door}", "qx/drawing/QxD.h")
        self.header("src/qx/drawing/QxD.cpp", door, "qx/events/QxE.h")
        self.assertEqual(self.faults(), [])
        self.header("src/qx/drawing/internal/QxDetail.h", door)
        self.assertEqual(self.faults(), ["src/qx/drawing/internal/QxDetail.h"])
        self.header("src/qx/drawing/internal/QxDetail.h")
        self.header("src/qx/drawing/QxD.cpp", "qx/nesting/QxN.h")
        self.assertEqual(self.faults(), ["src/qx/drawing/QxD.cpp"])

    def test_internal_headers_stay_inside(self):
        self.header("src/qx/drawing/QxD.h", "qx/drawing/internal/QxDetail.h")
        self.header("tools/qxdraw/main.cpp", "qx/drawing/internal/QxDetail.h")
        self.header("src/qx/drawing/QxD.cpp", "qx/drawing/internal/QxDetail.h")
        self.assertEqual(self.faults(), ["src/qx/drawing/QxD.h", "tools/qxdraw/main.cpp"])

    def test_every_include_starts_at_the_root_and_exists(self):
        self.header("src/qx/drawing/QxD.cpp", "QxD.h")
        self.header("src/qx/nesting/QxN.cpp", "qx/nesting/QxGone.h")
        self.write("src/qx/xml/QxX.cpp", HEAD + "#include <qx/xml/QxX.h>\n#include <vector>\n")
        self.header("src/qx/nowhere/QxY.h", "qx/drawing/QxD.h")
        self.assertEqual(len(self.faults()), 4)


class RecordsTest(TreeTest):
    def test_the_library_opens_records_in_the_bracket_only(self):
        record = "QxGeometricUpdateInfo"
        opened = f"{record} own(graph, 0, 1);\n"
        self.write("src/qx/drawing/bounds/internal/Change.h", opened)
        self.write(f"src/qx/drawing/bounds/{record}.cpp", f"{record}::{record}(QxDGraph*) {{}}\n")
        self.write("tests/QxDTest.cpp", opened)
        named = f"class {record};\nvoid told({record}* own, const {record}& other);  // {opened}"
        self.write("src/qx/drawing/QxD.cpp", named)
        self.assertEqual(list(check_sources.check_records(self.root)), [])
        for fault in (
            opened,
            f"{record} own{{graph, 0, 1}};\n",
            f"struct Both {{\n    {record} own;\n}};\n",
            f"auto own = {record}(graph, 0, 1);\n",
            f"auto own = std::make_unique<{record}>(graph, 0, 1);\n",
            f"using Info = {record};\nInfo own(graph, 0, 1);\n",
        ):
            self.write("src/qx/drawing/QxD.cpp", named + fault)
            self.assertEqual(len(list(check_sources.check_records(self.root))), 1, fault)


class UmbrellaTest(TreeTest):
    def faults(self, *included):
        self.header("src/qx/drawing/QxA.h")
        self.header("src/qx/drawing/QxB.h")
        self.header("src/qx/drawing/internal/QxDetail.h")
        self.header("src/qx/qxdraw.h", *(f"qx/drawing/{name}" for name in included))
        return list(check_sources.check_umbrella(self.root))

    def test_complete_and_sorted(self):
        self.assertEqual(self.faults("QxA.h", "QxB.h"), [])
        self.assertEqual(len(self.faults("QxA.h")), 1)
        self.assertEqual(len(self.faults("QxB.h", "QxA.h")), 1)
        self.assertEqual(len(self.faults("QxA.h", "QxB.h", "internal/QxDetail.h")), 1)


class HeadsTest(TreeTest):
    def test_licence_head_and_pragma(self):
        script = HEAD.replace("//", "#")
        self.write("CMakeLists.txt", script)
        self.write(".ci/run", "#!/bin/sh\n" + script)
        self.header("src/qx/drawing/QxA.h")
        self.assertEqual(list(check_sources.check_heads(self.root)), [])
        self.write("src/qx/drawing/QxA.h", HEAD + "class QxA;\n")
        self.write("tests/QxATest.cpp", "int i;\n")
        self.write("run.sh", "#!/bin/sh\necho\n")
        self.assertEqual(len(list(check_sources.check_heads(self.root))), 3)


class ReadmeTest(TreeTest):
    def test_program_and_output_are_the_real_ones(self):
        self.write("examples/first_drawing.cpp", HEAD + "int main() {}\n")
        self.write("README.md", "```cpp\nint main() {}\n```\n\n```text\nhello\n```\n")
        self.write("hello", "#!/bin/sh\necho hello\n")
        self.write("bye", "#!/bin/sh\necho bye\n")
        for name in ("hello", "bye"):
            (self.root / name).chmod(0o755)
        self.assertEqual(list(check_sources.check_readme(self.root)), [])
        self.assertEqual(list(check_sources.check_output(self.root, self.root / "hello")), [])
        self.assertEqual(len(list(check_sources.check_output(self.root, self.root / "bye"))), 1)
        self.write("examples/first_drawing.cpp", HEAD + "int main() { return 1; }\n")
        self.assertEqual(len(list(check_sources.check_readme(self.root))), 1)


if __name__ == "__main__":
    unittest.main()
