# SPDX-License-Identifier: Apache-2.0
"""A folder of documents as two Parquet tables, made by Dask: transactions, and failures and findings.

    python dask_folder.py FOLDER OUTPUT

By the threads of this process, or by the cluster of a dask.distributed.Client that is there already. Its workers need
brackwell and the modules of this folder, and see both folders at the same paths.
"""

import pathlib
import sys
from typing import Sequence

import dask
import pyarrow.parquet
from folder_tables import TABLES


def write(paths: Sequence[pathlib.Path], output: pathlib.Path, part: int) -> None:
    """The part of each table that these documents make."""
    for name, rows_of, schema in TABLES:
        with pyarrow.parquet.ParquetWriter(output / name / f"{part}.parquet", schema) as file:
            for path in paths:
                for batch in rows_of(str(path), path.read_bytes()):
                    file.write_batch(batch)


def convert(folder: pathlib.Path, output: pathlib.Path, part_size: int = 500) -> None:
    """Writes OUTPUT/transactions and OUTPUT/remarks, which must not be there."""
    for name, _, _ in TABLES:
        (output / name).mkdir(parents=True)
    paths = sorted(path for path in folder.iterdir() if path.is_file())
    parts = [paths[begin : begin + part_size] for begin in range(0, len(paths), part_size)]
    dask.compute(*(dask.delayed(write)(each, output, part) for part, each in enumerate(parts)))


if __name__ == "__main__":
    convert(*(pathlib.Path(each).resolve() for each in sys.argv[1:3]))
