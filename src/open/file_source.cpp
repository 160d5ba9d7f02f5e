// SPDX-License-Identifier: Apache-2.0
#include "open/file_source.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>

#include "open/error_with.h"
#include "open/shown_text.h"
#include "system/exhausted_memory.h"
#include "system/input_file.h"
#include "text/ascii_case.h"
#include "text/ascii_digit.h"

namespace brackwell::opening {
namespace {

constexpr std::size_t kLongestShownName = 200;  // in a message: a name may be as long as the caller likes

constexpr std::size_t kPiece = 65536;  // bytes that are read at a time where a file does not tell its size

constexpr std::string_view kFetchesNothing = "Nothing is fetched from other computers.";
constexpr std::string_view kDownloadFirst = "Download the file first.";

/// An error that names a file or a URL.
struct FileError {
    OpenErrorCode code;
    std::string_view begin;  ///< before the name
    std::string_view end;    ///< after it
    std::string_view cause;
    std::string_view remedy;

    OpenError with(std::string_view name) const {
        return errorWith(code, std::string(begin).append(shownText(name, kLongestShownName)).append(end),
                         std::string(cause), std::string(remedy));
    }
};

constexpr FileError kFolder{OpenErrorCode::isFolder, "", " is a folder.", "", "Name a file in it."};
constexpr FileError kNotFound{OpenErrorCode::notFound, "The file at ", " was not found.", "",
                              "Check the path; a relative path starts in the current folder."};
constexpr FileError kNotPermitted{OpenErrorCode::notPermitted, "No permission to read the file at ", ".", "",
                                  "Ask its owner for permission."};
constexpr FileError kNotReadable{OpenErrorCode::notReadable, "The file at ", " could not be read.", "",
                                 "Check the disk or the network connection, and try again."};
constexpr FileError kOtherHost{OpenErrorCode::otherComputer, "The URL names another computer: ", ".",
                               kFetchesNothing, kDownloadFirst};
constexpr FileError kOtherScheme{OpenErrorCode::otherComputer, "The URL has a scheme other than file: ", "",
                                 kFetchesNothing, kDownloadFirst};
constexpr FileError kInvalidURL{OpenErrorCode::invalidURL, "The URL names no file: ", "", "",
                                "Write it like file:///home/me/july.ofx: with three slashes and an absolute "
                                "path, and \"%\" only before two hexadecimal digits."};

/// Why a file could not be read. Reading it has failed without saying why, so the system is asked again.
OpenError errorOfFile(const std::string& path) {
    if (system::statusOf(path).isFolder) return kFolder.with(path);
    const system::InputFile file(path);
    if (file.isOpen()) return kNotReadable.with(path);
    const int number = file.error();
    if (number == ENOMEM) system::failForMemory();
    if (number == EACCES || number == EPERM) return kNotPermitted.with(path);
    const bool isMissing = number == ENOENT || number == ENOTDIR;
    return (isMissing ? kNotFound : kNotReadable).with(path);
}

/// The bytes of a file that may have any number of them, whatever it says, such as a pipe. Reads no more than
/// it takes to see that they are more than the limit. Nothing when the file cannot be read.
std::optional<Data> bytesWithin(std::size_t limit, const std::string& path) {
    const system::InputFile file(path);
    if (!file.isOpen()) return std::nullopt;
    std::string bytes;
    while (bytes.size() <= limit) {
        const std::size_t before = bytes.size();
        bytes.resize(before + kPiece);
        const std::optional<std::size_t> count = file.read(bytes.data() + before, kPiece);
        if (!count) return std::nullopt;
        bytes.resize(before + *count);
        if (*count == 0) break;
    }
    return Data::adopt(std::move(bytes));
}

/// The bytes that a URL's path stands for; nothing when a "%" is not followed by two digits, or one stands
/// for a NUL, which no path has.
std::optional<std::string> decodedPath(std::string_view text) {
    std::string path;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            path += text[i];
            continue;
        }
        const int high = i + 2 < text.size() ? hexDigitValue(text[i + 1]) : -1;
        const int low = i + 2 < text.size() ? hexDigitValue(text[i + 2]) : -1;
        if (high < 0 || low < 0 || high * 16 + low == 0) return std::nullopt;
        path += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return path;
}

}  // namespace

OpenError tooLargeError(std::size_t maximumSize) {
    return errorWith(OpenErrorCode::tooLarge,
                     "The file has more than " + std::to_string(maximumSize) + " bytes, which is the limit.",
                     {}, "Raise OpenOptions::maximumSize if you trust the sender.");
}

Source readFile(const std::string& path, std::size_t maximumSize) {
    const std::uint64_t size = system::statusOf(path).size;
    if (size > maximumSize) return {{}, tooLargeError(maximumSize)};
    const bool hasLimit = maximumSize != std::numeric_limits<std::size_t>::max();
    std::optional<Data> bytes = hasLimit && size == 0 ? bytesWithin(maximumSize, path) : Data::fromFile(path);
    if (!bytes) return {{}, errorOfFile(path)};
    if (bytes->size() > maximumSize) return {{}, tooLargeError(maximumSize)};
    return {std::move(*bytes), {}};
}

bool isURLOfOtherScheme(std::string_view text) noexcept {
    const std::string_view scheme = text.substr(0, text.find("://"));
    const auto isInScheme = [](char c) {
        return isASCIILetter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.';
    };
    return scheme.size() < text.size() && !scheme.empty() && isASCIILetter(scheme.front()) &&
           std::ranges::all_of(scheme, isInScheme) && !equalsIgnoringCase(scheme, "file");
}

OpenError otherSchemeError(std::string_view url) { return kOtherScheme.with(url); }

PathOrError pathOf(std::string_view pathOrURL) {
    constexpr std::string_view scheme = "file:";
    if (!equalsIgnoringCase(pathOrURL.substr(0, scheme.size()), scheme)) return {std::string(pathOrURL), {}};
    std::string_view rest = pathOrURL.substr(scheme.size());
    if (rest.starts_with("//")) {
        rest.remove_prefix(2);
        const std::string_view host = rest.substr(0, rest.find('/'));
        rest.remove_prefix(host.size());
        if (!host.empty() && !equalsIgnoringCase(host, "localhost")) return {{}, kOtherHost.with(host)};
    }
    // A query or a fragment has no meaning in the URL of a file.
    const std::optional<std::string> path = decodedPath(rest);
    if (!rest.starts_with('/') || !path) return {{}, kInvalidURL.with(pathOrURL)};
    return {system::pathOfURL(*path), {}};
}

}  // namespace brackwell::opening
