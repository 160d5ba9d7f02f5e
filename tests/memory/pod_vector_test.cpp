// SPDX-License-Identifier: Apache-2.0
#include "memory/pod_vector.h"

#include <doctest/doctest.h>

using brackwell::reading::PodVector;

TEST_CASE("a plain vector grows by one value or by many and keeps what it holds") {
    PodVector<std::uint32_t> values;
    CHECK(values.empty());
    for (std::uint32_t i = 0; i < 1000; ++i) values.push(i);
    std::uint32_t* more = values.append(1000);
    for (std::uint32_t i = 0; i < 1000; ++i) more[i] = 1000 + i;
    CHECK(values.append(0) == values.data() + 2000);
    REQUIRE(values.size() == 2000);
    for (std::uint32_t i = 0; i < 2000; ++i) REQUIRE(values[i] == i);
    CHECK(values.back() == 1999);
}

TEST_CASE("a plain vector is cut from its end") {
    PodVector<char> values;
    for (const char c : {'a', 'b', 'c', 'd'}) values.push(c);
    values.pop();
    CHECK(values.back() == 'c');
    values.setSize(1);
    CHECK(values.size() == 1);
    CHECK(values.back() == 'a');
    values.push('x');
    CHECK(values[1] == 'x');
    values.setSize(0);
    CHECK(values.empty());
}

TEST_CASE("reserving changes nothing but where values go") {
    PodVector<int> values;
    values.push(7);
    values.reserve(1000);
    CHECK(values.size() == 1);
    const int* before = values.data();
    for (int i = 0; i < 1000; ++i) values.push(i);
    CHECK(values.data() == before);
    CHECK(values[0] == 7);
    CHECK(values[1000] == 999);
}

TEST_CASE("room that a plain vector has in vain is given back, and little room stays") {
    PodVector<int> values;
    values.giveBackRoom();
    CHECK(values.capacity() == 0);
    values.reserve(1000);
    for (int i = 0; i < 100; ++i) values.push(i);
    values.giveBackRoom();
    CHECK(values.capacity() == 100);
    REQUIRE(values.size() == 100);
    for (int i = 0; i < 100; ++i) REQUIRE(values[static_cast<std::uint32_t>(i)] == i);
    values.push(100);
    CHECK(values.back() == 100);

    values.reserve(values.size() / 10);
    const std::uint32_t before = values.capacity();
    values.setSize(before - before / 10);
    values.giveBackRoom();
    CHECK(values.capacity() == before);
}

TEST_CASE("values may be written into the room of a plain vector before they count") {
    PodVector<int> values;
    values.push(7);
    values.reserve(2);
    REQUIRE(values.capacity() >= 3);
    values.data()[1] = 8;
    values.data()[2] = 9;
    values.setSize(3);
    CHECK(values[0] == 7);
    CHECK(values.back() == 9);
    values.push(10);
    CHECK(values.size() == 4);
    CHECK(values[2] == 9);
}

TEST_CASE("moving a plain vector hands its values over") {
    PodVector<int> first;
    first.push(1);
    PodVector<int> second = std::move(first);
    CHECK(second.size() == 1);
    PodVector<int> third;
    third.push(3);
    third.push(4);
    third = std::move(second);
    CHECK(third.size() == 1);
    CHECK(third[0] == 1);
}

TEST_CASE("a plain vector that cannot grow says so and keeps what it holds") {
    PodVector<char> values;
    values.push('x');
    CHECK_THROWS_AS(values.append(std::size_t{1} << 32), std::bad_alloc);
    CHECK_THROWS_AS(values.append((std::size_t{1} << 32) - 1), std::bad_alloc);
    CHECK_THROWS_AS(values.append(std::size_t{1} << 60), std::bad_alloc);
    CHECK_THROWS_AS(values.reserve(std::size_t{1} << 60), std::bad_alloc);
    REQUIRE(values.size() == 1);
    CHECK(values[0] == 'x');
}
