#!/usr/bin/env python3
# Copyright (c) 2026 the qxdraw authors
# SPDX-License-Identifier: MIT
"""Checks of the source tree that no compiler makes. Each prints one line per fault.

heads            every file opens with the licence head; headers with #pragma once after it
includes         include directions between the layers; internal headers stay inside
records          update records are constructed in the bracket of changes only, and for selections
umbrella         qx/qxdraw.h includes every public header, in sorted order
readme           the first program in README.md is examples/first_drawing.cpp
output PROGRAM   PROGRAM prints what README.md says that it prints
format PROGRAM   clang-format would change nothing (exit code 77 when it is not version 14)
"""

import argparse
import re
import subprocess
import sys
from pathlib import Path

CODE_FOLDERS = ("src", "tools", "tests", "bench", "examples")
HEAD = ("Copyright (c) 2026 the qxdraw authors", "SPDX-License-Identifier: MIT")

# A file includes headers of its own layer and of layers below it. What a source of the drawing layer
# needs of the subsystems above it goes through their doors, and through nothing else.
LAYERS = {
    "foundation/util": 0,
    "foundation/geometry": 1,
    "foundation/graph": 2,
    "events": 3,
    "drawing": 4,
    "nesting": 5,
    "update": 5,
    "spatial": 5,
    "xml": 6,
    "layout": 6,
    "automation": 7,
}
DOORS = {
    "qx/nesting/internal/MetaEdgeUpkeep.h",
    "qx/spatial/internal/IndexUpkeep.h",
    "qx/update/internal/MoveReactions.h",
}
# The class of update records, and where the library constructs one: in the bracket of changes, and
# for a move of a selection, whose records stay open over several changes.
RECORD = "QxGeometricUpdateInfo"
RECORD_FILES = {
    "qx/drawing/bounds/internal/Change.h",
    f"qx/drawing/{RECORD}.h",
    f"qx/drawing/bounds/{RECORD}.cpp",
    "qx/update/QxAffectedObjectInfo.cpp",
    "qx/update/internal/AffectedState.h",
}
UMBRELLA = "qx/qxdraw.h"
SKIPPED = 77

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def files_below(root, folders, *patterns):
    """The files of these folders that match a pattern, sorted."""
    found = set()
    for folder in folders:
        for pattern in patterns:
            found.update((root / folder).rglob(pattern))
    return sorted(found)


def includes_of(path):
    """(line number, is in quotes, name) of every #include of a file."""
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), start=1):
        match = INCLUDE.match(line)
        if match:
            yield number, match.group(1) == '"', match.group(2)


def layer_of(name):
    """The layer of "qx/<folder>/.../File.h"; None outside the known folders."""
    for folder, layer in LAYERS.items():
        if name.startswith(f"qx/{folder}/"):
            return layer
    return None


def check_heads(root):
    for path in files_below(root, CODE_FOLDERS, "*.h", "*.cpp"):
        lines = path.read_text(encoding="utf-8").splitlines()
        if lines[:2] != [f"// {text}" for text in HEAD]:
            yield f"{path.relative_to(root)}:1: the licence head is missing"
        if path.suffix == ".h" and lines[2:4] != ["", "#pragma once"]:
            yield f"{path.relative_to(root)}:4: #pragma once does not follow the licence head"
    patterns = ("*.py", "*.sh", "CMakeLists.txt", "*.cmake", "*.in")
    scripts = files_below(root, CODE_FOLDERS + ("cmake",), *patterns)
    scripts += [*sorted(root.glob("*.sh")), root / "CMakeLists.txt", root / ".ci" / "run"]
    for path in scripts:
        lines = path.read_text(encoding="utf-8").splitlines()
        lines = lines[1:] if lines and lines[0].startswith("#!") else lines
        if lines[:2] != [f"# {text}" for text in HEAD]:
            yield f"{path.relative_to(root)}:1: the licence head is missing"


def include_fault(root, path, quoted, name):
    """What is wrong with including `name` in the file `path`, or None."""
    inside = path.is_relative_to(root / "src")
    internal = "/internal/" in name
    if name.startswith("qx/"):
        if not quoted:
            return f'<{name}> has to be written "{name}"'
        if not (root / "src" / name).is_file():
            return f'"{name}" does not exist'
    if not inside:
        top = path.relative_to(root).parts[0]
        if internal and top not in ("tests", "bench"):
            return f'"{name}" is internal to the library'
        return None
    if not name.startswith("qx/"):
        return f'"{name}" has to be written from the root: "qx/..."' if quoted else None

    own_name = path.relative_to(root / "src").as_posix()
    is_header = path.suffix == ".h"
    if internal and is_header and "/internal/" not in own_name:
        return f'a public header includes "{name}", which is not installed'
    if own_name == UMBRELLA:
        return None
    own, other = layer_of(own_name), layer_of(name)
    if own is None:
        return "the file is in no known layer"
    if other is None:
        return f'"{name}" is in no known layer'
    through_door = not is_header and own == LAYERS["drawing"] and name in DOORS
    return f'"{name}" is in a layer above this file' if other > own and not through_door else None


def check_includes(root):
    for path in files_below(root, CODE_FOLDERS, "*.h", "*.cpp"):
        for number, quoted, name in includes_of(path):
            fault = include_fault(root, path, quoted, name)
            if fault:
                yield f"{path.relative_to(root)}:{number}: {fault}"


def check_records(root):
    for path in files_below(root / "src", ["qx"], "*.h", "*.cpp"):
        if path.relative_to(root / "src").as_posix() in RECORD_FILES:
            continue
        text = path.read_text(encoding="utf-8")
        aliases = re.findall(rf"\busing\s+(\w+)\s*=\s*{RECORD}\s*;", text)
        name = rf"\b(?:{'|'.join([RECORD, *aliases])})"
        constructed = re.compile(rf"{name}(?:\s+\w+)?\s*[({{]|{name}\s+\w+\s*;|<\s*{name}\s*>")
        for number, line in enumerate(text.splitlines(), start=1):
            if constructed.search(line.split("//")[0]):
                yield (
                    f"{path.relative_to(root)}:{number}: a change opens its own record;"
                    " run it through qx::internal::Change"
                )


def check_umbrella(root):
    source = root / "src"
    public = [path.relative_to(source).as_posix() for path in files_below(source, ["qx"], "*.h")]
    public = {name for name in public if "/internal/" not in name and name != UMBRELLA}
    if not (source / UMBRELLA).is_file():
        yield f"src/{UMBRELLA}: is missing"
        return
    included = [name for _, _, name in includes_of(source / UMBRELLA)]
    for name in sorted(public - set(included)):
        yield f"src/{UMBRELLA}: {name} is missing"
    for name in sorted(set(included) - public):
        yield f"src/{UMBRELLA}: {name} is not a public header"
    if included != sorted(set(included)):
        yield f"src/{UMBRELLA}: the lines are not sorted, or one stands there twice"


def readme_block(root, language):
    """The first code block of README.md in a language; None when there is none."""
    text = (root / "README.md").read_text(encoding="utf-8")
    match = re.search(rf"^```{language}\n(.*?)^```$", text, re.MULTILINE | re.DOTALL)
    return match.group(1) if match else None


def check_readme(root):
    example = (root / "examples" / "first_drawing.cpp").read_text(encoding="utf-8")
    without_head = "".join(example.splitlines(keepends=True)[len(HEAD) + 1 :])
    if readme_block(root, "cpp") != without_head:
        yield "README.md: the program is not the one in examples/first_drawing.cpp"


def check_output(root, program):
    result = subprocess.run([program], stdout=subprocess.PIPE, text=True, check=False)
    if result.returncode != 0:
        yield f"{program}: exit code {result.returncode}"
    expected = readme_block(root, "text")
    if result.stdout != expected:
        yield f"README.md: says that the program prints\n{expected}but it prints\n{result.stdout}"


def check_format(root, program):
    try:
        version = subprocess.run([program, "--version"], capture_output=True, text=True, check=True)
    except OSError:
        version = None
    if version is None or "version 14." not in version.stdout:
        print(f"{program} is not clang-format 14: formatting is not checked")
        sys.exit(SKIPPED)
    paths = [str(path) for path in files_below(root, CODE_FOLDERS, "*.h", "*.cpp")]
    if subprocess.run([program, "--dry-run", "-Werror", *paths], cwd=root, check=False).returncode:
        yield "clang-format -i would change these files"


CHECKS = {
    "heads": check_heads,
    "includes": check_includes,
    "records": check_records,
    "umbrella": check_umbrella,
    "readme": check_readme,
    "output": check_output,
    "format": check_format,
}


def main():
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("--root", type=Path, required=True, help="the root of the source tree")
    parser.add_argument("check", choices=CHECKS)
    parser.add_argument("program", nargs="*")
    arguments = parser.parse_args()
    faults = list(CHECKS[arguments.check](arguments.root.resolve(), *arguments.program))
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
