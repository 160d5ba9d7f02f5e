// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdlib>
#include <string>

#include "dates/environment_guard.h"
#include "support/temporary_folder.h"

namespace brackwell::tests {

/// A folder in which the C library finds its locales for as long as the object lives.
class LocaleFolder {
public:
    /// Makes the locale from its source; false where the machine has no means to do so.
    bool add(const std::string& source, const std::string& characters, const std::string& name) {
        const std::string path = folder_.path(name);
        const std::string command = "localedef -c -i " + source + " -f " + characters + " '" + path + "' >'" +
                                    folder_.path("log") + "' 2>&1";
        return std::system(command.c_str()) == 0;
    }

private:
    TemporaryFolder folder_;
    EnvironmentGuard guard_{"LOCPATH", folder_.path()};
};

}  // namespace brackwell::tests
