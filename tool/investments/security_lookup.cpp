// SPDX-License-Identifier: Apache-2.0
#include "investments/security_lookup.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "input/input_file.h"
#include "input/run.h"

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
                               const std::function<void(const InputFile&, const SecurityList&)>& use,
                               const UseOfFile& useUnread) {
    std::vector<InputFile> waiting;
    std::vector<Security> known;
    const bool areSeveral = run.options.named.files.size() > 1;
    const auto useOrWait = [&](const InputFile& input) {
        const auto& own = input.file.securities();
        if (areSeveral) known.insert(known.end(), own.all().begin(), own.all().end());
        if (waiting.empty() && (!areSeveral || knowsItsSecurities(input.file)))
            use(input, own);
        else
            waiting.push_back(input);
    };
    const auto useUnreadOrWait = [&](const InputFile& input) {
        if (!useUnread) return;
        if (waiting.empty())
            useUnread(input);
        else
            waiting.push_back(input);
    };
    bool isAllDone = forEachFile(run, useOrWait, useUnreadOrWait);
    const SecurityList all(std::move(known));
    for (const InputFile& input : waiting) {
        if (!run.output.isGood()) break;
        const bool isDone = withEnoughMemory(run, input.name, [&] {
            if (input.file)
                use(input, all);
            else
                useUnread(input);
            return true;
        });
        isAllDone = isDone && isAllDone;
    }
    return isAllDone;
}

}  // namespace tool
