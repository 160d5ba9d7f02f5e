// SPDX-License-Identifier: Apache-2.0
// Opens one document as it is, without one close tag, and without any, and says how fast that is.
//
//     brackwell-repair NAME FILE SECONDS
//
// NAME is the document's name in the tables, FILE where it lies; it is an OFX 1 document with one statement.
// A line for each: the damage, the bytes, the changes, and MB a second of the opening, the best of all runs.
// The exit status says whether every transaction arrived.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>

#include "cpu_time.h"
#include "readers.h"

namespace {

using namespace brackwell::benchmarks;

std::string without(std::string text, std::string_view tag) {
    const std::size_t at = text.find(tag);
    return at == std::string::npos ? text : text.erase(at, tag.size());
}

std::string withoutCloseTags(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t close = std::min(text.find("</", at), text.size());
        result.append(text.substr(at, close - at));
        at = close == text.size() ? close : text.find('>', close) + 1;
    }
    return result;
}

struct Damage {
    const char* name;
    std::string text;
};

/// True when all transactions arrive.
bool measure(const Damage& damage, const Shape& shape, std::size_t wanted, double seconds) {
    double best = std::numeric_limits<double>::max();
    std::size_t changes = 0;
    std::size_t found = 0;
    for (double all = 0; all < seconds;) {
        const double begin = cpuSeconds();
        {
            const brackwell::OpenedFile file = openDocument(brackwell::Data::view(damage.text), shape);
            found = 0;
            for (const auto& statement : file.statements())
                found += statement->statementTransactions().size();
            changes = file.documents()[0].changes().size();
        }
        const double took = cpuSeconds() - begin;
        best = std::min(best, took);
        all += took;
    }
    std::printf("%-24s %10zu %9zu %9.0f\n", damage.name, damage.text.size(), changes,
                static_cast<double>(damage.text.size()) / best / 1e6);
    return found == wanted;
}

}  // namespace

int main(int count, char** arguments) {
    const auto file = count == 4 ? brackwell::Data::fromFile(arguments[2]) : std::nullopt;
    if (!file) {
        std::fputs("usage: brackwell-repair NAME FILE SECONDS\n", stderr);
        return 2;
    }
    const Case document = caseNamed(arguments[1]);
    const std::string whole(file->bytes());
    const std::size_t wanted = totalsOfImport(document, whole).transactions;
    bool isRight = true;
    for (const Damage& damage : {Damage{"none", whole},
                                 {"</BANKTRANLIST> missing", without(whole, "</BANKTRANLIST>")},
                                 {"one </STMTTRN> missing", without(whole, "</STMTTRN>")},
                                 {"no close tags", withoutCloseTags(whole)}})
        isRight = measure(damage, document.shape, wanted, std::atof(arguments[3])) && isRight;
    return isRight ? 0 : 1;
}
