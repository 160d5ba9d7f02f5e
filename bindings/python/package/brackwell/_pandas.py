# SPDX-License-Identifier: Apache-2.0
"""Tables as pandas.DataFrame; pandas is needed for nothing else."""

import datetime
from typing import Any, Dict, List


def frame_of(table: Any) -> Any:
    """The table of a list: amounts as decimal.Decimal, moments with their zone, days as datetime64."""
    import pandas

    columns: Dict[str, List[Any]] = table.columns()
    types = {name: _type_of(values) for name, values in columns.items()}
    series = {name: pandas.Series(values, dtype=types[name]) for name, values in columns.items()}
    return pandas.DataFrame(series)


def _type_of(values: List[Any]) -> str:
    """By the first value that there is; object for what pandas has no exact type for."""
    first = next((value for value in values if value is not None), None)
    if isinstance(first, datetime.datetime):
        return "datetime64[ms, UTC]"
    if isinstance(first, datetime.date):
        return "datetime64[s]"
    return "object"
