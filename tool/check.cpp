// SPDX-License-Identifier: Apache-2.0
#include "run.h"

namespace tool {

/// What is to be said of a file is said while it is read.
bool runCheck(Run& run) {
    return forEachFile(run, [](const Document&) {});
}

}  // namespace tool
