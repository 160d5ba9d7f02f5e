// SPDX-License-Identifier: Apache-2.0
// Reads one document with one reader and ends, for what is measured of a whole process: its memory, its
// page faults, and, under a simulator, its instructions.
//
//     brackwell-import-once none|brackwell|open|pugixml NAME FILE [TIMES]
//
// NAME is the document's name in the tables, FILE where it lies. "none" only holds the document: what it
// takes is to be subtracted. Prints the peak of memory in KiB and the number of page faults.
#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>

#include "readers.h"

namespace {

using namespace brackwell::benchmarks;

void readNothing(std::string_view, const Shape&) {}
void readByImport(std::string_view bytes, const Shape& shape) {
    if (!importDocument(brackwell::Data::view(bytes), shape)) std::exit(1);
}
void readByOpening(std::string_view bytes, const Shape& shape) {
    if (!openDocument(brackwell::Data::view(bytes), shape)) std::exit(1);
}
void readByPeer(std::string_view bytes, const Shape& shape) {
    pugi::xml_document tree;
    if (!loadTree(tree, bytes, shape)) std::exit(1);
}

struct Reader {
    std::string_view name;
    void (*read)(std::string_view bytes, const Shape& shape);
};
constexpr std::array<Reader, 4> kReaders{
    {{"none", readNothing}, {"brackwell", readByImport}, {"open", readByOpening}, {"pugixml", readByPeer}}};

const Reader* readerNamed(std::string_view name) {
    for (const Reader& reader : kReaders)
        if (reader.name == name) return &reader;
    return nullptr;
}

}  // namespace

int main(int count, char** arguments) {
    const Reader* reader = count >= 4 ? readerNamed(arguments[1]) : nullptr;
    const auto file = count >= 4 ? brackwell::Data::fromFile(arguments[3]) : std::nullopt;
    if (reader == nullptr || !file) {
        std::fputs("usage: brackwell-import-once none|brackwell|open|pugixml NAME FILE [TIMES]\n", stderr);
        return 2;
    }
    const Case document = caseNamed(arguments[2]);
    const int times = count > 4 ? std::atoi(arguments[4]) : 1;
    for (int i = 0; i < times; ++i) reader->read(file->bytes(), document.shape);
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("%ld %ld\n", usage.ru_maxrss, usage.ru_minflt);
}
