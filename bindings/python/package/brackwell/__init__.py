# SPDX-License-Identifier: Apache-2.0
"""Reads Open Financial Exchange (OFX) documents.

    import brackwell

    july = brackwell.open("july.ofx")
    for account in july.accounts:
        for transaction in account.transactions:
            print(transaction.date, transaction.amount, transaction.payee)
    for finding in july.findings:
        print(finding.line, finding.text)

Amounts are decimal.Decimal, days datetime.date, moments aware datetime.datetime in UTC; None is what the document does
not have. Objects read a field when it is asked for and keep their document alive. Nothing changes once it is made, so
threads may share everything; while a file is read other threads run.
"""

from typing import Optional

from . import _core
from ._core import *  # noqa: F403
from ._core import Document, Failure, Options
from ._errors import Error as Error
from ._errors import FileError as FileError
from ._many import read_many as read_many
from ._source import Source as Source
from ._source import read as _read

__version__: str = _core.VERSION


def open(
    source: Source,
    *,
    encoding: Optional[str] = None,
    repair: bool = True,
    as_written: bool = True,
    maximum_size: Optional[int] = None,
    maximum_depth: Optional[int] = None,
) -> Document:
    """Opens a document and reads all that it holds.

    source is a path, a "file:" URL, the bytes of a file, or a file object that is open for reading bytes.

    encoding is the name of the text encoding ("windows-1252"); without one it is found out. repair says whether a
    document that does not read, or not whole, is repaired; a finding then says so. as_written lets amounts and dates
    be read as people write them ("-0,99", "30/06/2025") where that cannot mean anything else. maximum_size (bytes) and
    maximum_depth (nested aggregates) are for those who take files from strangers.

    Raises Error when nothing was read; where there is no such file, or it may not be read, that is also the usual
    exception (FileNotFoundError, IsADirectoryError, PermissionError).
    """
    result = _read(source, Options(encoding, repair, as_written, maximum_size, maximum_depth))
    if isinstance(result, Failure):
        raise Error.of(result, source)
    return result


# The classes are those of the extension, which need no second list.
__all__ = ["Error", "FileError", "Source", "open", "read_many"]
__all__ += [name for name, value in vars(_core).items() if isinstance(value, type) and not name.startswith("_")]
