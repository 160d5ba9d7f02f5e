# SPDX-License-Identifier: Apache-2.0
"""Threads, processes, and memory that comes back."""

import concurrent.futures
import gc
import multiprocessing
import os
import pathlib
import threading
import time

import pytest

import brackwell
from conftest import statement, transaction

#: How often documents are read where leaks are looked for; a million takes some minutes.
READS = int(os.environ.get("BRACKWELL_PYTHON_READS", "20000"))


def test_others_run_while_a_document_is_read() -> None:
    data = statement(*(transaction(str(i), memo="m" * 50) for i in range(200_000)))
    ticks = 0
    done = threading.Event()

    def tick() -> None:
        nonlocal ticks
        while not done.is_set():
            ticks += 1
            time.sleep(0.001)

    thread = threading.Thread(target=tick)
    thread.start()
    before = ticks
    document = brackwell.open(data)
    during = ticks - before
    done.set()
    thread.join()
    assert len(document.transactions) == 200_000
    assert during > 5


def test_threads_share_a_document(example: pathlib.Path) -> None:
    document = brackwell.open(example)
    wanted = repr([list(document.transactions), list(document.investments), list(document.securities)])

    def ask(_: int) -> str:
        return repr([list(document.transactions), list(document.investments), list(document.securities)])

    with concurrent.futures.ThreadPoolExecutor(4) as pool:
        assert set(pool.map(ask, range(16))) == {wanted}


def amount_of(record: brackwell.Transaction) -> str:
    return str(record.amount)


@pytest.mark.parametrize("method", multiprocessing.get_all_start_methods())
def test_processes_are_handed_records(method: str, checking: pathlib.Path) -> None:
    transactions = list(brackwell.open(checking).transactions)
    context = multiprocessing.get_context(method)
    with concurrent.futures.ProcessPoolExecutor(2, context) as pool:
        assert list(pool.map(amount_of, transactions)) == [str(each.amount) for each in transactions]


def resident_kib() -> int:
    """The memory that the process has now."""
    with open("/proc/self/statm", encoding="ascii") as file:
        return int(file.read().split()[1]) * os.sysconf("SC_PAGE_SIZE") // 1024


def use(data: bytes, path: pathlib.Path) -> None:
    """Everything that keeps something."""
    document = brackwell.open(data)
    repr(document), document._repr_html_(), hash(document), document.transactions.columns()
    for account in (*document.accounts, *document.investments):
        repr(account), account.as_dict(), hash(account)
        list(account.transactions)
    for each in (document.transactions, document.positions, document.securities, document.findings):
        each.__arrow_c_stream__(), each.__arrow_c_schema__()
    try:
        brackwell.open(data[: len(data) // 2], repair=False)
    except brackwell.Error as error:
        str(error)
    list(brackwell.read_many([path, b""], threads=1))


@pytest.mark.skipif(not os.path.exists("/proc/self/statm"), reason="memory is not counted here")
def test_memory_stays_flat(checking: pathlib.Path, investments: pathlib.Path) -> None:
    data = [checking.read_bytes(), investments.read_bytes()]
    for _ in range(30):
        for each in data:
            use(each, checking)
    gc.collect()
    before = resident_kib()
    for _ in range(max(READS // 200, 1)):
        for each in data:
            use(each, checking)
    for _ in range(READS):
        brackwell.open(data[0]).transactions[0].amount
    gc.collect()
    after = resident_kib()
    print(f"{READS} reads: {before} KiB before, {after} KiB after")
    # A leak of ten bytes for each read, but no less than what the system hands out at once.
    assert after - before < max(1024, READS * 10 // 1024)
