# SPDX-License-Identifier: Apache-2.0
"""How long reading takes and how much memory, beside other readers for Python that are installed.

    python beside_others.py [TRANSACTIONS [SECONDS]]

All read the same generated document. "Objects" is the reading and asking every transaction for the same six values,
"table" the reading into a table of all fields; what each of them saw is compared afterwards. Each runs in a process of
its own, and the time is the least of as many reads as fit into SECONDS (10), but of five at least, in seconds of the
processor: what other processes add to it says nothing of the reader. Memory is the peak that the first read adds to the process with the reader and the bytes
of the document in it.
"""

import decimal
import importlib
import io
import json
import operator
import pathlib
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


def six_values(transactions: Any, *names: str) -> List[Tuple[Any, ...]]:
    """Date, amount, name, memo, identifier and type of each, under the names that the reader has for them."""
    values = operator.attrgetter(*names)
    return [values(each) for each in transactions]


def seen_in_objects(values: List[Tuple[Any, ...]]) -> Seen:
    total = sum((each[1] for each in values), decimal.Decimal())
    return len(values), str(total.normalize()), sum(len(each[2]) + len(each[3]) for each in values)


def seen_in_table(table: Any) -> Seen:
    compute = importlib.import_module("pyarrow.compute")
    letters = sum(compute.sum(compute.utf8_length(table[name])).as_py() for name in ("payee", "memo"))
    return table.num_rows, str(compute.sum(table["amount"]).as_py().normalize()), letters


def with_brackwell(data: bytes) -> Any:
    brackwell = importlib.import_module("brackwell")
    return six_values(brackwell.open(data).transactions, "date", "amount", "payee", "memo", "id", "type")


def opened_by_brackwell(data: bytes) -> Any:
    return importlib.import_module("brackwell").open(data)


def with_brackwell_into_a_table(data: bytes) -> Any:
    brackwell, pyarrow = importlib.import_module("brackwell"), importlib.import_module("pyarrow")
    return pyarrow.table(brackwell.open(data))


def with_ofxparse(data: bytes) -> Any:
    parsed = importlib.import_module("ofxparse").OfxParser.parse(io.BytesIO(data))
    return six_values(parsed.account.statement.transactions, "date", "amount", "payee", "memo", "id", "type")


def with_ofxtools(data: bytes) -> Any:
    tree = importlib.import_module("ofxtools.Parser").OFXTree()
    tree.parse(io.BytesIO(data))
    statement = tree.convert().statements[0]
    return six_values(statement.transactions, "dtposted", "trnamt", "name", "memo", "fitid", "trntype")


#: Reader: its package, what is timed, and what tells what it saw.
READERS: Dict[str, Tuple[str, Callable[[bytes], Any], Callable[[Any], Seen]]] = {
    "brackwell, objects": ("brackwell", with_brackwell, seen_in_objects),
    "brackwell, table": ("brackwell", with_brackwell_into_a_table, seen_in_table),
    "brackwell, opening alone": ("brackwell", opened_by_brackwell, lambda document: seen_in_table(to_arrow(document))),
    "ofxparse, objects": ("ofxparse", with_ofxparse, seen_in_objects),
    "ofxtools, objects": ("ofxtools", with_ofxtools, seen_in_objects),
}


def to_arrow(document: Any) -> Any:
    return importlib.import_module("pyarrow").table(document)


def peak_kib() -> int:
    """The most memory that the process had so far."""
    lines = pathlib.Path("/proc/self/status").read_text(encoding="ascii").splitlines()
    return next(int(line.split()[1]) for line in lines if line.startswith("VmHWM"))


def measure(name: str, count: int, seconds: float) -> None:
    """Prints what one reader took, as JSON."""
    _, read, seen_in = READERS[name]
    # Whatever a reader loads on its first use is loaded then.
    read(document(1))
    data = document(count)
    before = peak_kib()
    result = read(data)
    memory = peak_kib() - before
    seen = seen_in(result)
    del result
    times: List[float] = []
    while len(times) < 5 or (sum(times) < seconds and len(times) < 100):
        begin = time.process_time()
        read(data)
        times.append(time.process_time() - begin)
    print(json.dumps({"seen": seen, "seconds": min(times), "reads": len(times), "kib": memory}))


def compare(count: int, seconds: float) -> None:
    """Prints one table."""
    print(f"{count} transactions, {len(document(count)) / 1e6:.1f} MB")
    titles = ("seconds", "us each", "of objects", "of table", "MiB", "reads")
    print(f"{'reader':24} {'version':>9}" + "".join(f" {title:>10}" for title in titles))
    results: List[Any] = []
    for name, (package, _, _) in READERS.items():
        command = [sys.executable, __file__, "--measure", name, str(count), str(seconds)]
        # Nothing of another reader's source is shown, as a traceback would.
        done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False)
        if done.returncode != 0:
            print(f"{name:24} is not installed, or does not read the document")
            continue
        result = json.loads(done.stdout)
        results.append(result)
        if result["seen"] != results[0]["seen"]:
            print(f"{name:24} saw {result['seen']}, not {results[0]['seen']}")
            continue
        version = importlib.import_module("importlib.metadata").version(package)
        taken = result["seconds"]
        times = [taken / other["seconds"] for other in results[:2]]
        print(
            f"{name:24} {version:>9} {taken:10.4f} {taken / count * 1e6:10.2f} {times[0]:10.2f} {times[-1]:10.2f} "
            f"{result['kib'] / 1024:10.1f} {result['reads']:10}"
        )


if __name__ == "__main__":
    if sys.argv[1:2] == ["--measure"]:
        measure(sys.argv[2], int(sys.argv[3]), float(sys.argv[4]))
    else:
        compare(int((sys.argv[1:2] or ["2000"])[0]), float((sys.argv[2:3] or ["10"])[0]))
