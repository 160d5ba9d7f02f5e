# SPDX-License-Identifier: Apache-2.0
"""What the page "Python" shows is what happens."""

import doctest
import pathlib
import shutil
from typing import List

import pytest

import brackwell

ROOT = pathlib.Path(__file__).parents[3]


def prompts_of(page: str) -> str:
    """The page with nothing but what Python shows at its prompt, each line at its place."""
    kept: List[str] = []
    inside = False
    for line in page.splitlines():
        if line.startswith("```"):
            inside = line == "```pycon"
            line = ""
        kept.append(line if inside else "")
    return "\n".join(kept) + "\n"


def test_the_prompts_of_the_page_are_true(tmp_path: pathlib.Path, monkeypatch: pytest.MonkeyPatch) -> None:
    for module in ("pyarrow", "polars", "duckdb"):
        pytest.importorskip(module)
    for example in (ROOT / "examples").glob("*.ofx"):
        shutil.copy(example, tmp_path)
    monkeypatch.chdir(tmp_path)
    page = prompts_of((ROOT / "docs" / "python.md").read_text(encoding="utf-8"))
    test = doctest.DocTestParser().get_doctest(page, {}, "python.md", "docs/python.md", 0)
    assert len(test.examples) > 15
    results = doctest.DocTestRunner(optionflags=doctest.REPORT_NDIFF).run(test)
    assert results.failed == 0


def test_the_page_names_every_attribute_of_a_document() -> None:
    page = (ROOT / "docs" / "python.md").read_text(encoding="utf-8")
    for name, member in vars(brackwell.Document).items():
        if isinstance(member, property):
            assert f"`{name}`" in page, name


def test_the_example_of_the_package_is_true(checking: pathlib.Path) -> None:
    assert brackwell.__doc__ is not None
    lines = [line[4:] for line in brackwell.__doc__.splitlines() if line.startswith("    ")]
    program = "\n".join(lines).replace('"july.ofx"', repr(str(checking)))
    exec(compile(program, "example", "exec"), {})
