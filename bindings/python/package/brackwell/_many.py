# SPDX-License-Identifier: Apache-2.0
"""Many files, read by several threads."""

import collections
import concurrent.futures
import os
from typing import Deque, Iterable, Iterator, Optional, Union

from ._core import Document, Failure, Options
from ._errors import Error
from ._source import Source, read


def _read_one(source: Source, options: Options) -> Union[Document, Error]:
    result = read(source, options)
    return Error.of(result, source) if isinstance(result, Failure) else result


def read_many(
    sources: Iterable[Source],
    *,
    threads: Optional[int] = None,
    encoding: Optional[str] = None,
    repair: bool = True,
    as_written: bool = True,
    maximum_size: Optional[int] = None,
    maximum_depth: Optional[int] = None,
) -> Iterator[Union[Document, Error]]:
    """Yields a document for each source, in their order, or the Error that open() would raise.

    So one file that does not read ends nothing. threads is how many read at the same time, without it as many as there
    are processors. No more than twice as many sources as threads are read ahead of the caller, so the sources may be
    endless. The other arguments are those of open().
    """
    options = Options(encoding, repair, as_written, maximum_size, maximum_depth)
    count = threads if threads is not None else os.cpu_count() or 1
    if count < 1:
        raise ValueError("threads must be at least 1")
    if isinstance(sources, (str, bytes, bytearray, memoryview)) or hasattr(sources, "read"):
        # One of these is a sequence, too, of characters, numbers or lines.
        raise TypeError(f"sources must be several, such as a list, not one {type(sources).__name__}; open() reads one")
    return _results(sources, options, count)


def _results(sources: Iterable[Source], options: Options, threads: int) -> Iterator[Union[Document, Error]]:
    pending: Deque["concurrent.futures.Future[Union[Document, Error]]"] = collections.deque()
    with concurrent.futures.ThreadPoolExecutor(threads, "brackwell") as pool:
        try:
            for source in sources:
                pending.append(pool.submit(_read_one, source, options))
                if len(pending) > 2 * threads:
                    yield pending.popleft().result()
            while pending:
                yield pending.popleft().result()
        finally:
            for future in pending:
                future.cancel()
