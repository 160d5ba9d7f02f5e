// SPDX-License-Identifier: Apache-2.0
#include <span>
#include <sstream>

#include "tool/browser.h"
#include "tool/investment_documents.h"

using namespace brackwell::tests;

namespace {

/// From the narrowest telephone to the widest window, with those in which six columns are too many.
constexpr int kWidths[] = {320, 420, 705, 840, 1000, 1060, 1280, 2000};
/// Of A4 and of letter paper, without the margins.
constexpr int kPaperWidths[] = {717, 739};

/// Sets a page into frames of these widths, and says in the title of its own page what does not hold in one.
/// A frame with a page as its source may be looked into.
constexpr const char* kMeasure = R"script(
const words = /[^\s\u2010\/-]+(?:-\d\d-\d\d)?/g;
const longestWhole = 16;

function* textsIn(element) {
    const walker = element.ownerDocument.createTreeWalker(element, 4);
    while (walker.nextNode()) yield walker.currentNode;
}

// A word whose letters stand on two lines was broken.
function brokenWords(element) {
    const broken = [];
    for (const text of textsIn(element))
        for (const word of text.data.matchAll(words)) {
            if (word[0].length > longestWhole) continue;
            const range = element.ownerDocument.createRange();
            range.setStart(text, word.index);
            range.setEnd(text, word.index + word[0].length);
            const lines = new Set(Array.from(range.getClientRects(), box => Math.round(box.top)));
            if (lines.size > 1) broken.push(word[0]);
        }
    return broken;
}

// A text that reaches over an edge of its cell lies over its neighbour, or outside of the table.
function sticksOut(cell) {
    const edge = cell.getBoundingClientRect();
    const range = cell.ownerDocument.createRange();
    range.selectNodeContents(cell);
    return Array.from(range.getClientRects()).some(box => box.left < edge.left - 1 || box.right > edge.right + 1);
}

function problemsIn(page, width) {
    const problems = [];
    const say = problem => problems.push(width + ': ' + problem);
    const root = page.documentElement;
    if (root.scrollWidth > width) say('the page is ' + root.scrollWidth + ' wide');
    for (const box of page.querySelectorAll('.scroll'))
        if (!mayScroll && box.scrollWidth > box.clientWidth) say('a table is wider than the page: ' + box.textContent.slice(0, 40));
    for (const cell of page.querySelectorAll('th, td, dt, dd, h1, h2, summary, figcaption'))
        for (const word of brokenWords(cell)) say('broken: ' + word);
    for (const cell of page.querySelectorAll('th, td, dt, dd'))
        if (cell.getBoundingClientRect().width > 1 && sticksOut(cell)) say('outside of its cell: ' + cell.textContent);
    for (const cell of page.querySelectorAll('.transactions tbody th'))
        if (cell.getBoundingClientRect().width < 110) say('a narrow description: ' + cell.textContent);
    return problems;
}

addEventListener('load', () => {
    const frames = Array.from(document.querySelectorAll('iframe'));
    const problems = frames.flatMap(frame => problemsIn(frame.contentDocument, Number(frame.width)));
    const texts = frames.map(frame => frame.contentDocument.querySelectorAll('tr').length);
    document.title = texts.join(' ') + ' rows; ' + Array.from(new Set(problems)).join('; ');
});
)script";

std::string replaced(std::string text, const std::string& part, const std::string& other) {
    for (std::size_t at = 0; (at = text.find(part, at)) != text.npos; at += other.size())
        text.replace(at, part.size(), other);
    return text;
}

/// As markup has it between tags.
std::string asText(const std::string& text) {
    return replaced(replaced(replaced(text, "&", "&amp;"), "<", "&lt;"), ">", "&gt;");
}

std::string asAttribute(const std::string& text) {
    return replaced(replaced(text, "&", "&amp;"), "\"", "&quot;");
}

/// What is wrong with a page at any of the widths; "" for nothing. Large amounts may need a table that is
/// wider than the page and scrolls in its place.
std::string problemsOf(const std::string& page, std::span<const int> widths, bool mayScroll = false) {
    const std::string source = asAttribute(withoutPolicy(page));
    std::string frames = "<!DOCTYPE html><title></title>\n";
    for (const int width : widths)
        frames += "<iframe width=\"" + std::to_string(width) + "\" height=\"900\" srcdoc=\"" + source +
                  "\"></iframe>\n";
    const std::string shown =
        shownInBrowser(frames + "<script>const mayScroll = " + (mayScroll ? "true" : "false") + ";" +
                           kMeasure + "</script>",
                       "", 2100)
            .page;
    const std::size_t start = shown.find("<title>") + 7;
    const std::string title = shown.substr(start, shown.find("</title>", start) - start);
    CAPTURE(title);
    CHECK(contains(title, " rows; "));
    CHECK_FALSE(title.starts_with("0"));
    return title.substr(title.find("; ") + 2);
}

std::string reportOfExamples(const std::vector<std::string>& names) {
    std::vector<std::string> arguments{"report", "--quiet"};
    for (const std::string& name : names) arguments.push_back(examplePath(name));
    return tool(arguments).output;
}

/// The report of an account in each currency, which has these amounts as its transactions and balances.
std::string reportOfAmounts(const std::vector<std::string>& currencies,
                            const std::vector<std::string>& amounts) {
    std::string statements;
    for (const std::string& currency : currencies) {
        std::string transactions;
        for (const std::string& amount : amounts)
            transactions += transaction(
                "20240105", amount, "<TRNTYPE>DIRECTDEBIT<CHECKNUM>20190923001<NAME>Landlord of the house");
        statements += statement("1111000" + std::to_string(statements.size()), currency, transactions,
                                ledger(amounts.front(), "20240301") + "<AVAILBAL><BALAMT>" + amounts.back() +
                                    "<DTASOF>20240301</AVAILBAL>");
    }
    return outputOf({"report"}, bankDocument(statements));
}

/// The report of transactions in a currency whose rate is not known.
std::string reportWithoutRate() {
    return outputOf({"report"},
                    transactionsWith(transaction("20240105", "-99999999.99",
                                                 "<NAME>Landlord<CURRENCY><CURSYM>KRW</CURRENCY>") +
                                     transaction("20240105", "-7", "<NAME>Coffee")));
}

std::string reportOfHoldings(const std::string& value) {
    return outputOf({"report"}, version1(held("778899001122", purchase("T1", "20240110", "100", "-" + value),
                                              position("100", value) + position("200", "-" + value)) +
                                         securityList(security("100", "Alder Railways", "ALDR") +
                                                      security("200", "Harbour, Lines", "HBRL"))));
}

struct Page {
    std::string name;
    std::string html;
    bool mayScroll = false;  ///< its amounts may make a table scroll in its place in a narrow window
};

const std::vector<Page>& pages() {
    static const std::vector<Page> all{
        {"one account", reportOfExamples({"checking.ofx"})},
        {"several accounts in several currencies",
         reportOfExamples({"household.ofx", "checking.ofx", "card.ofx"})},
        {"investments", reportOfExamples({"investments.ofx"})},
        {"everything", reportOfExamples({"every_element.ofx", "quirks.ofx", "investments.ofx",
                                         "household.ofx", "errors.ofx"})},
        {"amounts of six figures", reportOfAmounts({"GBP", "HKD"}, {"-999999.00", "999999.99"})},
        {"amounts of six figures in one currency", reportOfAmounts({"GBP"}, {"-999999.00", "999999.99"})},
        {"amounts of ten figures", reportOfAmounts({"JPY", "KRW", "EUR"}, {"-99999999", "9999999999"}), true},
        {"amounts in another currency", reportWithoutRate()},
        {"holdings of eight figures", reportOfHoldings("99999999.99")},
    };
    return all;
}

/// A page as paper has it, in a window as wide as what is printed on.
std::string asPaper(std::string page) {
    page = replaced(page, "@media print", "@media all");
    return replaced(page, "@media screen and", "@media not all and");
}

/// The words of a PDF that reach over the edge of their page, and the others as one text.
struct Printed {
    std::vector<std::string> outside;
    std::string text = " ";
    std::size_t pages = 0;
};

/// The value of an attribute in a line of markup.
double numberIn(const std::string& line, const std::string& name) {
    return std::stod(line.substr(line.find(name + "=\"") + name.size() + 2));
}

Printed printed(const std::string& page, const std::string& size) {
    const TemporaryFolder folder;
    std::string sized = withoutPolicy(page);
    sized.insert(sized.find("</head>"), "<style>@page { size: " + size + " }</style>");
    const std::string path = folder.file("report.pdf", printedByBrowser(sized));
    const Finished finished = run({{BRACKWELL_PDFTOTEXT, "-bbox", path, "-"}});
    CHECK(finished.status == 0);
    Printed found;
    double width = 0;
    for (const std::string& line : linesOf(finished.output)) {
        if (contains(line, "<page ")) {
            width = numberIn(line, "width");
            ++found.pages;
        }
        if (!contains(line, "<word ")) continue;
        const std::size_t start = line.find('>') + 1;
        const std::string word = line.substr(start, line.rfind("</word>") - start);
        found.text += word + " ";
        if (numberIn(line, "xMin") < 0 || numberIn(line, "xMax") > width) found.outside.push_back(word);
    }
    return found;
}

/// False for a word that is too long for some column, or that may be parted at a hyphen.
bool isToStayWhole(const std::string& word) {
    const bool isDate = word.size() == 10 && word[4] == '-' && word[7] == '-';
    return word.size() <= 16 && (isDate || !contains(word, "-"));
}

/// The words of the table of transactions, but for descriptions, in which payee and memo meet without a
/// blank.
std::vector<std::string> wholeWordsOf(const std::string& page) {
    std::vector<std::string> words;
    for (const auto& row : MarkupPage(page).rows("transactions"))
        for (std::size_t i = 0; i < row.size(); ++i) {
            std::istringstream text(i == 1 ? "" : row.at(i));
            for (std::string word; text >> word;)
                if (isToStayWhole(word)) words.push_back(word);
        }
    return words;
}

}  // namespace

TEST_CASE("a page holds from 320 to 2,000 pixels: nothing overflows, and no word is broken") {
    if (!hasBrowser()) return;
    for (const Page& page : pages()) {
        CAPTURE(page.name);
        CHECK(problemsOf(page.html, kWidths, page.mayScroll) == "");
    }
}

TEST_CASE("a page holds on paper") {
    if (!hasBrowser()) return;
    for (const Page& page : pages()) {
        CAPTURE(page.name);
        CHECK(problemsOf(asPaper(page.html), kPaperWidths) == "");
    }
}

TEST_CASE("a narrow window lays out only the transactions that can be seen, and finds the place of any") {
    if (!hasBrowser()) return;
    std::string transactions;
    for (int i = 0; i < 300; ++i)
        transactions += transaction("20240105", "-1", "<NAME>Shop " + std::to_string(i));
    std::string page = withoutPolicy(outputOf({"report"}, transactionsWith(transactions)));
    page.insert(page.find("</body>"),
                "<script>addEventListener('load', () => {\n"
                "const cell = document.querySelector('#transactions tbody tr:last-child th');\n"
                "const isLaidOut = cell.checkVisibility({ contentVisibilityAuto: true });\n"
                "const hasPlace = cell.getBoundingClientRect().height > 10;\n"
                "document.title = 'laid out: ' + isLaidOut + ', has a place: ' + hasPlace;\n});</script>");
    CHECK(contains(shownInBrowser(page, "", 500).page, "<title>laid out: false, has a place: true</title>"));
    CHECK(contains(shownInBrowser(page, "", 1200).page, "<title>laid out: true, has a place: true</title>"));
}

TEST_CASE("long numbers, long words and large amounts overflow at no width") {
    if (!hasBrowser()) return;
    const std::string page = outputOf(
        {"report"},
        bankDocument(statement("11110001", "EUR",
                               transaction("20240105", "-1234567890123.10",
                                           "<CHECKNUM>20190923001<NAME>" + std::string(120, 'W')) +
                                   transaction("20240110", "-0.2",
                                               "<NAME>Donaudampfschiff<MEMO>" + std::string(300, 'm')),
                               ledger("1234567890123.99", "20240301")) +
                     statement("22220002", "USD", transaction("20240110", "-7", "<NAME>Coffee"))));
    CHECK(problemsOf(page, kWidths, true) == "");
}

TEST_CASE("on paper every word is whole and inside of its page") {
    if (!hasBrowser()) return;
    if (std::string_view(BRACKWELL_PDFTOTEXT).empty()) {
        MESSAGE("skipped: no pdftotext was found to read pages with");
        return;
    }
    for (const Page& page : pages()) {
        CAPTURE(page.name);
        const std::vector<std::string> words = wholeWordsOf(page.html);
        CHECK_FALSE(words.empty());
        for (const std::string size : {"A4", "letter"}) {
            CAPTURE(size);
            const Printed paper = printed(page.html, size);
            CHECK(paper.pages > 0);
            CHECK(paper.outside == std::vector<std::string>{});
            for (const std::string& word : words) {
                CAPTURE(word);
                CHECK(contains(paper.text, " " + asText(word) + " "));
            }
        }
    }
}
