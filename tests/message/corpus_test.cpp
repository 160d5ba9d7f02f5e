// SPDX-License-Identifier: Apache-2.0
#include "support/corpus.h"

#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include <algorithm>
#include <random>

#include "support/documents.h"
#include "support/transcript.h"

/// \file
/// Documents of the world: every file of the folder that BRACKWELL_CORPUS names, whole and damaged,
/// ends in a message that answers every question, or in one of the library's errors.

using namespace brackwell;
using namespace brackwell::tests;

namespace {

bool isCloseTagError(std::string_view text) {
    constexpr std::string_view begin = "Found close tag </";
    constexpr std::string_view middle = "> without opening tag.";
    constexpr std::string_view hint = "\nMaybe there is a close tag missing for <";
    if (!text.starts_with(begin) || text.find(middle) == std::string_view::npos) return false;
    return text.ends_with(middle) || (text.find(hint) != std::string_view::npos && text.ends_with('>'));
}

bool isKnown(const Error& error) {
    return error.domain == "Brackwell" && error.code == 1 && error.failureReason == "OFX Parser Error" &&
           (error.description == "no data to parse" ||
            error.description == "Data is not OFX or unknown character encoding." ||
            isCloseTagError(error.description));
}

/// True when the document was read; otherwise it must have ended in a known error.
bool endsWell(std::string_view bytes, TextEncoding encoding) {
    Error error;
    const auto message =
        TovanaOFXController::importOFXFileFromData(Data::view(bytes), encoding, nullptr, nullptr, &error);
    if (!message) {
        CHECK_MESSAGE(isKnown(error), error.description);
        return false;
    }
    CHECK(error == Error{});
    CHECK(isValidUTF8(transcriptOf(*message)));
    const auto interpreter = interpreted(bytes, encoding);
    CHECK(isValidUTF8(transcriptOf(*interpreter)));
    CHECK(archivesWell(*interpreter));
    return true;
}

struct Count {
    std::size_t read = 0;
    std::size_t failed = 0;
    void operator()(bool good) { ++(good ? read : failed); }
};

template <class Try>
void forEachFile(const char* what, Try attempt) {
    const auto files = corpusFiles();
    if (!files) {
        MESSAGE("BRACKWELL_CORPUS names no folder, so no file was read.");
        return;
    }
    REQUIRE_FALSE(files->empty());
    Count count;
    for (const std::string& file : *files) {
        CAPTURE(file);
        const auto data = Data::fromFile(file);
        REQUIRE(data);
        attempt(std::string(data->bytes()), count);
    }
    MESSAGE(files->size() << " files " << std::string(what) << ": " << count.read << " messages, "
                          << count.failed << " errors");
}

}  // namespace

TEST_CASE("every document of the corpus ends in a message or in a known error") {
    forEachFile("whole", [](const std::string& bytes, Count& count) {
        count(endsWell(bytes, TextEncodingNone));
        // Two readings of one document are the same.
        Error error;
        const auto first = TovanaOFXController::importOFXFileFromData(Data::copy(bytes), &error);
        const auto second = TovanaOFXController::importOFXFileFromData(Data::view(bytes), &error);
        REQUIRE((first == nullptr) == (second == nullptr));
        if (first) CHECK(transcriptOf(*first) == transcriptOf(*second));
    });
}

TEST_CASE("every document of the corpus ends well in every encoding") {
    forEachFile("in every encoding", [](const std::string& bytes, Count& count) {
        for (const TextEncoding encoding : knownTextEncodings()) {
            CAPTURE(encoding);
            count(endsWell(bytes, encoding));
        }
    });
}

TEST_CASE("every document of the corpus ends well when it is cut") {
    forEachFile("cut", [](const std::string& bytes, Count& count) {
        for (std::size_t size = 0; size < bytes.size(); size += 97) {
            CAPTURE(size);
            // A copy of its own size, so that reading beyond its end is seen.
            const std::unique_ptr<char[]> cut = std::make_unique<char[]>(size);
            std::copy_n(bytes.data(), size, cut.get());
            count(endsWell({cut.get(), size}, TextEncodingNone));
        }
    });
}

TEST_CASE("every document of the corpus ends well when one of its bytes is changed") {
    forEachFile("with a byte changed", [](const std::string& bytes, Count& count) {
        if (bytes.empty()) return;
        std::mt19937 random(20240131);
        constexpr std::string_view favourites = "<>/&;:\n \0\x7F\x80\xC3\xFF\"?=";
        for (int round = 0; round < 200; ++round) {
            const std::size_t position = random() % bytes.size();
            const char byte =
                round % 2 == 0 ? favourites[random() % favourites.size()] : static_cast<char>(random() % 256);
            CAPTURE(position);
            CAPTURE(static_cast<int>(byte));
            std::string changed = bytes;
            changed[position] = byte;
            count(endsWell(changed, TextEncodingNone));
        }
    });
}
