// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

#include <functional>
#include <optional>

namespace tool {

struct InputFile;
struct Run;

/// Where the securities are looked up that a document names: in its own list first, then in those of the
/// other documents.
class SecurityLookup {
public:
    /// Both lists have to live as long as the lookup.
    SecurityLookup(const brackwell::SecurityList& own, const brackwell::SecurityList& others) noexcept
        : own_(own), others_(others) {}

    /// The security of a position or a transaction; nothing when no list has it, or none is named.
    template <class Object>
    std::optional<brackwell::Security> find(const Object& object) const {
        std::optional<brackwell::Security> found = own_.find(object);
        return found ? found : others_.find(object);
    }

private:
    const brackwell::SecurityList& own_;
    const brackwell::SecurityList& others_;
};

/// Reads the files like forEachFile and hands each on, in their order, with all securities that are known
/// for it. A file that names a security of which it says nothing itself waits until all files are read, and
/// so do those after it; the others do not. Files of which nothing was read are handed on in their places
/// where there is a use for them.
bool forEachFileWithSecurities(
    Run& run, const std::function<void(const InputFile&, const brackwell::SecurityList&)>& use,
    const std::function<void(const InputFile&)>& useUnread = {});

}  // namespace tool
