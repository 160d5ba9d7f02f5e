# SPDX-License-Identifier: Apache-2.0
"""The examples for engines that spread the work: the tables of a folder are those of the plain loop."""

import contextlib
import decimal
import importlib
import os
import pathlib
import shutil
import sys
from typing import Any, Callable, Iterator

import pytest

import brackwell
from conftest import EXAMPLES

pytest.importorskip("pyarrow")

#: How often the folder has each example; 715 make ten thousand documents.
COPIES = int(os.environ.get("BRACKWELL_FOLDER_COPIES", "4"))
#: Where the engines' examples are, which their workers import by name.
HERE = pathlib.Path(__file__).parents[1] / "examples"


@pytest.fixture
def folder(tmp_path: pathlib.Path, monkeypatch: pytest.MonkeyPatch) -> pathlib.Path:
    """Every example some times, and a file that does not read."""
    monkeypatch.syspath_prepend(HERE)
    made = tmp_path / "documents"
    made.mkdir()
    for number in range(COPIES):
        for source in EXAMPLES.glob("*.ofx"):
            shutil.copy(source, made / f"{number}_{source.name}")
    (made / "no_document.ofx").write_bytes(b"no document")
    return made


def check(output: pathlib.Path) -> None:
    import pyarrow.parquet  # type: ignore[import-untyped]

    documents = [brackwell.open(path) for path in EXAMPLES.glob("*.ofx")]
    amounts = [each.amount for document in documents for each in document.transactions]
    rows = pyarrow.parquet.read_table(output / "transactions")
    assert rows.num_rows == COPIES * len(amounts)
    known = [amount for amount in amounts if amount is not None]
    assert sum(value for value in rows["amount"].to_pylist() if value is not None) == COPIES * sum(known, decimal.Decimal())

    findings = sum(len(document.findings) for document in documents)
    remarks = pyarrow.parquet.read_table(output / "remarks").to_pylist()
    assert len(remarks) == COPIES * findings + 1
    assert [each["kind"] for each in remarks if each["path"].endswith("no_document.ofx")] == ["NOT_OFX"]


@contextlib.contextmanager
def cluster() -> Iterator[None]:
    """Two processes, as other machines would be."""
    distributed = pytest.importorskip("distributed")
    with distributed.LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=None) as workers:
        with distributed.Client(workers):
            yield


@pytest.mark.parametrize("workers", [contextlib.nullcontext, cluster], ids=["threads", "cluster"])
def test_dask_makes_two_tables_of_a_folder(
    workers: Callable[[], Any], folder: pathlib.Path, tmp_path: pathlib.Path
) -> None:
    pytest.importorskip("dask")
    example = importlib.import_module("dask_folder")
    with workers():
        example.convert(folder, tmp_path / "output", part_size=10)
    check(tmp_path / "output")
    with pytest.raises(FileExistsError):
        example.convert(folder, tmp_path / "output")


@pytest.fixture
def spark(monkeypatch: pytest.MonkeyPatch) -> Iterator[Any]:
    """A cluster of two workers, which are processes of their own, and are to find the package."""
    sql = pytest.importorskip("pyspark.sql")
    if shutil.which("java") is None:
        pytest.skip("Java is not here")
    monkeypatch.setenv("PYSPARK_PYTHON", sys.executable)
    builder = sql.SparkSession.builder.master("local-cluster[2,1,1024]").config("spark.ui.enabled", "false")
    session = builder.getOrCreate()
    for name in ("folder_tables.py", "spark_folder.py"):
        session.sparkContext.addPyFile(str(HERE / name))
    yield session
    session.stop()


def test_spark_makes_two_tables_of_a_folder(spark: Any, folder: pathlib.Path, tmp_path: pathlib.Path) -> None:
    importlib.import_module("spark_folder").convert(spark, folder, tmp_path / "output")
    check(tmp_path / "output")
