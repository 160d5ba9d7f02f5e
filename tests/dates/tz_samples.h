// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace brackwell::tests {

/// What a zone file is made of; bytes() puts it together, right or wrong.
struct ZoneFileParts {
    struct Type {
        std::int32_t fromUTC;
        std::uint8_t daylight;
        std::uint8_t abbreviation;
    };

    char version = '2';
    std::vector<std::int64_t> times;
    std::string typeOfChange;
    std::vector<Type> types = {{0, 0, 0}};
    std::string characters = std::string("UTC\0", 4);
    std::uint32_t leapSeconds = 0;
    std::uint32_t standardFlags = 0;
    std::uint32_t universalFlags = 0;
    std::string footer = "\nUTC0\n";

    std::string bytes() const {
        if (version == '\0') return header() + block(4);
        return header() + block(4) + header() + block(8) + footer;
    }

    static std::string number(std::uint64_t value, int size) {
        std::string text;
        for (int shift = (size - 1) * 8; shift >= 0; shift -= 8)
            text += static_cast<char>(value >> shift & 0xFF);
        return text;
    }

private:
    static std::string number(std::int64_t value, int size) {
        return number(static_cast<std::uint64_t>(value), size);
    }

    std::string header() const {
        return "TZif" + std::string(1, version) + std::string(15, '\0') +
               number(std::uint64_t{universalFlags}, 4) + number(std::uint64_t{standardFlags}, 4) +
               number(std::uint64_t{leapSeconds}, 4) + number(std::uint64_t{times.size()}, 4) +
               number(std::uint64_t{types.size()}, 4) + number(std::uint64_t{characters.size()}, 4);
    }

    std::string block(int timeSize) const {
        std::string text;
        for (const std::int64_t time : times) text += number(time, timeSize);
        text += typeOfChange;
        for (const Type& type : types)
            text += number(std::int64_t{type.fromUTC}, 4) + static_cast<char>(type.daylight) +
                    static_cast<char>(type.abbreviation);
        text += characters;
        text.append(leapSeconds * static_cast<std::size_t>(timeSize + 4), '\0');
        text.append(standardFlags + universalFlags, '\0');
        return text;
    }
};

/// Berlin in 2023, with its rule from then on.
inline ZoneFileParts berlinParts() {
    ZoneFileParts parts;
    parts.times = {1679792400, 1698541200};  // 2023-03-26T01:00Z, 2023-10-29T01:00Z
    parts.typeOfChange = std::string("\1\0", 2);
    parts.types = {{3600, 0, 0}, {7200, 1, 4}};
    parts.characters = std::string("CET\0CEST\0", 9);
    parts.footer = "\nCET-1CEST,M3.5.0,M10.5.0/3\n";
    return parts;
}

}  // namespace brackwell::tests
