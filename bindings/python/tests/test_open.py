# SPDX-License-Identifier: Apache-2.0
"""What can be opened, and what happens to what cannot be read."""

import errno
import io
import mmap
import os
import pathlib
import pickle
from typing import Any, Callable

import pytest

import brackwell
from conftest import statement, transaction

SOURCES: "dict[str, Callable[[pathlib.Path], Any]]" = {
    "a text": str,
    "a path": lambda path: path,
    "a URL": lambda path: path.as_uri(),
    "bytes": lambda path: path.read_bytes(),
    "a bytearray": lambda path: bytearray(path.read_bytes()),
    "a view of memory": lambda path: memoryview(path.read_bytes()),
    "a file object": lambda path: path.open("rb"),
    "a file object in memory": lambda path: io.BytesIO(path.read_bytes()),
}


@pytest.mark.parametrize("source", SOURCES.values(), ids=list(SOURCES))
def test_all_sources_give_the_same_document(source: Callable[[pathlib.Path], Any], checking: pathlib.Path) -> None:
    given = source(checking)
    document = brackwell.open(given)
    assert document == brackwell.open(checking)
    assert len(document.transactions) == 26
    if hasattr(given, "close"):
        given.close()


def test_a_mapped_file_is_a_file_object(checking: pathlib.Path) -> None:
    with checking.open("rb") as file, mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ) as mapped:
        assert brackwell.open(mapped) == brackwell.open(checking)


def test_a_file_that_is_open_for_text_is_refused(checking: pathlib.Path) -> None:
    with checking.open(encoding="utf-8") as file, pytest.raises(TypeError, match='"rb"'):
        brackwell.open(file)  # type: ignore[arg-type]


@pytest.mark.parametrize("given", [None, 7, [b"x"]], ids=repr)
def test_a_file_object_that_gives_no_bytes_is_a_type_error(given: Any) -> None:
    class Reader:
        def read(self) -> Any:
            return given

    with pytest.raises(TypeError, match=rf"read\(\) .* {type(given).__name__}"):
        brackwell.open(Reader())


@pytest.mark.parametrize("source", [None, 7, 1.5, [b"x"]], ids=repr)
def test_what_is_no_source_is_a_type_error(source: Any) -> None:
    with pytest.raises(TypeError, match=type(source).__name__):
        brackwell.open(source)


def test_a_path_whose_name_is_no_text_is_opened(checking: pathlib.Path, tmp_path: pathlib.Path) -> None:
    name = os.path.join(os.fsencode(tmp_path), b"\xff.ofx")
    pathlib.Path(os.fsdecode(name)).write_bytes(checking.read_bytes())
    document = brackwell.open(os.fsdecode(name))
    assert document.path == os.fsdecode(name)


def test_a_missing_file_is_also_the_usual_exception(tmp_path: pathlib.Path) -> None:
    with pytest.raises(FileNotFoundError) as caught:
        brackwell.open(tmp_path / "missing.ofx")
    error = caught.value
    assert isinstance(error, brackwell.Error)
    assert error.code is brackwell.ErrorCode.NOT_FOUND
    assert error.errno == errno.ENOENT
    assert error.filename == str(tmp_path / "missing.ofx")


def test_a_folder_is_also_the_usual_exception(tmp_path: pathlib.Path) -> None:
    with pytest.raises(IsADirectoryError) as caught:
        brackwell.open(tmp_path)
    assert isinstance(caught.value, brackwell.FileError)


def test_an_error_says_where_and_what_to_do() -> None:
    data = b"OFXHEADER:100\n\n<OFX>\n<BANKMSGSRSV1>\n</STMTRS>\n</BANKMSGSRSV1></OFX>"
    with pytest.raises(brackwell.Error) as caught:
        brackwell.open(data, repair=False)
    error = caught.value
    assert error.code is brackwell.ErrorCode.TAGS_DO_NOT_MATCH
    assert (error.line, error.column) == (5, 1)
    assert error.text and error.remedy and error.text in str(error)
    assert error.cause and error.cause == error.failure.cause
    assert error.failure.is_repairable


def test_what_has_no_place_has_no_line() -> None:
    with pytest.raises(brackwell.Error) as caught:
        brackwell.open(b"")
    assert caught.value.code is brackwell.ErrorCode.EMPTY
    assert caught.value.line is None and caught.value.column is None


def test_errors_travel(tmp_path: pathlib.Path) -> None:
    for source in (tmp_path / "missing.ofx", b"no document"):
        with pytest.raises(brackwell.Error) as caught:
            brackwell.open(source)
        copy = pickle.loads(pickle.dumps(caught.value))
        assert type(copy) is type(caught.value)
        assert copy.failure == caught.value.failure and str(copy) == str(caught.value)


def test_the_encoding_can_be_said() -> None:
    data = statement(transaction("1", memo="Caf\u00e9")).replace("\u00e9".encode(), b"\xe9")
    assert brackwell.open(data, encoding="windows-1252").transactions[0].memo == "Caf\u00e9"
    with pytest.raises(ValueError, match="klingon"):
        brackwell.open(data, encoding="klingon")


def test_amounts_are_read_as_written_unless_that_is_not_wanted() -> None:
    data = statement(transaction("-0,99"))
    assert str(brackwell.open(data).transactions[0].amount) == "-0.99"
    assert str(brackwell.open(data, as_written=False).transactions[0].amount) == "-99"


def test_limits_are_kept(checking: pathlib.Path) -> None:
    with pytest.raises(brackwell.Error) as caught:
        brackwell.open(checking, maximum_size=100)
    assert caught.value.code is brackwell.ErrorCode.TOO_LARGE
    with pytest.raises(brackwell.Error) as caught:
        brackwell.open(checking, maximum_depth=2)
    assert caught.value.code is brackwell.ErrorCode.TOO_DEEP


def test_a_repair_is_told() -> None:
    data = statement(transaction("1")).replace(b"</STMTRS>", b"")
    document = brackwell.open(data)
    assert len(document.transactions) == 1
    assert brackwell.FindingKind.REPAIRED in [finding.kind for finding in document.findings]
    assert document.changes


def test_several_documents_in_one_file_are_all_read_and_failures_told() -> None:
    good, bad = statement(transaction("1")), b"OFXHEADER:100\n\n<OFX></STMTRS></OFX>"
    document = brackwell.open(good + b"\n" + statement(transaction("2")) + b"\n" + bad, repair=False)
    assert [each.amount for each in document.transactions] == [1, 2]
    assert len(document.failures) == 1


def test_read_many_keeps_the_order_and_errors_are_values(
    checking: pathlib.Path, investments: pathlib.Path, tmp_path: pathlib.Path
) -> None:
    sources: "list[brackwell.Source]" = [checking, tmp_path / "missing.ofx", b"", investments] * 10
    for threads in (1, 2, 7, None):
        results = list(brackwell.read_many(sources, threads=threads))
        assert len(results) == len(sources)
        for source, result in zip(sources, results):
            if source in (checking, investments):
                assert result == brackwell.open(source)
            else:
                assert isinstance(result, brackwell.Error)


def test_read_many_reads_no_further_ahead_than_it_says(checking: pathlib.Path) -> None:
    taken = 0

    def endless() -> Any:
        nonlocal taken
        while True:
            taken += 1
            yield checking

    results = brackwell.read_many(endless(), threads=2)
    for _ in range(10):
        next(results)
    results.close()  # type: ignore[attr-defined]
    assert taken <= 10 + 2 * 2 + 1


def test_read_many_wants_a_thread() -> None:
    with pytest.raises(ValueError, match="threads"):
        brackwell.read_many([], threads=0)


@pytest.mark.parametrize("source", SOURCES.values(), ids=list(SOURCES))
def test_read_many_wants_several_sources(source: Callable[[pathlib.Path], Any], checking: pathlib.Path) -> None:
    given = source(checking)
    with pytest.raises(TypeError):
        list(brackwell.read_many(given))
    if hasattr(given, "close"):
        given.close()


def test_options_of_read_many_are_those_of_open() -> None:
    data = statement(transaction("-0,99"))
    (document,) = brackwell.read_many([data], as_written=False)
    assert isinstance(document, brackwell.Document)
    assert str(document.transactions[0].amount) == "-99"
