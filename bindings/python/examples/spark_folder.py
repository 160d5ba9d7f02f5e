# SPDX-License-Identifier: Apache-2.0
"""A folder of documents as two Parquet tables, made by Apache Spark: transactions, and failures and findings.

    spark-submit spark_folder.py FOLDER OUTPUT

For archives that lie on several machines. Ten thousand statements are read by one core in seconds, with
brackwell.read_many, before Spark has started.
"""

import pathlib
import sys
from typing import Iterable, Iterator

import brackwell
import pyarrow
from pyspark.sql import SparkSession
from pyspark.sql.pandas.types import from_arrow_schema

#: A document without anything says which columns there are.
NOTHING = b"OFXHEADER:100\n\n<OFX><BANKMSGSRSV1></BANKMSGSRSV1></OFX>"
PATH = pyarrow.field("path", pyarrow.utf8())


def for_spark(field: pyarrow.Field) -> pyarrow.Field:
    """Spark knows moments in microseconds only."""
    return field.with_type(pyarrow.timestamp("us", "UTC")) if pyarrow.types.is_timestamp(field.type) else field


TRANSACTIONS = pyarrow.schema([PATH, *map(for_spark, pyarrow.schema(brackwell.open(NOTHING).transactions))])
REMARKS = pyarrow.schema(
    [PATH, *((name, pyarrow.utf8()) for name in ("severity", "kind", "text")), ("line", pyarrow.int64())]
)


def batches(table: pyarrow.Table, path: str, schema: pyarrow.Schema) -> Iterator[pyarrow.RecordBatch]:
    """The table with the path of its document in front. A scale beyond the usual one is an error, not a rounding."""
    paths = pyarrow.array([path] * table.num_rows, pyarrow.utf8())
    yield from table.add_column(0, PATH, paths).select(schema.names).cast(schema).to_batches()


def transactions_of(files: Iterable[pyarrow.RecordBatch]) -> Iterator[pyarrow.RecordBatch]:
    for batch in files:
        for path, data in zip(batch["path"].to_pylist(), batch["content"].to_pylist()):
            for result in brackwell.read_many([data], threads=1):
                if isinstance(result, brackwell.Document):
                    yield from batches(pyarrow.table(result), path, TRANSACTIONS)


def remarks_of(files: Iterable[pyarrow.RecordBatch]) -> Iterator[pyarrow.RecordBatch]:
    for batch in files:
        for path, data in zip(batch["path"].to_pylist(), batch["content"].to_pylist()):
            for result in brackwell.read_many([data], threads=1):
                if isinstance(result, brackwell.Document):
                    yield from batches(pyarrow.table(result.findings), path, REMARKS)
                else:
                    row = {"path": path, "severity": "ERROR", "kind": result.code.name, "text": str(result)}
                    yield pyarrow.RecordBatch.from_pylist([{**row, "line": result.line}], schema=REMARKS)


def convert(spark: SparkSession, folder: pathlib.Path, output: pathlib.Path) -> None:
    """Writes OUTPUT/transactions and OUTPUT/remarks."""
    # Spark takes a file for no less than 4 MiB and makes a task of every thirty; statements are far smaller.
    spark.conf.set("spark.sql.files.openCostInBytes", 64 * 1024)
    files = spark.read.format("binaryFile").load(folder.as_uri()).select("path", "content")
    for name, convert_files, schema in (
        ("transactions", transactions_of, TRANSACTIONS),
        ("remarks", remarks_of, REMARKS),
    ):
        rows = files.mapInArrow(convert_files, from_arrow_schema(schema))
        rows.write.mode("errorifexists").parquet((output / name).as_uri())


if __name__ == "__main__":
    convert(SparkSession.builder.getOrCreate(), *(pathlib.Path(each).resolve() for each in sys.argv[1:3]))
