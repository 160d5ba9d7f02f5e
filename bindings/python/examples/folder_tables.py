# SPDX-License-Identifier: Apache-2.0
"""Two tables of many documents, the same for every engine: transactions, and remarks (failures and findings)."""

from typing import Iterator

import brackwell
import pyarrow

#: A document without anything says which columns there are.
NOTHING = b"OFXHEADER:100\n\n<OFX><BANKMSGSRSV1></BANKMSGSRSV1></OFX>"
PATH = pyarrow.field("path", pyarrow.utf8())


def in_microseconds(field: pyarrow.Field) -> pyarrow.Field:
    """Spark knows moments in no other unit."""
    return field.with_type(pyarrow.timestamp("us", "UTC")) if pyarrow.types.is_timestamp(field.type) else field


TRANSACTIONS = pyarrow.schema([PATH, *map(in_microseconds, pyarrow.schema(brackwell.open(NOTHING).transactions))])
REMARKS = pyarrow.schema(
    [PATH, *((name, pyarrow.utf8()) for name in ("severity", "kind", "text")), ("line", pyarrow.int64())]
)


def batches(table: pyarrow.Table, path: str, schema: pyarrow.Schema) -> Iterator[pyarrow.RecordBatch]:
    """The table with the path of its document in front. A scale beyond the usual one is an error, not a rounding."""
    paths = pyarrow.array([path] * table.num_rows, pyarrow.utf8())
    yield from table.add_column(0, PATH, paths).select(schema.names).cast(schema).to_batches()


def transactions_of(path: str, data: bytes) -> Iterator[pyarrow.RecordBatch]:
    for result in brackwell.read_many([data], threads=1):
        if isinstance(result, brackwell.Document):
            yield from batches(pyarrow.table(result), path, TRANSACTIONS)


def remarks_of(path: str, data: bytes) -> Iterator[pyarrow.RecordBatch]:
    for result in brackwell.read_many([data], threads=1):
        if isinstance(result, brackwell.Document):
            yield from batches(pyarrow.table(result.findings), path, REMARKS)
        else:
            row = {"path": path, "severity": "ERROR", "kind": result.code.name, "text": str(result)}
            yield pyarrow.RecordBatch.from_pylist([{**row, "line": result.line}], schema=REMARKS)


#: Name, rows of a document, columns.
TABLES = (("transactions", transactions_of, TRANSACTIONS), ("remarks", remarks_of, REMARKS))
