# SPDX-License-Identifier: Apache-2.0
"""What can be opened."""

import os
from typing import Optional, Protocol, Union

from ._core import Document, Failure, Options, open_bytes, open_path


class Readable(Protocol):
    """A file object that is open for reading bytes."""

    def read(self) -> bytes: ...


Source = Union[str, "os.PathLike[str]", "os.PathLike[bytes]", bytes, bytearray, memoryview, Readable]
"""A path, a "file:" URL, the bytes of a file, or a file object that is open for reading bytes."""


def read(source: Source, options: Options) -> Union[Document, Failure]:
    """Opens the source; the reason when nothing was read."""
    if isinstance(source, bytes):
        return open_bytes(source, options)
    if isinstance(source, (bytearray, memoryview)):
        # Somebody may change them while they are read.
        return open_bytes(bytes(source), options)
    if isinstance(source, str):
        return open_path(os.fsencode(source), True, options)
    if isinstance(source, os.PathLike):
        return open_path(os.fsencode(source), False, options)
    if hasattr(source, "read"):
        data: object = source.read()
        if isinstance(data, str):
            raise TypeError('the file is open for reading text; open it with "rb", so that its encoding is found')
        if not isinstance(data, (bytes, bytearray, memoryview)):
            # bytes() would make as many zeros of a number.
            raise TypeError(f"read() of the file object gave {type(data).__name__}, not bytes")
        return open_bytes(bytes(data), options)
    raise TypeError(f"a path, bytes or a file object, not {type(source).__name__}")


def path_of(source: Source) -> Optional[str]:
    """The path for a message; None for what has none."""
    if isinstance(source, (str, os.PathLike)):
        return os.fsdecode(source)
    return None
