# SPDX-License-Identifier: Apache-2.0
"""How long reading takes and how much memory, beside other readers for Python that are installed.

    python beside_others.py [TRANSACTIONS [SECONDS]]

All read the same generated document and ask every transaction for the same six values; what they saw is compared
before a time counts. Each runs in a process of its own, and the time is the median of as many reads as fit into SECONDS
(10), in seconds of the processor, which other processes do not lengthen much. Memory is the peak that the first read
adds to the process with the reader and the bytes of the document in it.
"""

import decimal
import importlib
import io
import json
import pathlib
import statistics
import subprocess
import sys
import time
from typing import Any, Callable, Dict, List, Tuple

#: What a reader saw: how many transactions, the sum of their amounts, the letters of names and memos.
Seen = Tuple[int, str, int]


def document(count: int) -> bytes:
    """A statement as a bank writes it, in OFX 2, with different values in every transaction."""
    rows = "".join(
        f"<STMTTRN><TRNTYPE>DEBIT</TRNTYPE><DTPOSTED>2024{i % 12 + 1:02}{i % 28 + 1:02}120000</DTPOSTED>"
        f"<TRNAMT>-{i % 9000 + 1}.{i % 90 + 10}</TRNAMT><FITID>F{i:08}</FITID><NAME>Payee number {i % 5000}</NAME>"
        f"<MEMO>Memo of transaction {i}</MEMO></STMTTRN>\n"
        for i in range(count)
    )
    status = "<STATUS><CODE>0</CODE><SEVERITY>INFO</SEVERITY></STATUS>"
    return (
        '<?xml version="1.0" encoding="UTF-8" standalone="no"?>\n<?OFX OFXHEADER="200" VERSION="211" SECURITY="NONE" '
        'OLDFILEUID="NONE" NEWFILEUID="NONE"?>\n'
        f"<OFX><SIGNONMSGSRSV1><SONRS>{status}<DTSERVER>20250101120000</DTSERVER><LANGUAGE>ENG</LANGUAGE>"
        f"</SONRS></SIGNONMSGSRSV1><BANKMSGSRSV1><STMTTRNRS><TRNUID>1</TRNUID>{status}<STMTRS><CURDEF>USD</CURDEF>"
        "<BANKACCTFROM><BANKID>121000248</BANKID><ACCTID>42</ACCTID><ACCTTYPE>CHECKING</ACCTTYPE></BANKACCTFROM>"
        f"<BANKTRANLIST><DTSTART>20240101</DTSTART><DTEND>20241231</DTEND>{rows}</BANKTRANLIST>"
        "<LEDGERBAL><BALAMT>1.00</BALAMT><DTASOF>20241231</DTASOF></LEDGERBAL></STMTRS></STMTTRNRS></BANKMSGSRSV1>"
        "</OFX>"
    ).encode()


def seen(transactions: Any, *names: str) -> Seen:
    """Asks for date, amount, name, memo, identifier and type of each."""
    count, total, letters = 0, decimal.Decimal(), 0
    day, amount, name, memo, identifier, kind = names
    for each in transactions:
        count += 1
        total += getattr(each, amount)
        letters += len(getattr(each, name)) + len(getattr(each, memo))
        getattr(each, day), getattr(each, identifier), getattr(each, kind)
    return count, str(total.normalize()), letters


def with_brackwell(data: bytes) -> Seen:
    brackwell = importlib.import_module("brackwell")
    return seen(brackwell.open(data).transactions, "date", "amount", "payee", "memo", "id", "type")


def with_brackwell_into_a_table(data: bytes) -> Seen:
    brackwell, pyarrow = importlib.import_module("brackwell"), importlib.import_module("pyarrow")
    compute = importlib.import_module("pyarrow.compute")
    table = pyarrow.table(brackwell.open(data))
    letters = sum(compute.sum(compute.utf8_length(table[name])).as_py() for name in ("payee", "memo"))
    return table.num_rows, str(compute.sum(table["amount"]).as_py().normalize()), letters


def with_ofxparse(data: bytes) -> Seen:
    parsed = importlib.import_module("ofxparse").OfxParser.parse(io.BytesIO(data))
    return seen(parsed.account.statement.transactions, "date", "amount", "payee", "memo", "id", "type")


def with_ofxtools(data: bytes) -> Seen:
    tree = importlib.import_module("ofxtools.Parser").OFXTree()
    tree.parse(io.BytesIO(data))
    statement = tree.convert().statements[0]
    return seen(statement.transactions, "dtposted", "trnamt", "name", "memo", "fitid", "trntype")


READERS: Dict[str, Tuple[str, Callable[[bytes], Seen]]] = {
    "brackwell, objects": ("brackwell", with_brackwell),
    "brackwell, Arrow table": ("brackwell", with_brackwell_into_a_table),
    "ofxparse": ("ofxparse", with_ofxparse),
    "ofxtools": ("ofxtools", with_ofxtools),
}


def peak_kib() -> int:
    """The most memory that the process had so far."""
    lines = pathlib.Path("/proc/self/status").read_text(encoding="ascii").splitlines()
    return next(int(line.split()[1]) for line in lines if line.startswith("VmHWM"))


def measure(name: str, count: int, seconds: float) -> None:
    """Prints what one reader took, as JSON."""
    read = READERS[name][1]
    # Whatever a reader loads on its first use is loaded then.
    read(document(1))
    data = document(count)
    before = peak_kib()
    result = read(data)
    memory = peak_kib() - before
    times: List[float] = []
    while not times or (sum(times) < seconds and len(times) < 100):
        begin = time.process_time()
        read(data)
        times.append(time.process_time() - begin)
    print(json.dumps({"seen": result, "seconds": statistics.median(times), "reads": len(times), "kib": memory}))


def compare(count: int, seconds: float) -> None:
    """Prints one table."""
    print(f"{count} transactions, {len(document(count)) / 1e6:.1f} MB")
    print(f"{'reader':24} {'version':>9} {'seconds':>10} {'us each':>9} {'times':>8} {'MiB':>8} {'reads':>6}")
    first: Any = None
    for name, (package, _) in READERS.items():
        command = [sys.executable, __file__, "--measure", name, str(count), str(seconds)]
        # Nothing of another reader's source is shown, as a traceback would.
        done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False)
        if done.returncode != 0:
            print(f"{name:24} is not installed, or does not read the document")
            continue
        result = json.loads(done.stdout)
        first = first or result
        if result["seen"] != first["seen"]:
            print(f"{name:24} saw {result['seen']}, not {first['seen']}")
            continue
        version = importlib.import_module("importlib.metadata").version(package)
        print(
            f"{name:24} {version:>9} {result['seconds']:10.4f} {result['seconds'] / count * 1e6:9.2f} "
            f"{result['seconds'] / first['seconds']:8.2f} {result['kib'] / 1024:8.1f} {result['reads']:6}"
        )


if __name__ == "__main__":
    if sys.argv[1:2] == ["--measure"]:
        measure(sys.argv[2], int(sys.argv[3]), float(sys.argv[4]))
    else:
        compare(int((sys.argv[1:2] or ["2000"])[0]), float((sys.argv[2:3] or ["10"])[0]))
