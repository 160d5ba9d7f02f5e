// SPDX-License-Identifier: Apache-2.0
#include "memory/large_pages.h"

#include <brackwell/platform.h>
#include <doctest/doctest.h>

using namespace brackwell;

TEST_CASE("shared arrays of every size hold what is written to them") {
    for (const std::size_t size : {0U, 1U, 4096U, (4U << 20) - 1, 4U << 20, (9U << 20) + 3}) {
        CAPTURE(size);
        const std::shared_ptr<char[]> array = makeSharedArray<char>(size);
        char* const bytes = array.get();
        for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * 7);
        bool same = true;
        for (std::size_t i = 0; i < size; ++i) same = same && bytes[i] == static_cast<char>(i * 7);
        CHECK(same);
    }
}

TEST_CASE("the values of a shared array are constructed and destroyed") {
    struct Counted {
        Counted() { ++alive(); }
        ~Counted() { --alive(); }
        static int& alive() {
            static int count = 0;
            return count;
        }
    };
    std::shared_ptr<Counted[]> array = makeSharedArray<Counted>(10);
    CHECK(Counted::alive() == 10);
    const std::shared_ptr<Counted> one(array, &array[3]);
    array.reset();
    CHECK(Counted::alive() == 10);
}

TEST_CASE("a wish for large pages changes no byte of the memory, wherever it begins") {
    std::string text(std::size_t{9} << 20, 'x');
    for (const std::size_t begin : {0U, 1U, 4095U, 4097U})
        system::preferLargePages(text.data() + begin, text.size() - begin);
    CHECK(text.find_first_not_of('x') == std::string::npos);
}

TEST_CASE("a copy of many bytes is equal to them") {
    std::string text;
    for (std::size_t i = 0; text.size() < (std::size_t{5} << 20); ++i) text += std::to_string(i);
    CHECK(Data::copy(text).bytes() == text);
}
