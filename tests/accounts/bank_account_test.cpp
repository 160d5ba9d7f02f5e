// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

using Account = std::shared_ptr<TvOFXBankAccount>;

struct TypeRow {
    std::string text;
    TvOFXBankAccountType type;
};
const std::array<TypeRow, 4> kTypes{{{"CHECKING", TvOFXBankAccountTypeChecking},
                                     {"SAVINGS", TvOFXBankAccountTypeSavings},
                                     {"MONEYMARKET", TvOFXBankAccountTypeMoneyMarket},
                                     {"CREDITLINE", TvOFXBankAccountTypeCreditLine}}};

/// One text of a bank account: its element, archive key, getter and setter.
struct TextRow {
    std::string element;
    std::string key;
    OptionalText (TvOFXBankAccount::*get)() const noexcept;
    void (TvOFXBankAccount::*set)(TextArgument);
};
const std::array<TextRow, 4> kTexts{
    {{"BANKID", "bID", &TvOFXBankAccount::bankID, &TvOFXBankAccount::setBankID},
     {"BRANCHID", "branchID", &TvOFXBankAccount::branchID, &TvOFXBankAccount::setBranchID},
     {"ACCTID", "aID", &TvOFXBankAccount::accountID, &TvOFXBankAccount::setAccountID},
     {"ACCTKEY", "aKC", &TvOFXBankAccount::acctKeyChecksum, &TvOFXBankAccount::setAcctKeyChecksum}}};

Account full() {
    return TvOFXBankAccount::initWithParserDict(ParseDictionary{{"BANKID", "121000248"},
                                                                {"BRANCHID", "07"},
                                                                {"ACCTID", "0001"},
                                                                {"ACCTTYPE", "SAVINGS"},
                                                                {"ACCTKEY", "7F"}});
}

}  // namespace

TEST_CASE("the numbers of the bank account types are fixed") {
    CHECK(TvOFXBankAccountTypeUnknown == 0);
    for (std::size_t i = 0; i < kTypes.size(); ++i) CHECK(kTypes[i].type == i + 1);
    CHECK(std::is_same_v<std::underlying_type_t<TvOFXBankAccountType>, std::uint64_t>);
}

TEST_CASE("four account type texts are recognised, and written again") {
    for (const TypeRow& row : kTypes) {
        CAPTURE(row.text);
        CHECK(TvOFXBankAccount::accountTypeFromString(row.text) == row.type);
        CHECK(TvOFXBankAccount::accountTypeStringFromAccountType(row.type) == row.text);
    }
}

TEST_CASE("any other account type text is unknown") {
    for (const std::string text :
         {"", "CD", "checking", "Checking", " CHECKING", "CHECKING ", "CHECKINGS", "CHECK"}) {
        CAPTURE(text);
        CHECK(TvOFXBankAccount::accountTypeFromString(text) == TvOFXBankAccountTypeUnknown);
    }
}

TEST_CASE("an unknown account type, or a number beyond them, is written as an empty text") {
    for (const std::uint64_t type :
         {std::uint64_t{0}, std::uint64_t{5}, std::uint64_t{6}, ~std::uint64_t{0}}) {
        CAPTURE(type);
        CHECK(TvOFXBankAccount::accountTypeStringFromAccountType(static_cast<TvOFXBankAccountType>(type)) ==
              "");
    }
}

TEST_CASE("a bank account made from numbers has these, and neither branch nor key") {
    const Account account = TvOFXBankAccount::initWithBankID("12", "34", TvOFXBankAccountTypeMoneyMarket);
    CHECK(shown(account->bankID()) == "12");
    CHECK(shown(account->accountID()) == "34");
    CHECK(account->accountType() == TvOFXBankAccountTypeMoneyMarket);
    CHECK(shown(account->branchID()) == "nothing");
    CHECK(shown(account->acctKeyChecksum()) == "nothing");
    CHECK_FALSE(account->originalParseData());
    CHECK(account->ofxVersion() == 0);
    CHECK_FALSE(account->helperObject());
}

TEST_CASE("a bank account may be made without bank and number") {
    const Account account = TvOFXBankAccount::initWithBankID({}, {}, TvOFXBankAccountTypeUnknown);
    CHECK(shown(account->bankID()) == "nothing");
    CHECK(shown(account->accountID()) == "nothing");
}

TEST_CASE("each text of a bank account is read from its element") {
    for (const TextRow& row : kTexts) {
        CAPTURE(row.element);
        const Account account =
            TvOFXBankAccount::initWithParserDict(ParseDictionary{{row.element, "  as is "}});
        CHECK(shown((account.get()->*row.get)()) == "  as is ");
        for (const TextRow& other : kTexts)
            if (other.element != row.element) CHECK(shown((account.get()->*other.get)()) == "nothing");
    }
}

TEST_CASE("the type of a bank account is read from its element") {
    for (const TypeRow& row : kTypes) {
        CAPTURE(row.text);
        const Account account = TvOFXBankAccount::initWithParserDict(ParseDictionary{{"ACCTTYPE", row.text}});
        CHECK(account->accountType() == row.type);
    }
    CHECK(TvOFXBankAccount::initWithParserDict(ParseDictionary{{"ACCTTYPE", "CD"}})->accountType() ==
          TvOFXBankAccountTypeUnknown);
}

TEST_CASE("a value of another kind leaves a field of a bank account empty") {
    const ParseDictionary aggregate{{"X", "1"}};
    for (const ParseValue& value : {ParseValue::array({"a", "b"}), ParseValue(aggregate),
                                    ParseValue(ParseDictionary()), ParseValue::array({"a", aggregate})}) {
        for (const TextRow& row : kTexts) {
            CAPTURE(row.element);
            const Account account =
                TvOFXBankAccount::initWithParserDict(ParseDictionary{{row.element, value}});
            CHECK(shown((account.get()->*row.get)()) == "nothing");
        }
        const Account account = TvOFXBankAccount::initWithParserDict(ParseDictionary{{"ACCTTYPE", value}});
        CHECK(account->accountType() == TvOFXBankAccountTypeUnknown);
    }
}

TEST_CASE("an account type that stands twice is a list and so unknown") {
    const Account account =
        TvOFXBankAccount::initWithParserDict(parsed("<ACCTTYPE>CHECKING<ACCTTYPE>CHECKING<BANKID>1"));
    CHECK(account->accountType() == TvOFXBankAccountTypeUnknown);
    CHECK(shown(account->bankID()) == "1");
}

TEST_CASE("names of bank account elements are compared exactly") {
    const Account account = TvOFXBankAccount::initWithParserDict(ParseDictionary{
        {"bankid", "1"}, {"BANKID2", "2"}, {"INTU.ACCTID", "3"}, {"BRANCH", "4"}, {"ACCTKEYS", "5"}});
    for (const TextRow& row : kTexts) {
        CAPTURE(row.element);
        CHECK(shown((account.get()->*row.get)()) == "nothing");
    }
}

TEST_CASE("the order of a bank account's elements carries no meaning") {
    const Account account = TvOFXBankAccount::initWithParserDict(ParseDictionary{{"ACCTKEY", "7F"},
                                                                                 {"ACCTTYPE", "SAVINGS"},
                                                                                 {"ACCTID", "0001"},
                                                                                 {"BRANCHID", "07"},
                                                                                 {"BANKID", "121000248"}});
    CHECK(account->description() == full()->description());
}

TEST_CASE("no node makes an empty bank account") {
    const Account account = TvOFXBankAccount::initWithParserDict(std::nullopt);
    REQUIRE(account);
    for (const TextRow& row : kTexts) CHECK(shown((account.get()->*row.get)()) == "nothing");
    CHECK(account->accountType() == TvOFXBankAccountTypeUnknown);
}

TEST_CASE("a bank account keeps no parse data, so its OFX text is empty") {
    const Account account = full();
    CHECK_FALSE(account->originalParseData());
    CHECK(account->ofxString() == "");
    CHECK(account->ofxVersion() == 0);
    CHECK_FALSE(account->helperObject());
}

TEST_CASE("each text of a bank account can be set, to an empty one, and to none") {
    for (const TextRow& row : kTexts) {
        CAPTURE(row.element);
        const Account account = full();
        (account.get()->*row.set)("new");
        CHECK(shown((account.get()->*row.get)()) == "new");
        (account.get()->*row.set)("");
        CHECK(shown((account.get()->*row.get)()) == "");
        (account.get()->*row.set)(std::nullopt);
        CHECK(shown((account.get()->*row.get)()) == "nothing");
    }
    const Account account = full();
    account->setAccountType(TvOFXBankAccountTypeCreditLine);
    CHECK(account->accountType() == TvOFXBankAccountTypeCreditLine);
}

TEST_CASE("a text of a bank account may be set from itself or from another field") {
    const Account account = full();
    account->setBankID(account->bankID());
    account->setBankID(account->bankID());
    CHECK(shown(account->bankID()) == "121000248");
    account->setBranchID(account->bankID());
    CHECK(shown(account->branchID()) == "121000248");
}

TEST_CASE("a bank account outlives the document that it was read from") {
    Account account;
    {
        const ParseDictionary tree = parsed("<A><BANKID>999<ACCTTYPE>SAVINGS</A>");
        account = TvOFXBankAccount::initWithParserDict(at(tree, {"A"}));
    }
    CHECK(shown(account->bankID()) == "999");
}

TEST_CASE("a checking account without branch and key describes itself in five lines") {
    const Account account =
        TvOFXBankAccount::initWithBankID("121000248", "0001", TvOFXBankAccountTypeChecking);
    account->setOfxVersion(102);
    CHECK(account->description() ==
          "<BANKACCTFROM>\n<BANKID>121000248\n<ACCTID>0001\n<ACCTTYPE>CHECKING\n</BANKACCTFROM>\n");
}

TEST_CASE("branch and key stand in the description of a bank account when they are there") {
    CHECK(full()->description() ==
          "<BANKACCTFROM>\n<BANKID>121000248\n<BRANCHID>07\n<ACCTID>0001\n<ACCTTYPE>SAVINGS\n<ACCTKEY>7F\n"
          "</BANKACCTFROM>\n");
}

TEST_CASE("empty branch and key are there") {
    const Account account = TvOFXBankAccount::initWithBankID("1", "2", TvOFXBankAccountTypeChecking);
    account->setBranchID("");
    account->setAcctKeyChecksum("");
    CHECK(
        account->description() ==
        "<BANKACCTFROM>\n<BANKID>1\n<BRANCHID>\n<ACCTID>2\n<ACCTTYPE>CHECKING\n<ACCTKEY>\n</BANKACCTFROM>\n");
}

TEST_CASE("bank, number and type of a bank account are written with empty values when they are missing") {
    CHECK(TvOFXBankAccount().description() ==
          "<BANKACCTFROM>\n<BANKID>\n<ACCTID>\n<ACCTTYPE>\n</BANKACCTFROM>\n");
}

TEST_CASE("a type in lower case is written with an empty value") {
    const Account account = TvOFXBankAccount::initWithParserDict(ParseDictionary{{"ACCTTYPE", "checking"}});
    CHECK(account->accountType() == TvOFXBankAccountTypeUnknown);
    CHECK(account->description().find("<ACCTTYPE>\n") != std::string::npos);
}

TEST_CASE("the leaves of a bank account's description are closed from version 200 on") {
    const std::string open =
        "<BANKACCTFROM>\n<BANKID>121000248\n<BRANCHID>07\n<ACCTID>0001\n<ACCTTYPE>SAVINGS\n<ACCTKEY>7F\n"
        "</BANKACCTFROM>\n";
    const std::string closed =
        "<BANKACCTFROM>\n<BANKID>121000248</BANKID>\n<BRANCHID>07</BRANCHID>\n<ACCTID>0001</ACCTID>\n"
        "<ACCTTYPE>SAVINGS</ACCTTYPE>\n<ACCTKEY>7F</ACCTKEY>\n</BANKACCTFROM>\n";
    struct Row {
        std::uint64_t version;
        const std::string& text;
    };
    for (const Row& row : {Row{0, open}, Row{102, open}, Row{151, open}, Row{199, open}, Row{200, closed},
                           Row{211, closed}, Row{~std::uint64_t{0}, closed}}) {
        CAPTURE(row.version);
        const Account account = full();
        account->setOfxVersion(row.version);
        CHECK(account->description() == row.text);
    }
}

TEST_CASE("nothing is escaped in the description of a bank account") {
    const Account account = TvOFXBankAccount::initWithBankID("<&>", "a & b", TvOFXBankAccountTypeUnknown);
    CHECK(account->description() ==
          "<BANKACCTFROM>\n<BANKID><&>\n<ACCTID>a & b\n<ACCTTYPE>\n</BANKACCTFROM>\n");
}

TEST_CASE("no bank account is equal to none") { CHECK_FALSE(full()->isEqualToOFXBankAccount(nullptr)); }

TEST_CASE("a bank account is equal to itself and to one that was read from the same") {
    const Account account = full();
    CHECK(account->isEqualToOFXBankAccount(account.get()));
    CHECK(account->isEqualToOFXBankAccount(full().get()));
}

TEST_CASE("bank accounts of different types are unequal, also when one type is unknown") {
    for (std::uint64_t a = 0; a <= 4; ++a)
        for (std::uint64_t b = 0; b <= 4; ++b) {
            CAPTURE(a);
            CAPTURE(b);
            const auto make = [](std::uint64_t type) {
                return TvOFXBankAccount::initWithBankID("1", "2", static_cast<TvOFXBankAccountType>(type));
            };
            CHECK(make(a)->isEqualToOFXBankAccount(make(b).get()) == (a == b));
        }
}

TEST_CASE("two bank accounts that hold nothing are equal") {
    CHECK(TvOFXBankAccount().isEqualToOFXBankAccount(std::make_unique<TvOFXBankAccount>().get()));
}

TEST_CASE("a text that differs makes bank accounts unequal, one that is missing does not") {
    for (const TextRow& row : kTexts) {
        CAPTURE(row.element);
        const Account account = full();
        const Account other = full();
        (other.get()->*row.set)("different");
        CHECK_FALSE(account->isEqualToOFXBankAccount(other.get()));
        CHECK_FALSE(other->isEqualToOFXBankAccount(account.get()));
        (other.get()->*row.set)(std::nullopt);
        CHECK(account->isEqualToOFXBankAccount(other.get()));
        CHECK(other->isEqualToOFXBankAccount(account.get()));
        (other.get()->*row.set)("");
        CHECK_FALSE(account->isEqualToOFXBankAccount(other.get()));
    }
}

TEST_CASE("the archive of a bank account has exactly the keys of its fields") {
    const auto archive = archived(*full());
    REQUIRE(archive);
    CHECK(shown(archive->decodeText("bID")) == "121000248");
    CHECK(shown(archive->decodeText("branchID")) == "07");
    CHECK(shown(archive->decodeText("aID")) == "0001");
    CHECK(shown(archive->decodeText("aKC")) == "7F");
    CHECK(archive->decodeUnsigned("aT") == 2);
    CHECK_FALSE(archive->contains("originalPD"));
    KeyedArchiver expected;
    for (const TextRow& row : kTexts) expected.encodeText(row.key, *(full().get()->*row.get)());
    expected.encodeUnsigned("aT", 2);
    KeyedArchiver actual;
    full()->encodeWithCoder(actual);
    CHECK(actual.archivedData() == expected.archivedData());
}

TEST_CASE("the archive of an empty bank account holds its type alone") {
    KeyedArchiver expected;
    expected.encodeUnsigned("aT", 0);
    KeyedArchiver actual;
    TvOFXBankAccount().encodeWithCoder(actual);
    CHECK(actual.archivedData() == expected.archivedData());
}

TEST_CASE("parse data that a bank account was given is neither archived nor restored") {
    const Account account = full();
    account->setOriginalParseData(ParseDictionary{{"BANKID", "1"}});
    KeyedArchiver without;
    full()->encodeWithCoder(without);
    KeyedArchiver with;
    account->encodeWithCoder(with);
    CHECK(with.archivedData() == without.archivedData());
    TvOFXAggregate(account->originalParseData()).encodeWithCoder(with);
    const auto archive = KeyedUnarchiver::open(with.archivedData());
    REQUIRE(archive);
    REQUIRE(archive->contains("originalPD"));
    CHECK_FALSE(TvOFXBankAccount::initWithCoder(*archive)->originalParseData());
}

TEST_CASE("a bank account comes back from its archive with every field") {
    const Account account = restored(*full());
    REQUIRE(account);
    CHECK(account->description() == full()->description());
    CHECK(account->accountType() == TvOFXBankAccountTypeSavings);
    CHECK_FALSE(account->originalParseData());
}

TEST_CASE("an empty text comes back from a bank account's archive as an empty text") {
    const Account account = TvOFXBankAccount::initWithBankID("", std::nullopt, TvOFXBankAccountTypeChecking);
    const Account back = restored(*account);
    REQUIRE(back);
    CHECK(shown(back->bankID()) == "");
    CHECK(shown(back->accountID()) == "nothing");
}

TEST_CASE("an archive without a type brings back a bank account of unknown type") {
    KeyedArchiver coder;
    coder.encodeText("bID", "1");
    const auto archive = KeyedUnarchiver::open(coder.archivedData());
    REQUIRE(archive);
    const Account account = TvOFXBankAccount::initWithCoder(*archive);
    CHECK(account->accountType() == TvOFXBankAccountTypeUnknown);
    CHECK(shown(account->bankID()) == "1");
    CHECK(shown(account->accountID()) == "nothing");
}

TEST_CASE("a type beyond the known ones comes back from a bank account's archive as its number") {
    const Account account =
        restored(*TvOFXBankAccount::initWithBankID("1", "2", static_cast<TvOFXBankAccountType>(17)));
    REQUIRE(account);
    CHECK(static_cast<std::uint64_t>(account->accountType()) == 17);
}

TEST_CASE("neither version nor helper of a bank account are archived") {
    const Account account = full();
    account->setOfxVersion(211);
    account->setHelperObject(TvOFXHelper::defaultHelper());
    const Account back = restored(*account);
    REQUIRE(back);
    CHECK(back->ofxVersion() == 0);
    CHECK_FALSE(back->helperObject());
}

TEST_CASE("a bank account names its class") { CHECK(full()->className() == "TvOFXBankAccount"); }
