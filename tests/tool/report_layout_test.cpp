// SPDX-License-Identifier: Apache-2.0
#include <sstream>

#include "tool/browser.h"
#include "tool/report.h"

using namespace brackwell::tests;

namespace {

/// From the narrowest telephone to the widest window, with those in which six columns are too many.
constexpr const char* kWidths = "[320, 420, 705, 840, 1280, 2000]";

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

function problemsIn(page, width) {
    const problems = [];
    const say = problem => problems.push(width + ': ' + problem);
    const root = page.documentElement;
    if (root.scrollWidth > width) say('the page is ' + root.scrollWidth + ' wide');
    for (const box of page.querySelectorAll('.scroll'))
        if (!mayScroll && box.scrollWidth > box.clientWidth) say('a table is wider than the page: ' + box.textContent.slice(0, 40));
    for (const cell of page.querySelectorAll('th, td, dt, dd, h1, h2, summary, figcaption'))
        for (const word of brokenWords(cell)) say('broken: ' + word);
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
std::string problemsOf(const std::string& page, bool mayScroll = false) {
    const std::string source = asAttribute(withoutPolicy(page));
    std::string frames = "<!DOCTYPE html><title></title>\n";
    for (const Json& width : Json::parse(kWidths))
        frames +=
            "<iframe width=\"" + width.dump() + "\" height=\"900\" srcdoc=\"" + source + "\"></iframe>\n";
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

struct Page {
    std::string name;
    std::vector<std::string> examples;
};

const std::vector<Page>& pages() {
    static const std::vector<Page> all{
        {"one account", {"checking.ofx"}},
        {"several accounts in several currencies", {"household.ofx", "checking.ofx", "card.ofx"}},
        {"investments", {"investments.ofx"}},
        {"everything", {"every_element.ofx", "quirks.ofx", "investments.ofx", "household.ofx", "errors.ofx"}},
    };
    return all;
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

Printed printed(const std::string& page) {
    const TemporaryFolder folder;
    const std::string path = folder.file("report.pdf", printedByBrowser(page));
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
        CHECK(problemsOf(reportOfExamples(page.examples)) == "");
    }
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
    CHECK(problemsOf(page, true) == "");
}

TEST_CASE("on paper every word is whole and inside of its page") {
    if (!hasBrowser()) return;
    if (std::string_view(BRACKWELL_PDFTOTEXT).empty()) {
        MESSAGE("skipped: no pdftotext was found to read pages with");
        return;
    }
    for (const Page& page : pages()) {
        CAPTURE(page.name);
        const std::string report = reportOfExamples(page.examples);
        const Printed paper = printed(report);
        CHECK(paper.pages > 0);
        CHECK(paper.outside == std::vector<std::string>{});
        const std::vector<std::string> words = wholeWordsOf(report);
        CHECK_FALSE(words.empty());
        for (const std::string& word : words) {
            CAPTURE(word);
            CHECK(contains(paper.text, " " + asText(word) + " "));
        }
    }
}
