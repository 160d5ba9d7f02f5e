# SPDX-License-Identifier: Apache-2.0
"""What objects look like in a notebook."""

import enum
import html
from typing import Any, Iterable, List, Sequence

MOST_ROWS = 20


def _text_of(value: Any) -> str:
    if value is None:
        return ""
    if isinstance(value, enum.Enum):
        return value.name.replace("_", " ").lower()
    if hasattr(value, "field_names"):
        return ", ".join(_text_of(getattr(value, name)) for name in value.field_names() if getattr(value, name) is not None)
    if isinstance(value, tuple):
        return "; ".join(_text_of(each) for each in value)
    if hasattr(value, "__arrow_c_stream__"):
        return str(len(value))
    return str(value)


def _row(cells: Iterable[str], tag: str) -> str:
    return "<tr>" + "".join(f"<{tag}>{html.escape(cell)}</{tag}>" for cell in cells) + "</tr>"


def _table(title: str, head: Sequence[str], rows: Iterable[Sequence[str]]) -> str:
    caption = f"<caption>{html.escape(title)}</caption>"
    body = "".join(_row(row, "td") for row in rows)
    return f"<table>{caption}<thead>{_row(head, 'th')}</thead><tbody>{body}</tbody></table>"


def of_record(record: Any) -> str:
    """The fields that the document has, one in a row."""
    rows = [(name, getattr(record, name)) for name in record.field_names()]
    return _table(
        type(record).__name__,
        ("field", "value"),
        [(name, _text_of(value)) for name, value in rows if value is not None],
    )


def of_list(records: Any) -> str:
    """The first objects, one in a row, with the fields that any of them has."""
    first: List[Any] = records[:MOST_ROWS]
    names = first[0].field_names() if first else ()
    used = [name for name in names if any(getattr(record, name) is not None for record in first)]
    rows = [[_text_of(getattr(record, name)) for name in used] for record in first]
    shown = f"{type(records).__name__}: {len(records)}"
    if len(records) > len(first):
        shown += f", of which {len(first)} are shown"
    return _table(shown, used, rows)


def of_document(document: Any) -> str:
    """The lists of a document that are not empty."""
    lists = (
        document.accounts,
        document.transactions,
        document.investments,
        document.investment_transactions,
        document.positions,
        document.securities,
        document.findings,
    )
    return f"<p>{html.escape(repr(document))}</p>" + "".join(of_list(each) for each in lists if len(each))
