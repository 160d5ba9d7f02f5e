// SPDX-License-Identifier: Apache-2.0
// Times pairs side by side and prints a table of their ratios: imports beside a general XML parser that
// builds and releases its plain tree of the same bytes, alone and with a walk over the transactions, OFX 1
// beside OFX 2, investments beside bank statements, large beside small, and the layer that opens files and
// the command-line tool beside the import.
//
//     brackwell-compare SECONDS DOCUMENTS TOOL [opening]
//
// SECONDS is the time for each row, DOCUMENTS a folder that brackwell-write-documents filled, and TOOL
// the command-line tool. "opening" leaves out all but the layer that opens files.
#include <cstdio>
#include <cstdlib>

#include "comparison.h"
#include "mapped_file.h"
#include "readers.h"

namespace {

using brackwell::Data;
using namespace brackwell::benchmarks;

Work importing(const Case& document, const Data& data) {
    return repeated([&document, data] { importDocument(data, document.shape); });
}

Work importingAndWalking(const Case& document, const Data& data) {
    return repeated([&document, data] { walkOf(*importDocument(data, document.shape)); });
}

Work opening(const Case& document, const Data& data) {
    return repeated([&document, data] { openDocument(data, document.shape); });
}

Work loading(const Case& document, std::string_view bytes) {
    return repeated([&document, bytes] {
        pugi::xml_document tree;
        loadTree(tree, bytes, document.shape);
    });
}

Work loadingAndWalking(const Case& document, std::string_view bytes) {
    return repeated([&document, bytes] {
        pugi::xml_document tree;
        loadTree(tree, bytes, document.shape);
        walkOf(tree);
    });
}

void printTitle(const std::string& subject, const char* reference, const char* circumstances) {
    std::printf("\n%s, beside %s (%s)\n", subject.c_str(), reference, circumstances);
    std::printf("%-20s %9s %7s %12s %6s %8s %12s %6s  %s\n", "document", "bytes", "items", "time", "MB/s",
                "ns/item", "beside it", "ratio", "quartiles");
}

void printRow(const Case& document, std::string_view bytes, const Comparison& times) {
    constexpr double kMicro = 1e6;
    constexpr double kNano = 1e9;
    std::printf("%-20s %9zu %7zu %9.1f us %6.0f %8.1f %9.1f us %6.2f  %.2f - %.2f\n", document.name.c_str(),
                bytes.size(), document.items(), times.subject * kMicro,
                static_cast<double>(bytes.size()) / times.subject / kMicro,
                times.subject * kNano / static_cast<double>(document.items()), times.reference * kMicro,
                times.median, times.low, times.high);
}

/// What every comparison needs to know.
struct Setting {
    double seconds;  ///< for each row
    std::string folder;

    std::string pathOf(const Case& document) const { return folder + "/" + document.name + ".ofx"; }
    std::string_view bytesOf(const Case& document) const { return mappedFile(pathOf(document)); }
};

void comparePeer(const Setting& setting, Memory memory) {
    printTitle("Import of OFX 2, released again", "pugixml's tree of the same bytes, released again",
               memory == Memory::kept ? "memory kept" : "memory as usual");
    for (const Case& document : casesOfVersion(2)) {
        inOwnProcess(memory, [&] {
            const std::string_view bytes = setting.bytesOf(document);
            checkReaders(document, bytes);
            printRow(
                document, bytes,
                compare(importing(document, Data::view(bytes)), loading(document, bytes), setting.seconds));
        });
    }
}

/// What an application does with both: it asks every transaction for its day, the sign of its amount, and its
/// payee.
void compareWalks(const Setting& setting, Memory memory) {
    printTitle("Import of OFX 2 and a walk over its transactions", "pugixml's tree and the same walk",
               memory == Memory::kept ? "memory kept" : "memory as usual");
    for (const Case& document : casesOfVersion(2)) {
        if (!document.hasBankTransactions()) continue;
        inOwnProcess(memory, [&] {
            const std::string_view bytes = setting.bytesOf(document);
            checkReaders(document, bytes);
            printRow(document, bytes,
                     compare(importingAndWalking(document, Data::view(bytes)),
                             loadingAndWalking(document, bytes), setting.seconds));
        });
    }
}

void compareVersions(const Setting& setting) {
    printTitle("Import of OFX 1", "the import of the same as OFX 2", "memory as usual");
    const std::vector<Case> references = casesOfVersion(2);
    std::size_t row = 0;
    for (const Case& document : casesOfVersion(1)) {
        const Case& reference = references[row++];
        inOwnProcess(Memory::asUsual, [&] {
            const std::string_view bytes = setting.bytesOf(document);
            checkReaders(document, bytes);
            const Work other = importing(reference, Data::view(setting.bytesOf(reference)));
            printRow(document, bytes,
                     compare(importing(document, Data::view(bytes)), other, setting.seconds));
        });
    }
}

/// The time of as many bytes: the ratio is that of the MB/s.
void compareInvestments(const Setting& setting) {
    printTitle("Import of investments", "as many bytes of bank statements", "memory as usual");
    for (const std::string prefix : {"ofx2", "ofx1"}) {
        const Case document = caseNamed(prefix + "-investments");
        const Case bank = caseNamed(prefix + "-200000");
        inOwnProcess(Memory::asUsual, [&] {
            const std::string_view bytes = setting.bytesOf(document);
            const std::string_view bankBytes = setting.bytesOf(bank);
            checkReaders(document, bytes);
            const double share = static_cast<double>(bytes.size()) / static_cast<double>(bankBytes.size());
            const Work other = importing(bank, Data::view(bankBytes));
            printRow(document, bytes,
                     compare(
                         importing(document, Data::view(bytes)), [&] { return other() * share; },
                         setting.seconds));
        });
    }
}

/// Apart, since the memory that one size leaves behind would help the other.
void compareSizes(const Setting& setting) {
    printTitle("Import of 200,000 transactions", "a hundred imports of 2,000", "a new process each time");
    for (const std::string prefix : {"ofx2", "ofx1"}) {
        const Case large = caseNamed(prefix + "-200000");
        const Case small = caseNamed(prefix + "-2000");
        const std::string_view largeBytes = setting.bytesOf(large);
        const std::string_view smallBytes = setting.bytesOf(small);
        const Work once = apart([&] { importDocument(Data::view(largeBytes), large.shape); }, 1);
        const Work oneOfHundred = apart([&] { importDocument(Data::view(smallBytes), small.shape); }, 100);
        printRow(large, largeBytes,
                 compare(
                     once, [&] { return oneOfHundred() * 100; }, setting.seconds));
    }
}

/// What is opened, beside the import of the same bytes.
void compareOpening(const Setting& setting) {
    for (const int version : {2, 1}) {
        printTitle("Opening of OFX " + std::to_string(version), "the import of the same bytes",
                   "memory as usual");
        for (const Case& document : casesOfVersion(version)) {
            inOwnProcess(Memory::asUsual, [&] {
                const std::string_view bytes = setting.bytesOf(document);
                checkReaders(document, bytes);
                // Like a file that was read. What is opened keeps its bytes, and those of a view as a copy.
                const Data data = Data::copy(bytes);
                printRow(document, bytes,
                         compare(opening(document, data), importing(document, data), setting.seconds));
            });
        }
    }
}

void compareTool(const Setting& setting, const std::string& tool) {
    for (const std::string command : {"csv", "json"}) {
        printTitle("brackwell " + command, "the import in a process that runs",
                   "a program each time, into /dev/null");
        for (const char* name : {"ofx2-200000", "ofx1-200000"}) {
            inOwnProcess(Memory::asUsual, [&] {
                const Case document = caseNamed(name);
                const std::string_view bytes = setting.bytesOf(document);
                const Work whole = process({tool, command, setting.pathOf(document)});
                printRow(document, bytes,
                         compare(whole, importing(document, Data::view(bytes)), setting.seconds));
            });
        }
    }
}

}  // namespace

int main(int count, char** arguments) {
    const bool isOpeningOnly = count == 5 && arguments[4] == std::string_view("opening");
    if (count != 4 && !isOpeningOnly) {
        std::fputs("usage: brackwell-compare SECONDS DOCUMENTS TOOL [opening]\n", stderr);
        return 2;
    }
    const Setting setting{std::atof(arguments[1]), arguments[2]};
    if (isOpeningOnly) {
        compareOpening(setting);
        return 0;
    }
    comparePeer(setting, Memory::asUsual);
    comparePeer(setting, Memory::kept);
    compareWalks(setting, Memory::asUsual);
    compareWalks(setting, Memory::kept);
    compareVersions(setting);
    compareInvestments(setting);
    compareSizes(setting);
    compareOpening(setting);
    compareTool(setting, arguments[3]);
}
