# SPDX-License-Identifier: Apache-2.0
"""The example for Apache Spark, on a local cluster of two workers."""

import decimal
import importlib
import os
import pathlib
import shutil
import sys
from typing import Any, Iterator

import pytest

import brackwell
from conftest import EXAMPLES

pyspark = pytest.importorskip("pyspark")
pytest.importorskip("pyarrow")
if shutil.which("java") is None:
    pytest.skip("Java is not here", allow_module_level=True)

#: How often the folder has each example; 715 make ten thousand documents.
COPIES = int(os.environ.get("BRACKWELL_SPARK_COPIES", "4"))
EXAMPLE = pathlib.Path(__file__).parents[1] / "examples" / "spark_folder.py"


@pytest.fixture(scope="module")
def spark() -> Iterator[Any]:
    from pyspark.sql import SparkSession

    # The workers are processes of their own, and are to find the package.
    with pytest.MonkeyPatch.context() as environment:
        environment.setenv("PYSPARK_PYTHON", sys.executable)
        builder = SparkSession.builder.master("local-cluster[2,1,1024]").config("spark.ui.enabled", "false")
        session = builder.getOrCreate()
        yield session
        session.stop()


def test_a_folder_becomes_two_tables(
    spark: Any, tmp_path: pathlib.Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    import pyarrow.parquet  # type: ignore[import-untyped]

    # The workers import the example by its name, and so does the test.
    monkeypatch.syspath_prepend(EXAMPLE.parent)
    example = importlib.import_module(EXAMPLE.stem)
    spark.sparkContext.addPyFile(str(EXAMPLE))

    folder = tmp_path / "documents"
    folder.mkdir()
    sources = sorted(EXAMPLES.glob("*.ofx"))
    for number in range(COPIES):
        for source in sources:
            shutil.copy(source, folder / f"{number}_{source.name}")
    (folder / "no_document.ofx").write_bytes(b"no document")
    example.convert(spark, folder, tmp_path / "output")

    documents = list(brackwell.read_many(sources))
    amounts = [
        each.amount
        for document in documents
        if isinstance(document, brackwell.Document)
        for each in document.transactions
    ]
    rows = pyarrow.parquet.read_table(tmp_path / "output" / "transactions")
    assert rows.num_rows == COPIES * len(amounts)
    known = [amount for amount in amounts if amount is not None]
    assert sum(value for value in rows["amount"].to_pylist() if value is not None) == COPIES * sum(known, decimal.Decimal())

    findings = sum(len(document.findings) for document in documents if isinstance(document, brackwell.Document))
    remarks = pyarrow.parquet.read_table(tmp_path / "output" / "remarks").to_pylist()
    assert len(remarks) == COPIES * findings + 1
    assert [each["kind"] for each in remarks if each["path"].endswith("no_document.ofx")] == ["NOT_OFX"]
