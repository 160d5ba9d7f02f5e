// SPDX-License-Identifier: Apache-2.0
#include "mapped_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>

namespace brackwell::benchmarks {

std::string_view mappedFile(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status {};
    if (file >= 0 && fstat(file, &status) == 0) {
        const auto size = static_cast<std::size_t>(status.st_size);
        void* const bytes = mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_POPULATE, file, 0);
        if (bytes != MAP_FAILED) return {static_cast<const char*>(bytes), size};
    }
    std::perror(path.c_str());
    std::exit(1);
}

}  // namespace brackwell::benchmarks
