// SPDX-License-Identifier: Apache-2.0

// The thread sanitizer does not see the C library's own locks, but does see that it allocates and releases
// memory under them (for zones, locales and encodings). It is told to overlook what the C
// library and its loader do.

extern "C" const char* __tsan_default_suppressions();

extern "C" const char* __tsan_default_suppressions() {
    return "called_from_lib:libc.so.6\ncalled_from_lib:ld-linux\n";
}
