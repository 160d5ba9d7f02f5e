// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "tool/browser.h"
#include "tool/report.h"

using namespace brackwell::tests;

namespace {

/// The descriptions of the rows that a browser shows.
std::vector<std::string> descriptionsIn(const std::string& page) {
    std::vector<std::string> rows;
    for (std::size_t at = page.find("<tr data-account"); at != page.npos;
         at = page.find("<tr data-account", at + 1)) {
        const std::string tag = page.substr(at, page.find("<td", at) - at);
        const std::size_t start = page.find("<th scope=\"row\">", at) + 16;
        if (!contains(tag, "hidden=\"\"")) rows.push_back(page.substr(start, page.find('<', start) - start));
    }
    return rows;
}

std::string foundLine(const std::string& page) {
    const std::size_t start = page.find("role=\"status\">") + 14;
    return page.substr(start, page.find('<', start) - start);
}

const std::string kPage = [] {
    return tool({"report", "-"},
                bankDocument(
                    statement("11110001", "EUR",
                              transaction("20240105", "-3.10", "<NAME>Coffee Pier") +
                                  transaction("20240110", "-0.2", "<NAME>COFFEE and cake<MEMO>Corner") +
                                  transaction("20240210", "1234567890123456.25", "<NAME>Salary") +
                                  "<STMTTRN><TRNAMT>0.01<NAME>Undated</STMTTRN>",
                              ledger("100", "20240301")) +
                    statement("22220002", "USD",
                              transaction("20240110", "-7",
                                          "<NAME>Coffee beans &lt;script&gt;alert(1)&lt;/script&gt;"))))
        .output;
}();

}  // namespace

TEST_CASE("a browser runs the page's script, says nothing against it, and asks nobody for anything") {
    if (!hasBrowser()) return;
    const Shown shown = shownInBrowser(kPage, "");
    CHECK(shown.console == "");
    CHECK(shown.requests == std::vector<std::string>{});
    CHECK(descriptionsIn(shown.page).size() == 5);
    CHECK_FALSE(contains(shown.page, "<form id=\"filter\" hidden"));
    CHECK(foundLine(shown.page) ==
          "5 of 5 shown; in 1,234,567,890,123,456.26, out \u22123.30 EUR; in 0.00, out \u22127.00 USD");
}

TEST_CASE("the sums of what a page shows have the decimals of their currency") {
    if (!hasBrowser()) return;
    const std::string page =
        outputOf({"report"},
                 bankDocument(statement("1", "JPY", transaction("20240105", "-1480")) +
                              statement("2", "KWD", transaction("20240105", "-2.5")) +
                              statement("3", "EUR",
                                        transaction("20240104", "1.005") + transaction("20240104", "3.5"))));
    CHECK(foundLine(shownInBrowser(page, "").page) ==
          "4 of 4 shown; in 0, out \u22121,480 JPY; in 0.000, out \u22122.500 KWD; "
          "in 4.505, out 0.00 EUR");
}

TEST_CASE("the filter in a page's address hides rows and adds up the others") {
    if (!hasBrowser()) return;
    struct Row {
        const char* filter;
        std::vector<std::string> rows;
    };
    for (const Row& row :
         std::vector<Row>{{"#q=coffee%20CORNER", {"COFFEE and cake"}},
                          {"#q=coffee&until=2024-01-10&from=2024-01-06&account=1", {"COFFEE and cake"}},
                          {"#flow=in", {"Salary", "Undated"}},
                          {"#account=2", {"Coffee beans &lt;script&gt;alert(1)&lt;/script&gt;"}},
                          {"#from=2024-01-11", {"Salary"}},
                          {"#q=nothing", {}},
                          {"#account-1",
                           {"Salary", "COFFEE and cake", "Coffee beans &lt;script&gt;alert(1)&lt;/script&gt;",
                            "Coffee Pier", "Undated"}}}) {
        CAPTURE(row.filter);
        const Shown shown = shownInBrowser(kPage, row.filter);
        CHECK(descriptionsIn(shown.page) == row.rows);
        CHECK(foundLine(shown.page).starts_with(std::to_string(row.rows.size()) + " of 5 shown"));
        CHECK(shown.console == "");
    }
}

TEST_CASE("a page is searched without regard to case, accents and how an amount is written") {
    if (!hasBrowser()) return;
    std::string page = withoutPolicy(
        outputOf({"report"},
                 bankDocument(statement("11110001", "EUR",
                                        transaction("20240105", "-845", "<NAME>Caf\xE9 LUMI\xC8RE") +
                                            transaction("20240104", "1050", "<NAME>\x8Cuvre<MEMO>S\xD8REN") +
                                            transaction("20240103", "-1234567.5", "<NAME>Gro\xDF")))));
    // Each search and the numbers of the rows that it finds.
    const std::string searches = R"({
        "cafe lumiere": "0", "CAFÉ LUMIÈRE": "0", "cafe\u0301": "0", "cafes": "",
        "oeuvre": "1", "œUVRE": "1", "soren": "1", "gross": "2", "GROẞ": "2", "groß": "2",
        "-845": "0", "\u2212845": "0", "+845": "", "1050": "1", "1,050.00": "1", "-1050": "",
        "-1234567.50": "2", "1,234,5": "2", "2024-01-03": "2", "": "0 1 2"})";
    page.insert(page.find("</body>"),
                "<script>const field = document.getElementById('filter').elements.namedItem('q');\n"
                "const rows = [...document.getElementById('transactions').tBodies[0].rows];\n"
                "const found = [...rows.keys()];\n"
                "document.title = JSON.stringify(Object.fromEntries(Object.keys(" +
                    searches +
                    ").map(text => {\n"
                    "  field.value = text;\n"
                    "  field.dispatchEvent(new Event('input', { bubbles: true }));\n"
                    "  return [text, found.filter(row => !rows[row].hidden).join(' ')];\n"
                    "})));</script>");
    const Shown shown = shownInBrowser(page, "");
    CHECK(shown.console == "");
    const std::size_t start = shown.page.find("<title>") + 7;
    const std::string title = shown.page.substr(start, shown.page.find("</title>", start) - start);
    const Json wanted = Json::parse(searches);
    const Json found = Json::parse(title);
    for (const auto& [text, rows] : wanted.items()) {
        CAPTURE(text);
        CHECK(found.at(text) == rows);
    }
}

TEST_CASE("the order in a page's address sorts the rows, those without a value last") {
    if (!hasBrowser()) return;
    struct Row {
        const char* order;
        std::vector<std::string> rows;
        const char* head;  ///< whose column is said to be sorted
    };
    const std::string beans = "Coffee beans &lt;script&gt;alert(1)&lt;/script&gt;";
    for (const Row& row : std::vector<Row>{
             {"#sort=amount", {beans, "Coffee Pier", "COFFEE and cake", "Undated", "Salary"}, "amount"},
             {"#sort=-amount", {"Salary", "Undated", "COFFEE and cake", "Coffee Pier", beans}, "amount"},
             {"#sort=date", {"Coffee Pier", "COFFEE and cake", beans, "Salary", "Undated"}, "date"},
             {"#sort=-date", {"Salary", "COFFEE and cake", beans, "Coffee Pier", "Undated"}, "date"},
             {"#sort=description",
              {"COFFEE and cake", beans, "Coffee Pier", "Salary", "Undated"},
              "description"},
             {"#sort=-account", {beans, "Salary", "COFFEE and cake", "Coffee Pier", "Undated"}, "account"},
             {"#sort=amount&q=coffee", {beans, "Coffee Pier", "COFFEE and cake"}, "amount"},
             {"#sort=nothing", {"Salary", "COFFEE and cake", beans, "Coffee Pier", "Undated"}, ""}}) {
        CAPTURE(row.order);
        const Shown shown = shownInBrowser(kPage, row.order);
        CHECK(descriptionsIn(shown.page) == row.rows);
        CHECK(shown.console == "");
        const std::size_t sorted = shown.page.find(" aria-sort=");
        const std::size_t head = shown.page.rfind("data-sort=\"", sorted) + 11;
        const std::string name = shown.page.substr(head, shown.page.find('"', head) - head);
        CHECK((sorted == shown.page.npos ? "" : name) == row.head);
    }
}

TEST_CASE("a click on the head of a column sorts by it, and a second one the other way round") {
    if (!hasBrowser()) return;
    const auto clicked = [](int times) {
        std::string page = withoutPolicy(kPage);
        page.insert(page.find("</body>"),
                    "<script>for (let i = 0; i !== " + std::to_string(times) +
                        "; ++i) document.querySelector('[data-sort=amount] button').click();"
                        "document.title = location.hash;</script>");
        return shownInBrowser(page, "").page;
    };
    CHECK(contains(clicked(1), "<title>#sort=amount</title>"));
    CHECK(descriptionsIn(clicked(1)).back() == "Salary");
    CHECK(contains(clicked(2), "<title>#sort=-amount</title>"));
    CHECK(descriptionsIn(clicked(2)).front() == "Salary");
}

TEST_CASE("the rows that a page shows are saved as CSV in their order") {
    if (!hasBrowser()) return;
    std::string page = withoutPolicy(kPage);
    page.insert(page.find("</body>"),
                "<script>window.Blob = function (parts) { this.text = parts.join(''); };"
                "URL.createObjectURL = blob => { window.saved = blob.text; return '#'; };"
                "document.querySelector('[data-table=bank]').click();"
                "document.title = JSON.stringify(saved);</script>");
    const std::string shown = shownInBrowser(page, "#q=coffee&sort=amount&account=1").page;
    const std::size_t start = shown.find("<title>") + 7;
    const std::vector<std::string> lines =
        linesOf(Json::parse(shown.substr(start, shown.find("</title>") - start)).get<std::string>());
    REQUIRE(lines.size() == 3);
    CHECK(lines.at(0).starts_with("file,accountClass,bankID,"));
    CHECK(contains(lines.at(1), ",,-3.1,,,,Coffee Pier,,"));
    CHECK(contains(lines.at(2), ",,-0.2,,,,COFFEE and cake,Corner,"));
    CHECK(lines.at(2).ends_with("\r"));
}

TEST_CASE("a browser refuses whatever else gets into a page") {
    if (!hasBrowser()) return;
    std::string page = kPage;
    page.insert(page.find("</main>"),
                "<script>document.title = 'run'</script><img src=\"http://nowhere.invalid/picture.png\"/>");
    const Shown refused = shownInBrowser(page, "");
    CHECK(contains(refused.page, "<title>Account report</title>"));
    CHECK(contains(refused.console, "Content Security Policy"));
    CHECK(refused.requests == std::vector<std::string>{});
    CHECK(descriptionsIn(refused.page).size() == 5);

    // It is the page's policy that does it.
    const Shown allowed = shownInBrowser(withoutPolicy(page), "");
    CHECK(contains(allowed.page, "<title>run</title>"));
    CHECK(allowed.requests == std::vector<std::string>{"http://nowhere.invalid/picture.png"});
}

TEST_CASE("long amounts stay in their table, on a wide page and on a narrow one") {
    if (!hasBrowser()) return;
    std::string page = withoutPolicy(kPage);
    page.insert(page.find("</main>"),
                "<script>\nconst table = document.getElementById('transactions');\n"
                "const edge = table.parentNode.getBoundingClientRect().right;\n"
                "const right = (node) => { const range = document.createRange();\n"
                "  range.selectNodeContents(node); return range.getBoundingClientRect().right; };\n"
                "const cells = [...table.querySelectorAll('td')];\n"
                "const outside = cells.filter((cell) => right(cell) > edge - 15);\n"
                "document.title = cells.length + ' cells, outside: ' + outside.length;\n</script>");
    for (const int width : {1200, 500}) {
        CAPTURE(width);
        CHECK(contains(shownInBrowser(page, "", width).page, "<title>20 cells, outside: 0</title>"));
    }
}
