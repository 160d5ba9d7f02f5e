// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

/// \file
/// The structures of the Arrow C data interface and its C stream interface, as their documentation prescribes
/// the layout. They are the whole of what two sides share, so nothing of Arrow has to be there.

extern "C" {

struct ArrowSchema {
    const char* format;
    const char* name;
    const char* metadata;
    std::int64_t flags;
    std::int64_t n_children;
    ArrowSchema** children;
    ArrowSchema* dictionary;
    void (*release)(ArrowSchema*);  ///< null once released, or moved away
    void* private_data;
};

struct ArrowArray {
    std::int64_t length;
    std::int64_t null_count;
    std::int64_t offset;
    std::int64_t n_buffers;
    std::int64_t n_children;
    const void** buffers;
    ArrowArray** children;
    ArrowArray* dictionary;
    void (*release)(ArrowArray*);  ///< null once released, or moved away
    void* private_data;
};

struct ArrowArrayStream {
    int (*get_schema)(ArrowArrayStream*, ArrowSchema* out);
    int (*get_next)(ArrowArrayStream*, ArrowArray* out);
    const char* (*get_last_error)(ArrowArrayStream*);
    void (*release)(ArrowArrayStream*);
    void* private_data;
};

}  // extern "C"

namespace brackwell::python {

inline constexpr std::int64_t kArrowFlagNullable = 2;

}  // namespace brackwell::python
