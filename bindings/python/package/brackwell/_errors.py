# SPDX-License-Identifier: Apache-2.0
"""Why a document was not read, as exceptions."""

import errno
from typing import Dict, Optional, Tuple, Type

from ._core import ErrorCode, Failure
from ._source import Source, path_of


class Error(Exception):
    """A file was not read. str() of it is text, cause and remedy in one."""

    failure: Failure
    """All that is known."""

    path: Optional[str]
    """What was to be opened; None for bytes and file objects."""

    def __init__(self, failure: Failure, path: Optional[str] = None) -> None:
        super().__init__(failure, path)
        self.failure = failure
        self.path = path

    @property
    def code(self) -> ErrorCode:
        """What went wrong, for programs."""
        return self.failure.code

    @property
    def line(self) -> Optional[int]:
        """Where reading ended, counted from 1; None when there is no place."""
        return self.failure.line

    @property
    def column(self) -> Optional[int]:
        """In characters, counted from 1; None like the line."""
        return self.failure.column

    @property
    def text(self) -> str:
        """What happened."""
        return self.failure.text

    @property
    def cause(self) -> str:
        """The likely cause; may be empty."""
        return self.failure.cause

    @property
    def remedy(self) -> str:
        """What to do."""
        return self.failure.remedy

    def __reduce__(self) -> Tuple[Type["Error"], Tuple[Failure, Optional[str]]]:
        # That of OSError would leave out what it does not know.
        return type(self), (self.failure, self.path)

    def __str__(self) -> str:
        text = self.failure.description
        return text if self.path is None or self.path in text else f"{self.path}: {text}"

    @staticmethod
    def of(failure: Failure, source: Source) -> "Error":
        """The exception for a failure: a FileError where the file itself is the reason."""
        kind, _ = _FILE_ERRORS.get(failure.code, (Error, 0))
        return kind(failure, path_of(source))


class FileError(Error, OSError):
    """The system could not hand over the file."""

    def __init__(self, failure: Failure, path: Optional[str] = None) -> None:
        super().__init__(failure, path)
        self.errno = _FILE_ERRORS.get(failure.code, (FileError, errno.EIO))[1]
        self.strerror = failure.text
        self.filename = path


class NotFoundError(FileError, FileNotFoundError):
    """There is no such file."""


class IsFolderError(FileError, IsADirectoryError):
    """The path is that of a folder."""


class NotPermittedError(FileError, PermissionError):
    """The file may not be read."""


_FILE_ERRORS: Dict[ErrorCode, Tuple[Type[Error], int]] = {
    ErrorCode.NOT_FOUND: (NotFoundError, errno.ENOENT),
    ErrorCode.IS_FOLDER: (IsFolderError, errno.EISDIR),
    ErrorCode.NOT_PERMITTED: (NotPermittedError, errno.EACCES),
    ErrorCode.NOT_READABLE: (FileError, errno.EIO),
}
