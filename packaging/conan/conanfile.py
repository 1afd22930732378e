"""The Conan recipe of ZephyrConsole. It builds the tree that it is in."""

import pathlib
import re

from conan import ConanFile
from conan.tools.cmake import CMake, CMakeDeps, CMakeToolchain, cmake_layout
from conan.tools.files import copy

ROOT = pathlib.Path(__file__).resolve().parents[2]


class ZephyrConsole(ConanFile):
    """Libraries and zephyr-attach; a program finds them by the CMake package that comes with them."""

    name = "zephyrconsole"
    description = "An in-application command console for desktop simulations"
    license = "MIT"
    package_type = "library"
    settings = "os", "arch", "compiler", "build_type"
    options = {"shared": [True, False]}
    default_options = {"shared": True, "qt/*:qtdeclarative": True}  # without which there is no library for Qt Quick

    def set_version(self):
        text = (ROOT / "CMakeLists.txt").read_text(encoding="utf-8")
        self.version = re.search(r"project\(ZephyrConsole VERSION ([0-9.]+)", text).group(1)

    def export_sources(self):
        for pattern in ("CMakeLists.txt", "LICENSE", "*.md", "cmake/*", "common/*", "include/*", "src/*", "commands/*",
                        "remote/*", "qt/*", "opengl/*", "widgets/*", "quick/*", "docs/*", "examples/minimal/*"):
            copy(self, pattern, ROOT, self.export_sources_folder, excludes="build/*")

    def requirements(self):
        self.requires("qt/[>=6.4 <7]", transitive_headers=True)
        self.requires("glm/[>=0.9.9]", transitive_headers=True)

    def layout(self):
        cmake_layout(self)

    def generate(self):
        CMakeDeps(self).generate()
        toolchain = CMakeToolchain(self)
        toolchain.cache_variables["ZEPHYR_CONSOLE_BUILD_TESTS"] = False
        toolchain.cache_variables["ZEPHYR_CONSOLE_BUILD_EXAMPLES"] = False
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()
        copy(self, "LICENSE", self.source_folder, pathlib.Path(self.package_folder) / "licenses")

    def package_info(self):
        self.cpp_info.set_property("cmake_find_mode", "none")  # the package's own config files are found
        self.cpp_info.builddirs = ["lib/cmake"]
