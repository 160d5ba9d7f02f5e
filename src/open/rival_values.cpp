// SPDX-License-Identifier: Apache-2.0
#include "open/rival_values.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "investments/records.h"
#include "open/shown_text.h"

namespace brackwell::opening {
namespace {

struct Rivals {
    std::size_t count = 0;
    std::uint32_t first = 0;
    const reading::Document* document = nullptr;

    /// All objects of one reading share what it has found, so the first is enough.
    template <class Object>
    void addOf(const std::vector<Object>& objects) {
        if (objects.empty()) return;
        const investments::Records& records = investments::RecordAccess::records(objects.front());
        for (std::uint32_t i = 0; i < records.rivals.size(); ++i) {
            const std::uint32_t node = records.rivals[i];
            first = count++ == 0 ? node : std::min(first, node);
        }
        document = records.document.get();
    }
};

}  // namespace

void findRivalValues(FindingList& findings, const std::vector<InvestmentStatement>& statements,
                     const std::vector<Security>& securities, const TreePlaces& places) {
    Rivals rivals;
    rivals.addOf(statements);
    rivals.addOf(securities);
    if (rivals.count == 0) return;
    const reading::Node& node = rivals.document->node(rivals.first);
    findings.add(FindingKind::treeOnly, FindingSeverity::note,
                 counted(rivals.count, "value differs", "values differ") +
                     " from another element of the same field, which is delivered instead" +
                     (rivals.count == 1 ? ": <" : "; the first is <") +
                     shownText(rivals.document->name(node), 40) + ">, " +
                     quoted(rivals.document->text(node)) + ".",
                 rivals.count, places.offsetOf(rivals.first));
}

}  // namespace brackwell::opening
