# SPDX-License-Identifier: Apache-2.0
"""Recipe for Conan 2: conan create packaging/conan -s compiler.cppstd=20

It takes the sources from the checkout that it is a part of, and needs no remote: CMake 3.22 or newer and a compiler are
those of the machine. A profile whose compiler.cppstd is 20 or more needs no such setting.
"""

import os
import re

from conan import ConanFile
from conan.errors import ConanInvalidConfiguration
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeToolchain, cmake_layout
from conan.tools.files import copy, load, rmdir
from conan.tools.scm import Version

required_conan_version = ">=2.0"

#: The oldest compilers that the library was compiled with.
OLDEST_COMPILERS = {"gcc": "11", "clang": "14"}


class BrackwellConan(ConanFile):
    name = "brackwell"
    description = "Reads Open Financial Exchange (OFX) documents"
    license = "Apache-2.0"
    homepage = "https://brackwell.invalid"
    topics = ("ofx", "finance", "parser")
    package_type = "library"
    settings = "os", "arch", "compiler", "build_type"
    options = {"shared": [True, False], "fPIC": [True, False]}
    default_options = {"shared": False, "fPIC": True}
    implements = ["auto_shared_fpic"]

    @property
    def _checkout(self):
        return os.path.join(self.recipe_folder, "..", "..")

    def set_version(self):
        cmake_lists = load(self, os.path.join(self._checkout, "CMakeLists.txt"))
        self.version = re.search(r"project\(brackwell\s+VERSION ([\d.]+)", cmake_lists).group(1)

    def export_sources(self):
        for pattern in ("CMakeLists.txt", "LICENSE", "cmake/*", "include/*", "src/*"):
            copy(self, pattern, src=self._checkout, dst=self.export_sources_folder)

    def validate(self):
        check_min_cppstd(self, 20)
        compiler = str(self.settings.compiler)
        oldest = OLDEST_COMPILERS.get(compiler)
        if oldest and Version(self.settings.compiler.version) < oldest:
            raise ConanInvalidConfiguration(f"{self.name} needs {compiler} {oldest} or newer")
        if self.settings.os != "Windows":
            return
        if compiler != "gcc":
            raise ConanInvalidConfiguration(f"nobody has compiled {self.name} for Windows but with GCC of mingw-w64")
        if self.options.shared:
            raise ConanInvalidConfiguration(f"{self.name} is static on Windows, as nothing says what a DLL exports")

    def layout(self):
        cmake_layout(self)

    def generate(self):
        toolchain = CMakeToolchain(self)
        for part in ("TOOL", "TESTS", "BENCHMARKS"):
            toolchain.cache_variables[f"BRACKWELL_{part}"] = False
        # As the preset "release" does, since whoever installs this waits for it.
        toolchain.cache_variables["CMAKE_UNITY_BUILD"] = True
        toolchain.cache_variables["CMAKE_UNITY_BUILD_BATCH_SIZE"] = "16"
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        copy(self, "LICENSE", src=self.source_folder, dst=os.path.join(self.package_folder, "licenses"))
        CMake(self).install()
        # Conan writes its own.
        rmdir(self, os.path.join(self.package_folder, "lib", "cmake"))
        rmdir(self, os.path.join(self.package_folder, "lib", "pkgconfig"))

    def package_info(self):
        self.cpp_info.libs = ["brackwell"]
        self.cpp_info.set_property("cmake_file_name", "brackwell")
        self.cpp_info.set_property("cmake_target_name", "brackwell::brackwell")
        self.cpp_info.set_property("pkg_config_name", "brackwell")
