// SPDX-License-Identifier: Apache-2.0
#include "console/output_target.h"

#include <brackwell/platform.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <string_view>

#include "text/characters.h"

namespace tool {
namespace {

using namespace std::string_view_literals;
using Kind = OutputTarget::Kind;

// ---------------------------------------------------------------------------------------------
// What a name leads to

/// As many as the system follows.
constexpr int kMostLinks = 40;

/// True for a link that stands for an open descriptor. Its text need not be where it leads.
bool isDescriptor(const std::string& link) {
    std::array<char, PATH_MAX> folder{};
    return ::realpath((folderOf(link) + ".").c_str(), folder.data()) != nullptr &&
           std::string_view(folder.data()).starts_with("/proc/");
}

/// Replaces the path of a link by where it leads; false when that cannot be read.
bool follow(std::string& link) {
    std::array<char, PATH_MAX> text{};
    const ssize_t size = ::readlink(link.c_str(), text.data(), text.size());
    if (size < 0) return false;
    const bool isAbsolute = text[0] == '/';
    link = (isAbsolute ? "" : folderOf(link)).append(text.data(), static_cast<std::size_t>(size));
    return true;
}

/// What is no link, by its status.
OutputTarget targetAt(const std::string& path, const struct stat& status) {
    if (S_ISDIR(status.st_mode)) return {Kind::unreachable, EISDIR, {}};
    if (!S_ISREG(status.st_mode)) return {Kind::device, 0, path};
    // A file that its owner protects would be replaced all the same: that asks for rights on the folder only.
    if (::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0) return {Kind::unreachable, errno, {}};
    return {Kind::file, 0, path};
}

// ---------------------------------------------------------------------------------------------
// What a file begins like

/// The beginnings of documents, without regard to case.
constexpr std::string_view kBeginnings[] = {"<?XML", "<?OFX", "OFXHEADER:", "<OFX>"};
constexpr std::size_t kLongestBeginning = "OFXHEADER:"sv.size();

/// White space before a document that is looked through.
constexpr std::size_t kLookedThrough = 1 << 16;

/// How the characters of a text stand in its bytes.
struct Form {
    std::size_t width;  ///< bytes of a character; 1: any encoding that has ASCII in it
    bool isBigEndian;
};
constexpr Form kForms[] = {{1, true}, {2, true}, {2, false}, {4, true}, {4, false}};

/// The bytes after a mark of any encoding, or all of them.
std::string_view withoutMark(std::string_view bytes) noexcept {
    for (const std::string_view mark :
         {"\xEF\xBB\xBF"sv, "\xBF\xBB\xBF"sv, "\x00\x00\xFE\xFF"sv, "\xFE\xFF"sv, "\xFF\xFE"sv})
        if (bytes.starts_with(mark)) return bytes.substr(mark.size());
    return bytes;
}

/// The character that bytes begin with; none when they end before it does.
Character characterOf(std::string_view bytes, const Form& form) noexcept {
    if (bytes.size() < form.width) return {};
    const auto byteAt = [bytes](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    if (form.width == 1) {
        const Character character = firstCharacter(bytes);
        // Where it is no UTF-8 it may be a blank of a code page.
        return character.code == kReplacementCharacter ? Character{byteAt(0), 1} : character;
    }
    char32_t code = 0;
    for (std::size_t i = 0; i < form.width; ++i)
        code = code << 8 | byteAt(form.isBigEndian ? i : form.width - 1 - i);
    return {code, form.width};
}

/// The first characters after white space, as far as they are ASCII, in capitals.
struct Beginning {
    std::string text;
    bool isCut = false;  ///< the bytes end before it does
};

Beginning beginningOf(std::string_view bytes, const Form& form) {
    constexpr char32_t mark = 0xFEFF;
    Beginning beginning;
    while (beginning.text.size() < kLongestBeginning) {
        const auto [code, size] = characterOf(bytes, form);
        beginning.isCut = size == 0;
        const bool isBefore = beginning.text.empty() && (brackwell::isWhiteSpace(code) || code == mark);
        if (beginning.isCut || (code >= 0x80 && !isBefore)) break;
        const bool isSmall = code >= 'a' && code <= 'z';
        if (!isBefore) beginning.text += static_cast<char>(isSmall ? code - 'a' + 'A' : code);
        bytes.remove_prefix(size);
    }
    return beginning;
}

/// False for what is no document, whatever may follow these bytes.
bool mayBeginDocument(const Beginning& beginning, bool goesOn) noexcept {
    if (beginning.isCut && goesOn) return true;
    return std::ranges::any_of(kBeginnings,
                               [&](std::string_view wanted) { return beginning.text.starts_with(wanted); });
}

/// The first bytes of a file; false when they cannot be read.
bool readBeginning(const std::string& path, std::string& bytes) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (file < 0) return false;
    bytes.resize(kLookedThrough);
    std::size_t size = 0;
    ssize_t count = 1;
    while (count > 0 && size < bytes.size()) {
        count = ::read(file, bytes.data() + size, bytes.size() - size);
        if (count > 0) size += static_cast<std::size_t>(count);
        if (count < 0 && errno == EINTR) count = 1;
    }
    ::close(file);
    bytes.resize(size);
    return count >= 0;
}

// ---------------------------------------------------------------------------------------------
// What must stay

bool isSameFile(const std::string& input, const std::string& output) {
    struct stat first = {};
    struct stat second = {};
    return ::stat(input == "-" ? "/dev/stdin" : input.c_str(), &first) == 0 && S_ISREG(first.st_mode) &&
           ::stat(output.c_str(), &second) == 0 && first.st_dev == second.st_dev &&
           first.st_ino == second.st_ino;
}

}  // namespace

OutputTarget outputTarget(const std::string& name) {
    std::string path = name;
    for (int i = 0; i < kMostLinks; ++i) {
        struct stat status = {};
        if (::lstat(path.c_str(), &status) != 0) {
            const bool isMissing = errno == ENOENT;
            return isMissing ? OutputTarget{Kind::missing, 0, path}
                             : OutputTarget{Kind::unreachable, errno, {}};
        }
        if (!S_ISLNK(status.st_mode)) return targetAt(path, status);
        if (isDescriptor(path)) return {Kind::descriptor, 0, path};
        if (!follow(path)) return {Kind::unreachable, errno, {}};
    }
    return {Kind::unreachable, ELOOP, {}};
}

std::string folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == path.npos ? std::string() : path.substr(0, slash + 1);
}

bool mayBeDocument(const std::string& path) {
    std::string bytes;
    if (!readBeginning(path, bytes)) return true;
    const bool goesOn = bytes.size() == kLookedThrough;
    return std::ranges::any_of(kForms, [&](const Form& form) {
        return mayBeginDocument(beginningOf(form.width == 1 ? withoutMark(bytes) : bytes, form), goesOn);
    });
}

std::string objectionTo(const std::string& name, const std::vector<std::string>& inputs,
                        const OutputRules& rules) {
    const bool isInput =
        std::ranges::any_of(inputs, [&name](const std::string& input) { return isSameFile(input, name); });
    if (isInput && !rules.mayReplaceInput) return "is also a file to be read; give --output another name";
    if (rules.replacesDocuments) return {};
    if (isInput)
        return "is also a file to be read; give --output another name, or replace the document with --force";
    const OutputTarget target = outputTarget(name);
    if (target.kind != Kind::file || !mayBeDocument(target.path)) return {};
    return "begins like an OFX document, which would be lost; give --output another name, or replace the "
           "document with --force";
}

}  // namespace tool
