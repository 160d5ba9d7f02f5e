// SPDX-License-Identifier: Apache-2.0
#include "open/written_amounts.h"

#include <brackwell/convert.h>

#include <array>
#include <string>
#include <vector>

#include "open/written_values.h"
#include "support/effort.h"
#include "support/random_text.h"

using namespace brackwell;
using namespace brackwell::opening;
using brackwell::tests::checkReadingsOf;
using brackwell::tests::documentOf;
using brackwell::tests::RandomText;
using brackwell::tests::ReadingRow;
using brackwell::tests::scaled;
using brackwell::tests::Texts;

namespace {

WrittenAmounts documentWith(const Texts& amounts) { return documentOf<WrittenAmounts>(amounts); }

std::optional<Decimal> prescribedReading(std::string_view text) {
    return TvOFXHelper::defaultHelper()->decimalNumberFromOFXAmountString(text);
}

/// What an import finds that was given the document's formatter.
std::optional<Decimal> readingOfImport(const WrittenAmounts& document, std::string_view text) {
    static TvOFXHelper helper;  // making one takes longer than a reading
    helper.setAmountNumberFormatter(document.formatter());
    return helper.decimalNumberFromOFXAmountString(text);
}

std::string shownKind(ReadingKind kind) {
    constexpr std::array names = {"prescribed", "by evidence", "doubtful", "ambiguous", "unreadable"};
    return names[static_cast<std::size_t>(kind)];
}

std::string shown(const AmountReading& reading) {
    return (reading.value ? reading.value->toString() + ", " : "") + shownKind(reading.how);
}

/// Each text as the document that consists of `others` and itself reads it.
void checkReadings(const std::vector<ReadingRow>& rows, const Texts& others = {}) {
    checkReadingsOf<WrittenAmounts>(rows, others, shown, readingOfImport);
}

/// A way to write numbers.
struct Style {
    std::string decimal;
    std::string group;
};

const std::vector<Style> kStyles = {{".", ","},      {",", "."},      {".", ""},       {",", ""},
                                    {".", "'"},      {",", "'"},      {".", "\u2019"}, {",", "\u2019"},
                                    {".", " "},      {",", " "},      {".", "\u00A0"}, {",", "\u00A0"},
                                    {".", "\u202F"}, {",", "\u202F"}, {".", "\u2009"}, {",", "\u2007"}};

/// What may stand around a number without changing its value, and what makes it negative.
struct Around {
    std::string before;
    std::string after;
};
const std::vector<Around> kPositives = {
    {"", ""},       {"+", ""},   {"", "+"},    {"$", ""},     {"R$ ", ""},   {"US$", ""},      {"", " R$"},
    {"\u20AC", ""}, {"", "€"},   {"£ ", ""},   {"", " kr"},   {"kr. ", ""},  {"", " z\u0142"}, {"CHF ", ""},
    {"USD", ""},    {"", "USD"}, {"", " EUR"}, {"¥", " JPY"}, {"", " CR"},   {" ", "\t"},      {"Rs.", ""},
    {"\u00A4", ""}, {"₹ ", ""},  {"+$", ""},   {"$+", ""},    {"", "+ USD"}, {"", " USD+"}};
const std::vector<Around> kNegatives = {
    {"-", ""},  {"", "-"},  {"(", ")"},      {"-$", ""},  {"$-", ""},     {"$ -", ""},  {"R$ -", ""},
    {"- ", ""}, {"", " -"}, {"($", ")"},     {"$(", ")"}, {"(", ") USD"}, {"(", " €)"}, {"\u2212", ""},
    {"–", ""},  {"", "DR"}, {"", " USD DR"}, {"", " Dr"}, {"", "- EUR"},  {"", " kr-"}, {"( ", " )"}};

std::string digits(RandomText& random, std::size_t count) {
    std::string text;
    while (count-- > 0) text += static_cast<char>('0' + random.below(10));
    return text;
}

std::string grouped(const std::string& integer, const std::string& group) {
    std::string text;
    for (std::size_t i = 0; i < integer.size(); ++i) {
        if (i > 0 && (integer.size() - i) % 3 == 0) text += group;
        text += integer[i];
    }
    return text;
}

}  // namespace

TEST_CASE("plain amounts are read the prescribed way, and a document of them needs no help") {
    const Texts plain = {"-123.45",
                         "0.00",
                         "1234567.89",
                         "5",
                         "-5",
                         "+5.00",
                         ".5",
                         "-.5",
                         "-.50",
                         "5.",
                         "1e3",
                         "1.5E-2",
                         "1.234",
                         " 7.5",
                         "1,234.56",
                         "1,234,567.89",
                         "1,23,456.78",
                         "1,23,45,678.9",
                         "1 234.50",
                         "1'234",
                         "1\u2019234.50",
                         "\u22125.00",
                         "- 5",
                         "007.10",
                         "0.125",
                         "1234.567",
                         "1,234.567",
                         "1,234.",
                         "12.3456",
                         "1.234e5",
                         "-0.99",
                         "1\u202F234\u202F567"};
    for (const std::string& text : plain) {
        CAPTURE(text);
        const WrittenAmounts document = documentWith({text});
        CHECK(document.arePlain());
        REQUIRE(prescribedReading(text));
        CHECK(document.read(text) == AmountReading{prescribedReading(text), ReadingKind::prescribed});
        CHECK(document.formatter()->numberFromString(text) == std::nullopt);
    }
    CHECK(documentWith(plain).arePlain());
    CHECK(documentWith({}).arePlain());
}

TEST_CASE("a single mark with one, two or more than three digits after it is the decimal one") {
    checkReadings({{"-0,99", "-0.99, by evidence"},
                   {"348,29", "348.29, by evidence"},
                   {"12,5", "12.5, by evidence"},
                   {"1,2345", "1.2345, by evidence"},
                   {"1234,56", "1234.56, by evidence"},
                   {",5", "0.5, by evidence"},
                   {"-,50", "-0.5, by evidence"},
                   {"5,", "5, by evidence"},
                   {"1.2345", "1.2345, prescribed"},
                   {"0,00", "0, prescribed"}});
}

TEST_CASE("a single mark is the decimal one as well where its three digits cannot be thousands") {
    checkReadings({{"0,125", "0.125, by evidence"},
                   {"-0,125", "-0.125, by evidence"},
                   {",125", "0.125, by evidence"},
                   {"1234,567", "1234.567, by evidence"},
                   {"0.125", "0.125, prescribed"},
                   {".125", "0.125, prescribed"},
                   {"1234.567", "1234.567, prescribed"}},
                  {"1.50"});
    checkReadings({{"0.125", "0.125, prescribed"}, {"1234.567", "1234.567, prescribed"}}, {"1,50"});
}

TEST_CASE("of two different marks the last is the decimal one") {
    checkReadings({{"1.234,56", "1234.56, by evidence"},
                   {"5.326,43", "5326.43, by evidence"},
                   {"1.234.567,8", "1234567.8, by evidence"},
                   {"1.234,567", "1234.567, by evidence"},
                   {"1.234,", "1234, by evidence"},
                   {"1 234,56", "1234.56, by evidence"},
                   {"1 234,567", "1234.567, by evidence"},
                   {"1'234,56", "1234.56, by evidence"},
                   {"1\u00A0234\u00A0567,5", "1234567.5, by evidence"},
                   {"1\u2009234.56", "1234.56, by evidence"},
                   {"1,234.56", "1234.56, prescribed"},
                   {"1'234.50", "1234.5, prescribed"}});
}

TEST_CASE("a mark that repeats groups") {
    checkReadings({{"1.234.567", "1234567, by evidence"},
                   {"-12.345.678", "-12345678, by evidence"},
                   {"1,234,567", "1234567, prescribed"},
                   {"1 234 567", "1234567, prescribed"},
                   {"1\u2009234", "1234, by evidence"}});
}

TEST_CASE("three digits after a single mark are read as the other amounts of the document say") {
    const std::vector<ReadingRow> standardWay = {{"1,234", "1234, prescribed"},
                                                 {"1.234", "1.234, prescribed"}};
    const std::vector<ReadingRow> commaWay = {{"1,234", "1.234, by evidence"},
                                              {"1.234", "1234, by evidence"},
                                              {"012,345", "12.345, by evidence"},
                                              {"(123.456)", "-123456, by evidence"}};
    for (const std::string other : {"0.99", "1,234.56", "1,234,567", "$12.5", "1'234.50", "1.2345"})
        checkReadings(standardWay, {other});
    for (const std::string other : {"0,99", "1.234,56", "1.234.567", "R$ 12,5", "1 234,50", "0,00", "0,125"})
        checkReadings(commaWay, {other});
    // These say nothing. The OFX standard has a comma for a decimal mark, and the prescribed reading not.
    const std::vector<ReadingRow> eitherWay = {{"1,234", "1234, doubtful"}, {"1.234", "1.234, prescribed"}};
    checkReadings(eitherWay);
    CHECK_FALSE(documentWith({"1,234"}).arePlain());
    CHECK(documentWith({"1,234", "0.99"}).arePlain());
    for (const std::string other :
         {"1,234", "9.876", "5", "1 234", "1'234", "5.", "5,", "abc", "1e3", "1,2,3"})
        checkReadings(eitherWay, {other});
}

TEST_CASE("an ambiguous amount that the standard does not know is doubtful while nothing decides of it") {
    checkReadings(
        {{"$1,234", "1234, doubtful"}, {"R$ 1.234", "1.234, doubtful"}, {"1.234-", "-1.234, doubtful"}});
    checkReadings({{"$1,234", "1234, by evidence"}, {"1.234-", "-1.234, by evidence"}}, {"0.99"});
    checkReadings({{"$1,234", "1.234, by evidence"}, {"R$ 1.234", "1234, by evidence"}}, {"0,99"});
}

TEST_CASE("each unambiguous amount of a document with both decimal marks is read by itself") {
    const Texts mixed = {"-0,99", "12.50", "348,29", "1.234,56", "1,234.56", "7", "1.234.567"};
    const WrittenAmounts document = documentWith(mixed);
    CHECK_FALSE(document.arePlain());
    const std::vector<ReadingRow> rows = {
        {"-0,99", "-0.99, by evidence"},      {"12.50", "12.5, prescribed"},
        {"348,29", "348.29, by evidence"},    {"1.234,56", "1234.56, by evidence"},
        {"1,234.56", "1234.56, prescribed"},  {"7", "7, prescribed"},
        {"1.234.567", "1234567, by evidence"}};
    for (const ReadingRow& row : rows) CHECK(shown(document.read(row.text)) == row.reading);
}

TEST_CASE("evidence that does not agree decides when four times as many amounts are of one mind") {
    const auto counts = [](std::size_t points, std::size_t commas) {
        Texts texts(points, "1.50");
        texts.insert(texts.end(), commas, "1,50");
        return texts;
    };
    checkReadings({{"1.234", "1234, by evidence"}, {"1,234", "1.234, by evidence"}}, counts(3, 17));
    checkReadings({{"1.234", "1234, by evidence"}, {"1,234", "1.234, by evidence"}}, counts(1, 4));
    checkReadings({{"1.234", "1.234, prescribed"}, {"1,234", "1234, prescribed"}}, counts(17, 3));
    checkReadings({{"1.234", "1.234, prescribed"}, {"$1,234", "1234, by evidence"}}, counts(4, 1));
    for (const auto& [points, commas] : {std::array{3, 1}, {1, 3}, {1, 1}, {5, 19}, {20, 19}})
        checkReadings(
            {{"1.234", "1.234, doubtful"}, {"1,234", "1234, doubtful"}, {"€1,234", "1234, doubtful"}},
            counts(static_cast<std::size_t>(points), static_cast<std::size_t>(commas)));
}

TEST_CASE("currency signs, abbreviations and codes are understood before and after a number") {
    checkReadings({{"R$ 5.326,43", "5326.43, by evidence"},
                   {"$2,776.20", "2776.2, by evidence"},
                   {"$120", "120, by evidence"},
                   {"-$5.00", "-5, by evidence"},
                   {"$-5.00", "-5, by evidence"},
                   {"$.5", "0.5, by evidence"},
                   {"€ 1.234,56", "1234.56, by evidence"},
                   {"1.234,56 €", "1234.56, by evidence"},
                   {"1.234,56\u00A0€", "1234.56, by evidence"},
                   {"\u00A4 5", "5, by evidence"},
                   {"CHF 1'234.50", "1234.5, by evidence"},
                   {"1 234,50 kr", "1234.5, by evidence"},
                   {"kr. 50", "50, by evidence"},
                   {"Rs.500", "500, by evidence"},
                   {"12,50 zł", "12.5, by evidence"},
                   {"¥1200", "1200, by evidence"},
                   {"￥1200", "1200, by evidence"},
                   {"USD-5", "-5, by evidence"},
                   {"5.00USD", "5, by evidence"},
                   {"$1e3", "1000, by evidence"},
                   {"$5.00 USD", "5, by evidence"},
                   {"USD $5.00", "5, by evidence"},
                   {"US$5", "5, by evidence"},
                   {"5 US$", "5, by evidence"},
                   {"5 USD$", "5, by evidence"},
                   {"100 IDR", "100, by evidence"},
                   {"100 DCR", "100, by evidence"},
                   {"100.00 SDR", "100, by evidence"}});
}

TEST_CASE("a trailing sign, parentheses, credit and debit are understood") {
    checkReadings({{"845.00-", "-845, by evidence"},
                   {"845.00 -", "-845, by evidence"},
                   {"845.00+", "845, by evidence"},
                   {"845,00-", "-845, by evidence"},
                   {"845-", "-845, by evidence"},
                   {"(845.00)", "-845, by evidence"},
                   {"(845,00)", "-845, by evidence"},
                   {"($845.00)", "-845, by evidence"},
                   {"$(845.00)", "-845, by evidence"},
                   {"(845.00) USD", "-845, by evidence"},
                   {"(0.00)", "0, by evidence"},
                   {"845.00 CR", "845, by evidence"},
                   {"845.00DR", "-845, by evidence"},
                   {"845.00 INR Dr", "-845, by evidence"},
                   {"–5.00", "-5, by evidence"},
                   {"\u2212$5.00", "-5, by evidence"}});
}

TEST_CASE("what makes no sense, or may as well mean something else, is unreadable") {
    const Texts texts = {"",
                         " ",
                         "abc",
                         "-",
                         "()",
                         "$",
                         "1,2,3",
                         "12-34",
                         "1.2.3,4,5",
                         "--5",
                         "+-5",
                         "-5-",
                         "(-5)",
                         "-(5)",
                         "(+5)",
                         "(5",
                         "5)",
                         "((5))",
                         ")5(",
                         "5.-",
                         "5,-",
                         "5.–",
                         "CHF 5.-",
                         "-5 CR",
                         "(5) DR",
                         "5 CR DR",
                         "5 USDCR",
                         "$$5",
                         "$5€",
                         "USD 5 EUR",
                         "ABCD 5",
                         "usd 5",
                         "5%",
                         "5.00 x",
                         "5 ¢",
                         "1..5",
                         "1,,234.5",
                         "1, 234",
                         "1 ,5",
                         "1.23,45",
                         "1.2,3",
                         "1.234,567.89",
                         "1.2345.678",
                         ",",
                         ".",
                         "e5",
                         "1,5e3",
                         "1.5e",
                         "1.5.6e3",
                         "1 2",
                         "1.234 5",
                         "\xFF",
                         "5\xC2",
                         "1.234.56",
                         ".234.567",
                         ",234.56",
                         "12\u2009"
                         "34",
                         "\u0661",
                         "0x10",
                         "nan",
                         "inf",
                         "30/06/2025"};
    for (const std::string& text : texts) {
        CAPTURE(text);
        const WrittenAmounts document = documentWith({text});
        CHECK(prescribedReading(text) == std::nullopt);
        CHECK(shown(document.read(text)) == "unreadable");
        CHECK(document.formatter()->numberFromString(text) == std::nullopt);
        CHECK_FALSE(document.arePlain());
    }
}

TEST_CASE("what makes no sense but is a number the prescribed way is doubtful and has that number") {
    checkReadings({{"12,34,56", "123456, doubtful"},
                   {"1,234,56", "123456, doubtful"},
                   {"1 23", "123, doubtful"},
                   {"1'50", "150, doubtful"},
                   {"12 34", "1234, doubtful"},
                   {"1234,567.89", "1234567.89, doubtful"},
                   {"12,34.56", "1234.56, doubtful"},
                   {"1 234,567.89", "1234567.89, doubtful"},
                   {"1,234 567", "1234567, doubtful"},
                   {"1'234 567", "1234567, doubtful"},
                   {"123,45,678", "12345678, doubtful"},
                   {"1,2345,678", "12345678, doubtful"},
                   {"1,234e2", "123400, doubtful"},
                   {"1 234e2", "123400, doubtful"}});
    CHECK_FALSE(documentWith({"1.00", "12,34,56"}).arePlain());
}

TEST_CASE(
    "a number that does not fit exactly is unreadable unless the prescribed reading makes another of it") {
    const std::string tooLong(39, '7');
    const std::string zeros(130, '0');
    checkReadings({{tooLong, "unreadable"},
                   {"1e200", "unreadable"},
                   {"0." + tooLong, "unreadable"},
                   {"$" + tooLong, "unreadable"},
                   {"0," + zeros + "7", "7, doubtful"}});
    const WrittenAmounts document = documentWith({tooLong + ".00"});
    CHECK_FALSE(document.arePlain());
    const std::string longest = std::string(30, '7') + ".25";
    checkReadings({{longest, longest + ", prescribed"}, {"1" + longest, "1" + longest + ", prescribed"}});
}

TEST_CASE("no byte at any place is taken for a part of a plain amount that it is not") {
    for (const std::string form : {"-12.34", "5.00", "-5.00", "-.50", "-12", "7", "1234567.89"}) {
        for (std::size_t place = 0; place < form.size(); ++place) {
            for (int byte = 0; byte < 256; ++byte) {
                std::string text = form;
                text[place] = static_cast<char>(byte);
                CAPTURE(text);
                const WrittenAmounts document = documentWith({text});
                const AmountReading reading = document.read(text);
                REQUIRE(document.arePlain() == (reading.how == ReadingKind::prescribed));
                REQUIRE(readingOfImport(document, text) == reading.value);
            }
        }
    }
}

TEST_CASE("the order in which amounts are seen does not matter") {
    const Texts texts = {"1,234", "0,99", "$5", "1.50", "2,50", "7,5", "1.234", "0,1", "12,34,56"};
    const Texts reversed(texts.rbegin(), texts.rend());
    for (const std::string& text : texts)
        CHECK(documentWith(texts).read(text) == documentWith(reversed).read(text));
}

TEST_CASE("the formatter keeps the evidence it was made with, and writes the standard way") {
    WrittenAmounts document = documentWith({"0,99"});
    const auto formatter = document.formatter();
    for (int i = 0; i < 9; ++i) document.add("0.99");
    CHECK(formatter->numberFromString("1,234") == Decimal::fromString("1.234"));
    CHECK(document.formatter()->numberFromString("1,234") == std::nullopt);
    const Decimal number = *Decimal::fromString("-1234.5");
    CHECK(formatter->stringFromNumber(number) == DecimalNumberFormatter().stringFromNumber(number));
}

TEST_CASE("random numbers in every style that leaves no doubt are read exactly") {
    RandomText random(20250630);
    const std::array<std::size_t, 5> fractions = {1, 2, 4, 5, 9};
    const WrittenAmounts nothingSeen;
    for (std::size_t round = scaled(200'000); round > 0; --round) {
        const Style& style = random.oneOf(kStyles);
        const std::string integer = std::to_string(1 + random.below(9)) + digits(random, random.below(12));
        const std::string fraction = digits(random, random.oneOf(fractions));
        const bool negative = random.once(2);
        const Around& around = negative ? random.oneOf(kNegatives) : random.oneOf(kPositives);
        const std::string text =
            around.before + grouped(integer, style.group) + style.decimal + fraction + around.after;
        CAPTURE(text);
        const auto number = Decimal::fromString((negative ? "-" : "") + integer + "." + fraction);
        REQUIRE(number);
        const AmountReading reading = nothingSeen.read(text);
        REQUIRE(reading.value == number);
        REQUIRE(reading.how ==
                (prescribedReading(text) == number ? ReadingKind::prescribed : ReadingKind::byEvidence));
    }
}

TEST_CASE("random documents of one style are read exactly, those of three digits after a mark too") {
    RandomText random(7);
    for (std::size_t round = scaled(4'000); round > 0; --round) {
        const Style& style = random.oneOf(kStyles);
        WrittenAmounts document;
        document.add("0" + style.decimal + "99");
        struct Amount {
            std::string text;
            std::optional<Decimal> number;
        };
        std::vector<Amount> amounts;
        for (int i = 0; i < 20; ++i) {
            const std::string integer = std::to_string(1 + random.below(9)) + digits(random, random.below(9));
            const std::string fraction = digits(random, random.below(4));
            const std::string mark = fraction.empty() ? "" : style.decimal;
            amounts.push_back({grouped(integer, style.group) + mark + fraction,
                               Decimal::fromString(integer + "." + fraction)});
            document.add(amounts.back().text);
        }
        for (const Amount& amount : amounts) {
            CAPTURE(amount.text);
            REQUIRE(document.read(amount.text).value == amount.number);
            REQUIRE(readingOfImport(document, amount.text) == amount.number);
        }
    }
}

TEST_CASE("whatever the texts are, the prescribed reading never delivers what the document does not say") {
    RandomText random(99);
    const Texts pieces = {"0",      "1",      "2",    "34",   "567", "8", "9",  "000",    ".",
                          ",",      ".",      ",",    " ",    "'",   "-", "+",  "(",      ")",
                          "$",      "R$",     "EUR",  "CR",   "DR",  "e", "E2", "\u00A0", "\u2009",
                          "\u2019", "\u2212", "\xC2", "\xFF", "x",   "kr"};
    for (std::size_t round = scaled(100'000); round > 0; --round) {
        Texts texts;
        for (std::size_t count = 1 + random.below(4); count > 0; --count)
            texts.push_back(random.soup(pieces, random.below(9)));
        const WrittenAmounts document = documentWith(texts);
        for (const std::string& text : texts) {
            CAPTURE(text);
            const AmountReading reading = document.read(text);
            const auto prescribed = prescribedReading(text);
            REQUIRE(reading.value.has_value() == (reading.how != ReadingKind::unreadable));
            REQUIRE(readingOfImport(document, text) == reading.value);
            if (reading.how == ReadingKind::prescribed) REQUIRE(reading.value == prescribed);
            if (reading.how == ReadingKind::byEvidence) REQUIRE(reading.value != prescribed);
            if (document.arePlain()) REQUIRE(reading.how == ReadingKind::prescribed);
        }
    }
}

TEST_CASE("random bytes are read or not, and harm nothing") {
    RandomText random(3);
    for (std::size_t round = scaled(200'000); round > 0; --round) {
        std::string text;
        for (std::size_t count = random.below(24); count > 0; --count)
            text += static_cast<char>(random.below(256));
        const WrittenAmounts document = documentWith({text});
        CAPTURE(text);
        REQUIRE(readingOfImport(document, text) == document.read(text).value);
    }
}

TEST_CASE("an amount of ten megabytes costs no more than some looks at each byte") {
    // What took the square of that would not end before the test's time limit.
    const std::size_t size = scaled(10'000'000);
    for (const std::string piece :
         {"1", "0", ".", ",", " ", "-", "(", "A", "$", "123,", "12,", "1 ", "\u2019", "\xC2"}) {
        std::string text;
        text.reserve(size + 8);
        while (text.size() < size) text += piece;
        CAPTURE(piece);
        const WrittenAmounts document = documentWith({text});
        const bool isNumber = piece == "0";
        CHECK(document.read(text).value.has_value() == isNumber);
        CHECK(document.arePlain() == isNumber);
        CHECK(shown(documentWith({text + ".50"}).read("1.50")) == "1.5, prescribed");
    }
}
