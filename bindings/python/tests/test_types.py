# SPDX-License-Identifier: Apache-2.0
"""The types that the package promises are those that it has."""

import importlib.metadata
import pathlib
import re
import subprocess
import sys

import pytest

import brackwell

HERE = pathlib.Path(__file__).parent
PROGRAM = """
import datetime
import decimal
import brackwell

july = brackwell.open("july.ofx", repair=False)
amount: decimal.Decimal | None = july.transactions[0].amount
payees: list[str | None] = [each.payee for each in july.transactions]
day: datetime.date | None = july.accounts[0].transactions[0].date
some: list[brackwell.Transaction] = july.transactions[1:3]
kind: brackwell.TradeType | None = july.investment_transactions[0].trade_type
for result in brackwell.read_many(["a.ofx", b"x"], threads=2):
    if isinstance(result, brackwell.Error):
        line: int | None = result.line
    else:
        accounts: brackwell.Accounts = result.accounts
"""


def run(*arguments: str) -> None:
    done = subprocess.run([sys.executable, "-m", *arguments], capture_output=True, text=True, check=False)
    assert done.returncode == 0, done.stdout + done.stderr


def test_the_version_is_that_of_the_library() -> None:
    project = (HERE.parents[2] / "CMakeLists.txt").read_text(encoding="utf-8")
    version = re.search(r"^    VERSION ([0-9.]+)$", project, re.MULTILINE)
    assert version is not None
    assert brackwell.__version__ == version[1] == importlib.metadata.version("brackwell")


def test_the_stubs_are_those_of_the_extension() -> None:
    pytest.importorskip("mypy")
    run("mypy.stubtest", "brackwell", "--allowlist", str(HERE / "stubtest_allowlist.txt"), "--ignore-unused-allowlist")


def test_the_package_is_strictly_typed() -> None:
    pytest.importorskip("mypy")
    run("mypy", "--strict", "--package", "brackwell")


def test_programs_are_strictly_typed(tmp_path: pathlib.Path) -> None:
    pytest.importorskip("mypy")
    program = tmp_path / "program.py"
    program.write_text(PROGRAM, encoding="utf-8")
    run("mypy", "--strict", str(program))
