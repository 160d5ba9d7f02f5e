# SPDX-License-Identifier: Apache-2.0
"""A folder of documents as two Parquet tables, made by Apache Spark: transactions, and failures and findings.

    spark-submit --py-files folder_tables.py spark_folder.py FOLDER OUTPUT

For archives that lie on several machines. Ten thousand statements are read by one core in seconds, with
brackwell.read_many, before Spark has started.
"""

import pathlib
import sys
from typing import Callable, Iterable, Iterator

import pyarrow
from folder_tables import TABLES
from pyspark.sql import SparkSession
from pyspark.sql.pandas.types import from_arrow_schema

Rows = Iterator[pyarrow.RecordBatch]


def over_files(rows_of: Callable[[str, bytes], Rows]) -> Callable[[Iterable[pyarrow.RecordBatch]], Rows]:
    """What makes the rows of one document, for files as Spark hands them out."""

    def convert_files(files: Iterable[pyarrow.RecordBatch]) -> Rows:
        for batch in files:
            for path, data in zip(batch["path"].to_pylist(), batch["content"].to_pylist()):
                yield from rows_of(path, data)

    return convert_files


def convert(spark: SparkSession, folder: pathlib.Path, output: pathlib.Path) -> None:
    """Writes OUTPUT/transactions and OUTPUT/remarks."""
    # Spark takes a file for no less than 4 MiB and makes a task of every thirty; statements are far smaller.
    spark.conf.set("spark.sql.files.openCostInBytes", 64 * 1024)
    files = spark.read.format("binaryFile").load(folder.as_uri()).select("path", "content")
    for name, rows_of, schema in TABLES:
        rows = files.mapInArrow(over_files(rows_of), from_arrow_schema(schema))
        rows.write.mode("errorifexists").parquet((output / name).as_uri())


if __name__ == "__main__":
    convert(SparkSession.builder.getOrCreate(), *(pathlib.Path(each).resolve() for each in sys.argv[1:3]))
