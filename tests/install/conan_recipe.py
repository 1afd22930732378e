"""Loads the Conan recipe with modules that stand for Conan's, and checks what it says of itself:
conan_recipe.py SOURCES VERSION
"""

import pathlib
import runpy
import sys
import types

sources, version = pathlib.Path(sys.argv[1]), sys.argv[2]
copied = []


def module(name, **members):
    sys.modules[name] = types.ModuleType(name)
    vars(sys.modules[name]).update(members)


def copy(recipe, pattern, source, target, excludes=None):
    assert any(pathlib.Path(source).glob(pattern)), f"no file is like {pattern}"
    copied.append(pattern)


module("conan", ConanFile=type("ConanFile", (), {"export_sources_folder": "exported"}))
module("conan.tools")
module("conan.tools.cmake", CMake=None, CMakeDeps=None, CMakeToolchain=None, cmake_layout=None)
module("conan.tools.files", copy=copy)
recipe = runpy.run_path(str(sources / "packaging/conan/conanfile.py"))["ZephyrConsole"]()
recipe.set_version()
assert recipe.version == version, f"the recipe is of version {recipe.version}, not {version}"

assert recipe.default_options["qt/*:qtdeclarative"], "the library for Qt Quick is left out, without a word"

recipe.export_sources()
needed = {line.split("(")[1].split(")")[0] for line in (sources / "CMakeLists.txt").read_text().splitlines()
          if line.startswith("add_subdirectory(")}
assert needed and needed <= {pattern.split("/")[0] for pattern in copied}, f"{needed} needs more than {copied}"
