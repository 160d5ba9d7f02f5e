// SPDX-License-Identifier: Apache-2.0
// Writes every document that is measured into a folder, as NAME.ofx.
//
//     brackwell-write-documents FOLDER
#include <fstream>
#include <iostream>

#include "cases.h"

int main(int count, char** arguments) {
    using namespace brackwell::benchmarks;
    if (count != 2) {
        std::cerr << "usage: brackwell-write-documents FOLDER\n";
        return 2;
    }
    for (const int version : {2, 1}) {
        for (const Case& document : casesOfVersion(version)) {
            const std::string path = std::string(arguments[1]) + "/" + document.name + ".ofx";
            std::ofstream file(path, std::ios::binary);
            if (!(file << makeDocument(document.shape) << std::flush)) {
                std::cerr << "cannot write " << path << '\n';
                return 1;
            }
        }
    }
}
