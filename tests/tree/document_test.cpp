// SPDX-License-Identifier: Apache-2.0
#include "tree/document.h"

#include <doctest/doctest.h>
#include <sys/mman.h>

#include "parser/body_parser.h"

using namespace brackwell;

namespace {

/// A body of zeros that takes no memory as long as nobody reads it.
class HugeBody {
public:
    explicit HugeBody(std::size_t size)
        : size_(size),
          bytes_(mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0)) {
        REQUIRE(bytes_ != MAP_FAILED);
    }
    ~HugeBody() { munmap(bytes_, size_); }
    HugeBody(const HugeBody&) = delete;
    HugeBody& operator=(const HugeBody&) = delete;
    std::string_view bytes() const { return {static_cast<const char*>(bytes_), size_}; }

private:
    std::size_t size_;
    void* bytes_;
};

}  // namespace

TEST_CASE("a body of 2 GiB is treated like exhausted memory") {
    const HugeBody body(std::size_t{1} << 31);
    CHECK_THROWS_AS(reading::parseBody(Data::view(body.bytes()), body.bytes(), nullptr), std::bad_alloc);
}
