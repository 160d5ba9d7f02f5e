// SPDX-License-Identifier: Apache-2.0
// What the targets share with the tests shows values to doctest. This is doctest's own code without
// its main, which here is libFuzzer's or the replayer's.
#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest/doctest.h>
