// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>
#include <doctest/doctest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <type_traits>

#include "support/temporary_folder.h"

using brackwell::Data;
using brackwell::tests::TemporaryFolder;

namespace {

/// Bytes that do not repeat soon, so that a part at a wrong place is seen.
std::string someBytes(std::size_t size) {
    std::string bytes(size, '\0');
    std::uint32_t state = 1;
    for (char& byte : bytes) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<char>(state >> 24);
    }
    return bytes;
}

/// How many files this process has open.
std::ptrdiff_t openFiles() {
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return std::distance(begin(files), end(files));
}

}  // namespace

TEST_CASE("data is empty by default") {
    const Data data;
    CHECK(data.isEmpty());
    CHECK(data.size() == 0);
    CHECK(data.bytes().empty());
    CHECK_FALSE(data.isView());
}

TEST_CASE("adopted bytes are taken over without a copy") {
    std::string bytes = someBytes(1000);
    const std::string expected = bytes;
    const char* place = bytes.data();
    const Data data = Data::adopt(std::move(bytes));
    CHECK(data.bytes() == expected);
    CHECK(static_cast<const void*>(data.bytes().data()) == place);
    CHECK_FALSE(data.isView());
}

TEST_CASE("short adopted bytes outlive the string that they came in") {
    Data data;
    {
        std::string bytes = "abc";
        data = Data::adopt(std::move(bytes));
    }
    CHECK(data.bytes() == "abc");
}

TEST_CASE("copied bytes are independent of their source") {
    std::string bytes = "abc";
    const Data data = Data::copy(bytes);
    bytes[0] = 'x';
    CHECK(data.bytes() == "abc");
    CHECK_FALSE(data.isView());
}

TEST_CASE("a view refers to the caller's bytes") {
    const std::string bytes = "abc";
    const Data data = Data::view(bytes);
    CHECK(static_cast<const void*>(data.bytes().data()) == bytes.data());
    CHECK(data.isView());
}

TEST_CASE("empty data belongs to nobody, however it was made") {
    for (const Data& data : {Data(), Data::adopt(""), Data::copy(""), Data::view(""), Data::view({})}) {
        CHECK(data.isEmpty());
        CHECK_FALSE(data.isView());
        CHECK(data == Data());
    }
}

TEST_CASE("copies share the bytes") {
    const Data data = Data::copy("abc");
    const Data other = data;  // NOLINT: the copy is what is tested
    CHECK(static_cast<const void*>(other.bytes().data()) == data.bytes().data());
}

TEST_CASE("bytes live as long as any copy or slice of their data") {
    Data slice;
    {
        const Data data = Data::adopt(someBytes(100));
        slice = data.from(40);
    }
    CHECK(slice.bytes() == someBytes(100).substr(40));
}

TEST_CASE("from gives the bytes after an offset and shares them") {
    const Data data = Data::copy("abcdef");
    CHECK(data.from(0) == data);
    CHECK(data.from(2).bytes() == "cdef");
    CHECK(static_cast<const void*>(data.from(2).bytes().data()) == data.bytes().data() + 2);
    CHECK(data.from(2).from(3).bytes() == "f");
    CHECK(data.from(6).isEmpty());
    CHECK(data.from(7).isEmpty());
    CHECK(data.from(std::string::npos).isEmpty());
}

TEST_CASE("a slice of a view is a view") { CHECK(Data::view("abc").from(1).isView()); }

TEST_CASE("owned copies a view") {
    std::string bytes = "abc";
    const Data data = Data::view(bytes).owned();
    CHECK_FALSE(data.isView());
    bytes = "xyz";
    CHECK(data.bytes() == "abc");
}

TEST_CASE("owned shares bytes that are owned already") {
    const Data data = Data::copy("abc");
    CHECK(static_cast<const void*>(data.owned().bytes().data()) == data.bytes().data());
}

TEST_CASE("data is equal when its bytes are") {
    CHECK(Data::copy("abc") == Data::view("abc"));
    CHECK(Data::copy("xabc").from(1) == Data::copy("abc"));
    CHECK_FALSE(Data::copy("abc") == Data::copy("abd"));
    CHECK_FALSE(Data::copy("abc") == Data::copy("ab"));
}

TEST_CASE("moving data throws nothing and leaves nothing to release twice") {
    static_assert(std::is_nothrow_move_constructible_v<Data>);
    static_assert(std::is_nothrow_copy_constructible_v<Data>);
    Data data = Data::copy("abc");
    const Data other = std::move(data);
    CHECK(other.bytes() == "abc");
}

TEST_CASE("a file is read as a whole") {
    const TemporaryFolder folder;
    for (const std::size_t size : {0U, 1U, 2047U, 2048U, 4095U, 4096U, 4097U, 65536U, 1000003U}) {
        CAPTURE(size);
        const std::string expected = someBytes(size);
        const auto data = Data::fromFile(folder.file("file", expected));
        REQUIRE(data);
        CHECK(data->bytes() == expected);
        CHECK_FALSE(data->isView());
    }
}

TEST_CASE("a name that is not a readable file gives nothing") {
    const TemporaryFolder folder;
    CHECK_FALSE(Data::fromFile(folder.path("missing")));
    CHECK_FALSE(Data::fromFile(folder.path("")));
    CHECK_FALSE(Data::fromFile(""));
    CHECK_FALSE(Data::fromFile(nullptr));
    std::filesystem::create_symlink("nowhere", folder.path("dangling"));
    CHECK_FALSE(Data::fromFile(folder.path("dangling")));
    if (::geteuid() != 0) {  // the superuser may read everything
        const std::string secret = folder.file("secret", "abc");
        REQUIRE(::chmod(secret.c_str(), 0) == 0);
        CHECK_FALSE(Data::fromFile(secret));
    }
}

TEST_CASE("a file is closed again, whether it could be read or not") {
    const TemporaryFolder folder;
    const std::string path = folder.file("file", "abc");
    const std::ptrdiff_t before = openFiles();
    CHECK(Data::fromFile(path));
    CHECK(openFiles() == before);
    CHECK_FALSE(Data::fromFile(folder.path("")));  // a folder can be opened, but not read
    CHECK(openFiles() == before);
}

TEST_CASE("a name with a NUL is not cut to the name before it") {
    const TemporaryFolder folder;
    const std::string path = folder.file("file", "abc");
    CHECK(Data::fromFile(path));
    CHECK_FALSE(Data::fromFile(path + '\0' + "x"));
}

TEST_CASE("a file that does not tell its size is read to its end") {
    const auto data = Data::fromFile("/proc/self/maps");
    REQUIRE(data);
    CHECK(data->bytes().find("[stack]") != std::string_view::npos);
    const auto null = Data::fromFile("/dev/null");
    REQUIRE(null);
    CHECK(null->isEmpty());
}

TEST_CASE("a pipe is read to its end, in whatever pieces it comes") {
    const TemporaryFolder folder;
    const std::string path = folder.path("pipe");
    REQUIRE(::mkfifo(path.c_str(), 0600) == 0);
    const std::string expected = someBytes(300000);
    std::thread writer([&] {
        std::ofstream pipe(path, std::ios::binary);
        for (std::size_t start = 0; start < expected.size(); start += 7001) {
            const std::string piece = expected.substr(start, 7001);
            pipe.write(piece.data(), static_cast<std::streamsize>(piece.size())).flush();
        }
    });
    const auto data = Data::fromFile(path);
    writer.join();
    REQUIRE(data);
    CHECK(data->bytes() == expected);
}

TEST_CASE("a string can be given where bytes are taken, and is copied or taken over") {
    const std::string bytes = someBytes(1000);
    const auto take = [](const Data& data) { return data; };
    const Data copy = take(bytes);
    CHECK(copy.bytes() == bytes);
    CHECK(static_cast<const void*>(copy.bytes().data()) != bytes.data());
    CHECK_FALSE(copy.isView());

    std::string moved = bytes;
    const char* place = moved.data();
    const Data taken = take(std::move(moved));
    CHECK(taken.bytes() == bytes);
    CHECK(static_cast<const void*>(taken.bytes().data()) == place);

    const std::optional<Data> optional = bytes;
    CHECK(optional == Data::view(bytes));
    CHECK(Data(std::string()).isEmpty());
}

TEST_CASE("a literal, a view and null are no bytes") {
    // A literal may be meant for a path, and a view does not say who owns its bytes.
    CHECK_FALSE(std::is_constructible_v<Data, const char*>);
    CHECK_FALSE(std::is_constructible_v<Data, std::string_view>);
    CHECK_FALSE(std::is_constructible_v<Data, std::nullptr_t>);
    CHECK(std::is_convertible_v<std::string, Data>);
    CHECK(std::is_convertible_v<std::string, std::optional<Data>>);
}

TEST_CASE("a file is read by any form of its path") {
    const TemporaryFolder folder;
    const std::string path = folder.file("some bytes", "abc");
    const Data expected = Data::view("abc");
    CHECK(Data::fromFile(path) == expected);
    CHECK(Data::fromFile(path.c_str()) == expected);
    CHECK(Data::fromFile(std::filesystem::path(path)) == expected);
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        CHECK(Data::fromFile(entry.path()) == expected);
}
