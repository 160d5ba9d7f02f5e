// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Keeps a class that stands inside an exported one out of what a shared library exports; by itself
/// it would be exported like the class around it.
#define BRACKWELL_INTERNAL __attribute__((visibility("hidden")))
