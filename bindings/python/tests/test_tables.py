# SPDX-License-Identifier: Apache-2.0
"""Tables: the same values as the plain loop, in whatever reads them."""

import datetime
import decimal
import gc
import pathlib
from typing import Any, List, Optional

import hypothesis
import hypothesis.strategies as st
import pytest

import brackwell
from conftest import lists_of, statement, transaction

pa = pytest.importorskip("pyarrow")
pytest.importorskip("pyarrow.compute")


def test_arrow_has_the_values_of_the_loop(example: pathlib.Path) -> None:
    for each in lists_of(brackwell.open(example)):
        table = pa.table(each)
        table.validate(full=True)
        columns = each.columns()
        assert table.column_names == list(columns) and table.num_rows == len(each)
        for name, values in columns.items():
            wanted = [getattr(value, "name", value) for value in values]
            assert table[name].to_pylist() == wanted, name


def test_columns_are_the_fields_of_the_objects(example: pathlib.Path) -> None:
    for each in lists_of(brackwell.open(example)):
        for name, values in each.columns().items():
            if len(each) and hasattr(each[0], name):
                assert values == [getattr(record, name) for record in each], name


def test_a_table_of_all_accounts_says_whose_each_transaction_is(example: pathlib.Path) -> None:
    document = brackwell.open(example)
    wanted = [account.number for account in document.accounts for _ in account.transactions]
    assert document.transactions.columns()["account_number"] == wanted


def test_types_are_exact(checking: pathlib.Path) -> None:
    schema = pa.table(brackwell.open(checking).transactions).schema
    assert schema.field("amount").type == pa.decimal128(38, 10)
    assert schema.field("date").type == pa.date32()
    assert schema.field("date_posted").type == pa.timestamp("ms", tz="UTC")
    assert schema.field("memo").type == pa.utf8()
    assert pa.schema(brackwell.open(checking).transactions) == schema


def test_the_schema_is_the_same_for_all_documents(checking: pathlib.Path, investments: pathlib.Path) -> None:
    for one, other in zip(lists_of(brackwell.open(checking)), lists_of(brackwell.open(investments))):
        assert pa.schema(one) == pa.schema(other)


def test_a_document_is_the_table_of_its_transactions(checking: pathlib.Path) -> None:
    document = brackwell.open(checking)
    assert pa.table(document) == pa.table(document.transactions)
    assert pa.schema(document) == pa.schema(document.transactions)


def test_a_table_outlives_its_document(checking: pathlib.Path) -> None:
    reader = pa.RecordBatchReader.from_stream(brackwell.open(checking))
    gc.collect()
    assert reader.read_all().num_rows == 26


def test_a_stream_that_nobody_reads_is_released(checking: pathlib.Path) -> None:
    document = brackwell.open(checking)
    document.__arrow_c_stream__()
    document.__arrow_c_schema__()
    reader = pa.RecordBatchReader.from_stream(document)
    batch = reader.read_next_batch()
    column = batch.column(0)
    del document, reader, batch
    gc.collect()
    assert column.to_pylist() == ["0081443920"] * 26


def test_long_lists_come_in_batches() -> None:
    rows = [transaction(str(i)) for i in range(70_000)]
    table = pa.table(brackwell.open(statement(*rows)))
    assert [len(chunk) for chunk in table["amount"].chunks] == [65_536, 4_464]
    assert table["amount"].to_pylist() == list(range(70_000))


def test_nulls_stand_between_the_values_of_every_batch() -> None:
    memos = ["", "one", "", "", "two", ""] * 15_000
    document = brackwell.open(statement(*(transaction("1", memo=memo) for memo in memos)))
    table = pa.table(document)
    table.validate(full=True)
    assert table["memo"].num_chunks == 2 and table["memo"].to_pylist() == [memo or None for memo in memos]


def test_a_currency_in_one_row_is_in_the_table() -> None:
    rows = [transaction("1")] * 300 + [transaction("1") + "<CURRENCY><CURRATE>1.25<CURSYM>USD</CURRENCY>"]
    table = pa.table(brackwell.open(statement(*rows)))
    for name, value in (("symbol", "USD"), ("rate", decimal.Decimal("1.25")), ("is_converted", False)):
        assert table[f"currency_{name}"].to_pylist() == [None] * 300 + [value]


def test_the_scale_grows_with_the_amounts_and_nothing_is_rounded() -> None:
    table = pa.table(brackwell.open(statement(transaction("0.123456789012"), transaction("1"))))
    assert table["amount"].type == pa.decimal128(38, 12)
    assert table["amount"].to_pylist() == [decimal.Decimal("0.123456789012"), 1]


@pytest.mark.parametrize("amounts", [["1" + "0" * 30], ["0.00000000000000000001", "1" + "0" * 20]], ids=len)
def test_amounts_that_do_not_fit_are_an_error(amounts: List[str]) -> None:
    with pytest.raises(pa.ArrowInvalid, match=r"row \d: the value of amount does not fit .* d:38,"):
        pa.table(brackwell.open(statement(*map(transaction, amounts))))


def test_sums_are_those_of_the_loop(example: pathlib.Path) -> None:
    polars, duckdb = pytest.importorskip("polars"), pytest.importorskip("duckdb")
    document = brackwell.open(example)
    tables: "list[tuple[Any, str]]" = [
        (document.transactions, "amount"),
        (document.investment_transactions, "total"),
        (document.positions, "market_value"),
        (document.securities, "unit_price"),
    ]
    for each, column in tables:
        loop = sum((value for value in each.columns()[column] if value is not None), decimal.Decimal())
        rows = pa.table(each)
        assert (pa.compute.sum(rows[column]).as_py() or 0) == loop
        assert polars.DataFrame(each)[column].sum() == loop
        assert (duckdb.sql(f"select sum({column}) from rows").fetchall()[0][0] or 0) == loop
        frame = each.to_pandas()
        assert len(frame) == len(each) and sum(frame[column].dropna(), decimal.Decimal()) == loop


def test_pandas_has_dates_as_dates_and_amounts_as_decimals(checking: pathlib.Path) -> None:
    pandas = pytest.importorskip("pandas")
    frame = brackwell.open(checking).to_pandas()
    assert pandas.api.types.is_datetime64_dtype(frame["date"])
    assert isinstance(frame["amount"][0], decimal.Decimal) and frame["amount"][0] == -845
    assert str(frame["date_posted"].dtype) == "datetime64[ms, UTC]"
    assert frame["memo"][0] == "Rent March"
    account = brackwell.open(checking).accounts[0].to_pandas()
    assert account["payee"].equals(frame["payee"])


def test_an_empty_list_is_an_empty_table() -> None:
    document = brackwell.open(statement())
    assert pa.table(document).num_rows == 0 and pa.table(document).num_columns > 20
    assert len(document.to_pandas()) == 0


TEXTS = st.text(st.characters(codec="utf-8", exclude_characters="<>&", exclude_categories=["C", "Z"]), max_size=20)
AMOUNTS = st.decimals(allow_nan=False, allow_infinity=False, min_value=-(10**15), max_value=10**15, places=4)
DAYS = st.dates(min_value=datetime.date(1900, 1, 1), max_value=datetime.date(2100, 1, 1))


@hypothesis.given(st.lists(st.tuples(AMOUNTS, DAYS, st.one_of(st.none(), TEXTS)), max_size=20))
def test_any_values_come_through(rows: "list[tuple[decimal.Decimal, datetime.date, Optional[str]]]") -> None:
    data = statement(*(transaction(f"{a:f}", f"{d:%Y%m%d}".zfill(8), m or "") for a, d, m in rows))
    document = brackwell.open(data, as_written=False)
    wanted = [(amount, day, memo or None) for amount, day, memo in rows]
    assert [(each.amount, each.date, each.memo) for each in document.transactions] == wanted
    table = pa.table(document)
    assert list(zip(*(table[name].to_pylist() for name in ("amount", "date", "memo")))) == wanted


@hypothesis.given(st.binary(max_size=200))
def test_any_bytes_are_a_document_or_an_error(data: bytes) -> None:
    for source in (data, statement(transaction("1")) + data, statement()[: len(data)] + data):
        try:
            document = brackwell.open(source)
        except brackwell.Error as error:
            assert str(error)
        else:
            pa.table(document).validate(full=True)
            repr(list(document.transactions))
