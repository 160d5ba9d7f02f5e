# SPDX-License-Identifier: Apache-2.0
"""The documents that the tests read, and what all of them have."""

import pathlib
from typing import Any, List

import pytest

import brackwell

EXAMPLES = pathlib.Path(__file__).parents[3] / "examples"


@pytest.fixture
def checking() -> pathlib.Path:
    return EXAMPLES / "checking.ofx"


@pytest.fixture
def investments() -> pathlib.Path:
    return EXAMPLES / "investments.ofx"


@pytest.fixture
def every_element() -> pathlib.Path:
    return EXAMPLES / "every_element.ofx"


@pytest.fixture(params=sorted(EXAMPLES.glob("*.ofx")), ids=lambda path: path.stem)
def example(request: pytest.FixtureRequest) -> pathlib.Path:
    path: pathlib.Path = request.param
    return path


def statement(*transactions: str, currency: str = "GBP") -> bytes:
    """A document with one account and these transactions, each the lines of an STMTTRN."""
    body = "".join(f"<STMTTRN>{each}</STMTTRN>" for each in transactions)
    return (
        "OFXHEADER:100\nDATA:OFXSGML\nVERSION:103\nENCODING:UTF-8\n\n"
        f"<OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>1<STMTRS><CURDEF>{currency}"
        "<BANKACCTFROM><BANKID>7<ACCTID>42<ACCTTYPE>CHECKING</BANKACCTFROM>"
        f"<BANKTRANLIST>{body}</BANKTRANLIST></STMTRS></STMTTRNRS></BANKMSGSRSV1></OFX>"
    ).encode()


def transaction(amount: str, day: str = "20240131", memo: str = "") -> str:
    return f"<TRNTYPE>DEBIT<DTPOSTED>{day}<TRNAMT>{amount}<FITID>1" + (f"<MEMO>{memo}" if memo else "")


def lists_of(document: brackwell.Document) -> List[Any]:
    return [
        document.accounts,
        document.transactions,
        document.investments,
        document.investment_transactions,
        document.positions,
        document.securities,
        document.findings,
    ]
