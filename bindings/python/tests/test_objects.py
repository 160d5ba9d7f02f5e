# SPDX-License-Identifier: Apache-2.0
"""Objects of documents: what they say, and that they are what people of Python expect."""

import copy
import datetime
import decimal
import enum
import gc
import html.parser
import pathlib
import pickle
from typing import Any, Dict, Iterator, List

import pytest

import brackwell
from conftest import lists_of, statement, transaction


def records_in(value: Any) -> Iterator[Any]:
    """An object and all objects in it."""
    if isinstance(value, tuple) or hasattr(value, "__arrow_c_stream__"):
        for each in value:
            yield from records_in(each)
    elif hasattr(value, "field_names"):
        yield value
        for field in value.as_dict().values():
            yield from records_in(field)


def all_records(document: brackwell.Document) -> Iterator[Any]:
    for each in lists_of(document):
        yield from records_in(each)
    yield from records_in((document.listed_accounts, document.changes, document.failures))
    yield from records_in((document.sign_on, document.profile))


PLAIN = (str, decimal.Decimal, datetime.date, datetime.datetime, bool, int, enum.Enum, tuple, type(None))


def test_every_field_has_a_type_of_python(example: pathlib.Path) -> None:
    count = 0
    for record in all_records(brackwell.open(example)):
        for name, value in record.as_dict().items():
            assert isinstance(value, PLAIN) or type(value).__module__ == "brackwell._core", (record, name)
            assert value == getattr(record, name)
            count += 1
    assert count


def test_no_field_of_the_library_is_missing(example: pathlib.Path) -> None:
    for record in all_records(brackwell.open(example)):
        if hasattr(record, "_unlisted_fields"):
            assert record._unlisted_fields() == [], record


def test_a_statement_says_what_its_document_says(checking: pathlib.Path) -> None:
    (account,) = brackwell.open(checking).accounts
    assert (account.number, account.bank_id, account.currency) == ("0081443920", "704170042", "GBP")
    assert account.type is brackwell.BankAccountType.CHECKING and not account.is_card
    assert account.start == datetime.datetime(2024, 3, 1, tzinfo=datetime.timezone.utc)
    first = account.transactions[0]
    assert first.date == datetime.date(2024, 3, 1) and type(first.date) is datetime.date
    assert first.amount == decimal.Decimal("-845.00")
    assert (first.payee, first.memo, first.type) == ("Harbour Row Lettings", "Rent March", "DIRECTDEBIT")
    assert first.id == "20240301-001" and first.check_number is None
    assert "<TRNAMT>-845.00" in (first.source_text or "")


def test_a_card_is_an_account_without_a_bank(example: pathlib.Path) -> None:
    for account in brackwell.open(example).accounts:
        of_bank, of_card = account.bank_account, account.credit_card_account
        assert of_bank is None if account.is_card else of_card is None
        named = of_card if account.is_card else of_bank
        assert account.number == (named.number if named is not None else None)


def test_the_payee_is_found_wherever_it_stands() -> None:
    rows = [transaction("1") + "<NAME>Alone", transaction("2") + "<PAYEE><NAME>Inside<CITY>X</PAYEE>", transaction("3")]
    alone, inside, none = brackwell.open(statement(*rows)).transactions
    assert (alone.payee, inside.payee, none.payee) == ("Alone", "Inside", None)
    assert inside.payee_details is not None and inside.payee_details.city == "X"


def test_what_is_no_amount_or_date_is_none_and_its_text_is_there() -> None:
    (only,) = brackwell.open(statement(transaction("much", day="soon"))).transactions
    assert only.amount is None and only.date is None and only.date_posted is None
    assert only.date_posted_text == "soon"


def test_days_that_lie_far_apart_do_not_take_each_others_place() -> None:
    first = datetime.date(1900, 1, 1)
    days = [first + datetime.timedelta(days=days) for days in (*range(3000), 0, 1024, 0, 1024)]
    document = brackwell.open(statement(*(transaction("1", f"{day:%Y%m%d}") for day in days)))
    assert [each.date for each in document.transactions] == days


def test_no_context_of_the_caller_rounds_an_amount() -> None:
    digits = "1234567890.123456789012345678901234567"
    with decimal.localcontext(decimal.Context(prec=3, Emax=5, Emin=-5)) as context:
        amount = brackwell.open(statement(transaction(digits))).transactions[0].amount
        assert not context.flags[decimal.Inexact]
    assert str(amount) == digits


def test_a_subclass_may_have_an_attribute_of_its_own(checking: pathlib.Path) -> None:
    class Halved(brackwell.Transaction):
        @property
        def amount(self) -> decimal.Decimal:  # type: ignore[override]
            return self.as_dict()["amount"] / 2  # type: ignore[no-any-return]

    whole = brackwell.open(checking).transactions[0]
    half = Halved.__new__(Halved)
    half.__setstate__(whole.as_dict())
    assert (half.amount, half.payee) == (decimal.Decimal("-422.5"), whole.payee)


def test_attributes_are_found_by_any_text_of_their_name(checking: pathlib.Path) -> None:
    transaction = brackwell.open(checking).transactions[0]
    assert getattr(transaction, "".join(["am", "ount"])) == transaction.amount
    with pytest.raises(AttributeError, match="amounts"):
        getattr(transaction, "amounts")


def test_an_object_without_values_has_no_attributes() -> None:
    with pytest.warns(RuntimeWarning), pytest.raises(TypeError):
        brackwell.Transaction.__new__(brackwell.Transaction).amount


def test_what_goes_wrong_in_an_attribute_is_raised(checking: pathlib.Path) -> None:
    class Refusing(Dict[str, Any]):
        def get(self, *_: Any) -> Any:
            raise LookupError("refused")

    restored = brackwell.Transaction.__new__(brackwell.Transaction)
    restored.__setstate__(Refusing())
    with pytest.raises(LookupError, match="refused"):
        restored.amount


def test_a_moment_that_datetime_does_not_have_is_none() -> None:
    (first,) = brackwell.open(statement(transaction("1", day="00010101"))).transactions
    assert first.date == datetime.date(1, 1, 1)


def test_investments_have_words_amounts_and_objects(investments: pathlib.Path) -> None:
    document = brackwell.open(investments)
    account = document.investments[0]
    first = account.transactions[0]
    assert first.kind is brackwell.InvestmentTransactionKind.BUY_STOCK
    assert first.trade_type is brackwell.TradeType.BUY
    assert first.units == 100 and first.total == decimal.Decimal("-4516.5")
    assert first.date == datetime.date(2024, 1, 5) and first.trade_date is not None and first.trade_date.hour == 9
    assert first.text("unit_price") == "45.10"
    with pytest.raises(AttributeError):
        first.text("no_such_field")
    foreign = account.transactions[2]
    assert foreign.currency is not None and foreign.currency.symbol == "EUR"
    security = document.find_security(first.security_id, first.security_id_type)
    assert security is not None and security.id == first.security_id
    assert document.find_security("nothing like it") is None


def test_lists_are_sequences(checking: pathlib.Path) -> None:
    transactions = brackwell.open(checking).transactions
    assert len(transactions) == len(list(transactions)) == 26
    assert transactions[-1] == transactions[25] and transactions[-1] in transactions
    assert transactions[2:5] == [transactions[2], transactions[3], transactions[4]]
    assert transactions[::-1] == list(reversed(transactions))
    assert transactions.index(transactions[3]) == 3 and transactions.count(transactions[3]) == 1
    assert transactions.count("x") == 0 and "x" not in transactions
    for index in (26, -27):
        with pytest.raises(IndexError):
            transactions[index]
    with pytest.raises(ValueError):
        transactions.index("x")


def test_equality_and_hashes_go_by_value(example: pathlib.Path) -> None:
    first, second = brackwell.open(example), brackwell.open(example.read_bytes())
    assert first == second and hash(first) == hash(second) and first != brackwell.open(statement())
    for one, other in zip(all_records(first), all_records(second)):
        assert one == other and hash(one) == hash(other) and not one != other
        assert one != "something else" and one is not other
    for a, b in zip(lists_of(first), lists_of(second)):
        assert a == b and hash(a) == hash(b)


def test_transactions_that_differ_are_not_equal() -> None:
    rows = [transaction("1"), transaction("2"), transaction("1", memo="x"), transaction("1", day="20240201")]
    assert len(set(brackwell.open(statement(*rows, *rows)).transactions)) == 4


def test_the_source_text_does_not_count_for_equality() -> None:
    one, other = brackwell.open(statement(transaction("1"), transaction("1.00"))).transactions
    assert one == other and one.source_text != other.source_text


@pytest.mark.parametrize("protocol", range(2, pickle.HIGHEST_PROTOCOL + 1))
def test_everything_travels(protocol: int, example: pathlib.Path) -> None:
    document = brackwell.open(example)
    assert pickle.loads(pickle.dumps(document, protocol)) == document
    for each in lists_of(document):
        assert pickle.loads(pickle.dumps(each, protocol)) == each
    for record in all_records(document):
        restored = pickle.loads(pickle.dumps(record, protocol))
        assert restored == record and hash(restored) == hash(record) and repr(restored) == repr(record)


def test_a_record_travels_without_its_document_and_a_list_with_it(checking: pathlib.Path) -> None:
    document = brackwell.open(checking)
    assert len(pickle.dumps(document.transactions[0])) < len(document.data) / 2
    many = pickle.dumps([account for account in document.accounts] * 10)
    assert len(many) < len(document.data) + 2000


def test_a_restored_document_is_read_in_the_same_way() -> None:
    document = brackwell.open(statement(transaction("-0,99")), as_written=False)
    assert pickle.loads(pickle.dumps(document)).transactions[0].amount == -99


def test_a_copy_keeps_no_document_alive(checking: pathlib.Path) -> None:
    original = brackwell.open(checking).transactions[0]
    assert copy.copy(original) == original == copy.deepcopy(original)


def test_what_a_newer_version_adds_is_none_in_an_old_pickle() -> None:
    payee = brackwell.Payee.__new__(brackwell.Payee)
    payee.__setstate__({"name": "Old"})
    assert payee.name == "Old" and payee.city is None


def test_restored_investments_say_that_they_have_no_text(investments: pathlib.Path) -> None:
    restored = pickle.loads(pickle.dumps(brackwell.open(investments).positions[0]))
    with pytest.raises(ValueError, match="pickle"):
        restored.text("units")


def test_objects_keep_their_document(checking: pathlib.Path) -> None:
    first = brackwell.open(checking).accounts[0].transactions[0]
    gc.collect()
    assert first.payee == "Harbour Row Lettings"
    iterator = iter(brackwell.open(checking).transactions)
    gc.collect()
    assert next(iterator) == first


def test_nothing_can_be_made_or_changed(checking: pathlib.Path) -> None:
    first = brackwell.open(checking).transactions[0]
    with pytest.raises(AttributeError):
        first.amount = decimal.Decimal(1)  # type: ignore[misc]
    for made in (brackwell.Transaction, brackwell.Document, brackwell.Transactions):
        with pytest.raises(TypeError):
            made()


def test_representations_say_what_is_there(checking: pathlib.Path) -> None:
    document = brackwell.open(checking)
    assert repr(document).endswith("1 account, 26 transactions, 0 investment accounts, 0 findings>")
    assert str(checking) in repr(document)
    assert repr(document.transactions) == "<Transactions: 26>"
    assert repr(document.transactions[0]).startswith(
        "Transaction(date=datetime.date(2024, 3, 1), amount=Decimal('-845'), payee='Harbour Row Lettings'"
    )


class WellFormed(html.parser.HTMLParser):
    """Sees that every tag is closed in its turn."""

    def __init__(self) -> None:
        super().__init__()
        self.opened: List[str] = []
        self.text = ""

    def handle_starttag(self, tag: str, attrs: Any) -> None:
        self.opened.append(tag)

    def handle_endtag(self, tag: str) -> None:
        assert self.opened.pop() == tag

    def handle_data(self, data: str) -> None:
        self.text += data


def text_of_html(value: Any) -> str:
    parser = WellFormed()
    parser.feed(value._repr_html_())
    parser.close()
    assert not parser.opened
    return parser.text


def test_notebooks_show_tables(example: pathlib.Path) -> None:
    document = brackwell.open(example)
    text_of_html(document)
    for each in [*lists_of(document), *all_records(document)]:
        text_of_html(each)


def test_notebooks_show_the_first_and_say_how_many_there_are(checking: pathlib.Path) -> None:
    assert "Transactions: 26, of which 20 are shown" in text_of_html(brackwell.open(checking).transactions)


def test_notebooks_run_nothing_of_a_document() -> None:
    document = brackwell.open(statement(transaction("1", memo="&lt;script&gt;alert(1)&lt;/script&gt;")))
    assert "<script>" not in document._repr_html_()
    assert "<script>alert(1)</script>" in text_of_html(document)


def test_secrets_are_attributes_and_stand_in_no_representation() -> None:
    data = b"OFXHEADER:100\n\n<OFX><SIGNONMSGSRSV1><SONRS><STATUS><CODE>0<SEVERITY>INFO</STATUS><USERKEY>hush" \
        b"<SESSCOOKIE>hush<ACCESSKEY>hush</SONRS></SIGNONMSGSRSV1></OFX>"
    sign_on = brackwell.open(data).sign_on
    assert sign_on is not None and sign_on.user_key == sign_on.session_cookie == sign_on.access_key == "hush"
    assert "hush" not in repr(sign_on) and "hush" not in sign_on._repr_html_()


def test_every_class_and_attribute_says_what_it_is() -> None:
    for name in brackwell.__all__:
        value = getattr(brackwell, name)
        assert value.__doc__ or not isinstance(value, type), name
        for attribute, member in vars(value).items() if isinstance(value, type) else ():
            if isinstance(member, property) and not attribute.startswith("_"):
                assert member.__doc__, (name, attribute)
