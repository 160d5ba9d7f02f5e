// SPDX-License-Identifier: Apache-2.0
#include "report/finding_list.h"

#include <algorithm>
#include <string>

#include "input/input_file.h"
#include "report/html_writer.h"
#include "report/way_up.h"

namespace tool {

using brackwell::FindingSeverity;

void addFindings(std::vector<FileFinding>& findings, const InputFile& input) {
    const std::vector<FindingOwner> owners = ownersOfFindings(input.file);
    for (std::size_t i = 0; i < owners.size(); ++i)
        findings.push_back({input.name, input.file.findings()[i], owners[i]});
}

FindingList::FindingList(const std::vector<FileFinding>& findings) : all_(findings) {
    for (const FileFinding& found : findings) {
        if (found.owner.statement != nullptr) byOwner_[found.owner.statement].push_back(&found);
        if (found.owner.transaction != nullptr) byOwner_[found.owner.transaction].push_back(&found);
    }
}

std::size_t FindingList::count(FindingSeverity severity) const noexcept {
    return static_cast<std::size_t>(std::ranges::count_if(
        all_, [severity](const FileFinding& found) { return found.finding.severity == severity; }));
}

const std::vector<const FileFinding*>& FindingList::about(const void* identity) const {
    static const std::vector<const FileFinding*> none;
    const auto found = byOwner_.find(identity);
    return identity == nullptr || found == byOwner_.end() ? none : found->second;
}

void writeFindingSummary(HtmlWriter& html, const FindingList& findings) {
    if (findings.all().empty()) return;
    struct Part {
        FindingSeverity severity;
        const char* one;
        const char* several;
    };
    std::string parts;
    for (const Part& part : {Part{FindingSeverity::error, "error", "errors"},
                             Part{FindingSeverity::warning, "warning", "warnings"},
                             Part{FindingSeverity::note, "note", "notes"}})
        if (const std::size_t count = findings.count(part.severity); count > 0)
            parts.append(parts.empty() ? "" : ", ")
                .append(std::to_string(count))
                .append(" ")
                .append(count == 1 ? part.one : part.several);
    html.write(
        "<li><a href=\"#findings\">What the files hold and this page lacks, or may have wrong</a>: "
        "{}.</li>\n",
        parts);
}

namespace {

void writeFindingItem(HtmlWriter& html, const FileFinding& found) {
    html.write("<li><bdi>{}</bdi>", found.file);
    if (found.finding.line != 0) html.write(", line {}", found.finding.line);
    html.write(": <bdi>{}</bdi></li>\n", found.finding.text);
}

}  // namespace

void writeFindingNotes(HtmlWriter& html, const std::vector<const FileFinding*>& found) {
    if (found.empty()) return;
    html.write("<ul class=\"notes findings\">\n");
    for (const FileFinding* each : found) writeFindingItem(html, *each);
    html.write("</ul>\n");
}

void writeAllFindings(HtmlWriter& html, const FindingList& findings) {
    if (findings.all().empty()) return;
    html.write(
        "<section id=\"findings\" aria-labelledby=\"findings-title\">\n"
        "<h2 id=\"findings-title\">Findings</h2>\n<ul class=\"findings\">\n");
    for (const FileFinding& found : findings.all()) writeFindingItem(html, found);
    html.write("</ul>\n");
    writeWayUp(html);
    html.write("</section>\n");
}

}  // namespace tool
