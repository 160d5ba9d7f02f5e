// SPDX-License-Identifier: Apache-2.0
#include "investments/security_lookup.h"

#include <algorithm>

#include "document.h"
#include "run.h"

namespace tool {
namespace {

using namespace brackwell;

template <class Objects>
bool hasAll(const SecurityList& securities, const Objects& objects) {
    return std::all_of(objects.begin(), objects.end(), [&securities](const auto& object) {
        return !object.securityID() || securities.find(object);
    });
}

/// True when a file says something of each security that it names.
bool knowsItsSecurities(const OpenedFile& file) {
    return std::ranges::all_of(file.investmentStatements(), [&file](const InvestmentStatement& statement) {
        return hasAll(file.securities(), statement.positions()) &&
               hasAll(file.securities(), statement.transactions());
    });
}

}  // namespace

bool forEachFileWithSecurities(Run& run,
                               const std::function<void(const Document&, const SecurityList&)>& use) {
    std::vector<Document> waiting;
    std::vector<Security> known;
    const bool areSeveral = run.options.files.size() > 1;
    bool isAllDone = forEachFile(run, [&](const Document& document) {
        const auto& own = document.file.securities();
        if (areSeveral) known.insert(known.end(), own.all().begin(), own.all().end());
        if (waiting.empty() && (!areSeveral || knowsItsSecurities(document.file)))
            use(document, own);
        else
            waiting.push_back(document);
    });
    const SecurityList all(std::move(known));
    for (const Document& document : waiting) {
        if (!run.output.isGood()) break;
        isAllDone = withEnoughMemory(run, document.name,
                                     [&] {
                                         use(document, all);
                                         return true;
                                     }) &&
                    isAllDone;
    }
    return isAllDone;
}

}  // namespace tool
