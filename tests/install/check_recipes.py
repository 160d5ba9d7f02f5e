# SPDX-License-Identifier: Apache-2.0
"""Fails unless the recipes for other package managers can be read and have the version of the project.

Nothing here runs them. usage: check_recipes.py ROOT VERSION
"""

import ast
import json
import pathlib
import re
import sys

root, version = pathlib.Path(sys.argv[1]), sys.argv[2]

recipes = list((root / "packaging/conan").rglob("*.py"))
assert len(recipes) == 2, recipes
for recipe in recipes:
    ast.parse(recipe.read_text(), str(recipe))
# The Conan recipe looks the version up.
pattern = re.search(r're\.search\(r"(.+?)", cmake_lists\)', (root / "packaging/conan/conanfile.py").read_text())
found = re.search(pattern.group(1), (root / "CMakeLists.txt").read_text()).group(1)
assert found == version, f"Conan: {found}"

homepage = re.search(r'HOMEPAGE_URL "(.+?)"', (root / "CMakeLists.txt").read_text()).group(1)
assert f'homepage = "{homepage}"' in (root / "packaging/conan/conanfile.py").read_text(), f"Conan: not {homepage}"

manifest = json.loads((root / "packaging/vcpkg/brackwell/vcpkg.json").read_text())
assert manifest["version"] == version, f"vcpkg: {manifest['version']}"
assert manifest["homepage"] == homepage, f"vcpkg: {manifest['homepage']}"

try:
    import yaml
except ImportError:
    print("The workflow file is not read: there is no YAML reader")
else:
    workflow = yaml.safe_load((root / ".github/workflows/ci.yml").read_text())
    commands = [row["run"] for row in workflow["jobs"]["check"]["strategy"]["matrix"]["include"]]
    for command in re.findall(r"(?:script|packaging)/[\w/-]+", " ".join(commands)):
        assert (root / command).is_file(), f"The workflow runs {command}"
