// SPDX-License-Identifier: Apache-2.0
#include "tool/browser.h"

#include "tool/tool.h"

namespace brackwell::tests {
namespace {

/// The addresses in a browser's log of its network that were asked for by a page. What the browser itself
/// wants to know, such as whether there is a newer one, has no origin.
std::vector<std::string> requestsIn(const std::string& log) {
    const std::string before = "\"url\":\"";
    std::vector<std::string> found;
    for (const std::string& line : linesOf(log)) {
        if (!contains(line, "\"initiator\":\"") || contains(line, "\"initiator\":\"not an origin\""))
            continue;
        const std::size_t start = line.find(before) + before.size();
        found.push_back(line.substr(start, line.find('"', start) - start));
    }
    return found;
}

/// Runs a browser that reaches no host, with a profile in a folder.
Finished runBrowser(const TemporaryFolder& folder, const std::vector<std::string>& arguments) {
    Command browser{{BRACKWELL_CHROMIUM, "--headless=new", "--no-sandbox", "--disable-gpu",
                     "--disable-extensions", "--disable-background-networking", "--disable-component-update",
                     "--no-first-run", "--disable-dev-shm-usage", "--host-resolver-rules=MAP * ~NOTFOUND",
                     "--user-data-dir=" + folder.path("profile")}};
    browser.arguments.insert(browser.arguments.end(), arguments.begin(), arguments.end());
    browser.environment = {{"HOME", folder.path()}};
    Finished finished = run(browser);
    CHECK(finished.status == 0);
    return finished;
}

}  // namespace

bool hasBrowser() {
    const bool isThere = !std::string_view(BRACKWELL_CHROMIUM).empty();
    if (!isThere) MESSAGE("skipped: no Chromium was found to show pages in");
    return isThere;
}

Shown shownInBrowser(const std::string& page, const std::string& filter, int width) {
    const TemporaryFolder folder;
    const std::string path = folder.file("report.html", page);
    const Finished finished = runBrowser(
        folder, {"--window-size=" + std::to_string(width) + ",600", "--enable-logging=stderr",
                 "--log-net-log=" + folder.path("network.json"), "--dump-dom", "file://" + path + filter});
    Shown shown{finished.output, {}, {}};
    for (const std::string& line : linesOf(finished.error))
        if (contains(line, "CONSOLE")) shown.console += line + "\n";
    const std::string log = folder.read("network.json");
    CHECK(contains(log, "\"events\""));
    shown.requests = requestsIn(log);
    return shown;
}

std::string printedByBrowser(const std::string& page) {
    const TemporaryFolder folder;
    const std::string path = folder.file("report.html", page);
    runBrowser(folder,
               {"--no-pdf-header-footer", "--print-to-pdf=" + folder.path("report.pdf"), "file://" + path});
    return folder.read("report.pdf");
}

std::string withoutPolicy(std::string page) {
    const std::size_t policy = page.find("<meta http-equiv");
    return page.erase(policy, page.find("/>", policy) + 2 - policy);
}

}  // namespace brackwell::tests
