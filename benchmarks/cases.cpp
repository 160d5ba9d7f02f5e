// SPDX-License-Identifier: Apache-2.0
#include "cases.h"

#include <cstdlib>
#include <iostream>

namespace brackwell::benchmarks {
namespace {

struct Row {
    std::string_view name;
    Shape shape;
};

constexpr std::array<Row, 11> kRows{{
    {"20", {.transactions = 20}},
    {"2000", {.transactions = 2000}},
    {"200000", {.transactions = 200000}},
    {"1000-statements", {.statements = 1000, .transactions = 20}},
    {"long-memos", {.transactions = 20000, .longMemos = true}},
    {"entities", {.transactions = 20000, .entities = true}},
    {"accents", {.transactions = 20000, .accents = true}},
    {"windows-1252", {.transactions = 20000, .accents = true, .encoding = TextEncodingWindows1252}},
    {"utf-16", {.transactions = 20000, .accents = true, .encoding = TextEncodingUTF16LittleEndian}},
    {"profile", {.realms = 20}},
    {"investments", {.transactions = 200000, .positions = 10000}},
}};

}  // namespace

std::vector<Case> casesOfVersion(int version) {
    std::vector<Case> cases;
    for (const Row& row : kRows) {
        Case& added = cases.emplace_back();
        added.name = "ofx" + std::to_string(version) + "-" + std::string(row.name);
        added.shape = row.shape;
        added.shape.version2 = version == 2;
    }
    return cases;
}

Case caseNamed(std::string_view name) {
    for (const int version : {2, 1})
        for (const Case& found : casesOfVersion(version))
            if (found.name == name) return found;
    std::cerr << "there is no document called " << name << '\n';
    std::exit(2);
}

}  // namespace brackwell::benchmarks
