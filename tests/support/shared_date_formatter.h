// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/convert.h>

namespace brackwell::tests {

/// Gives the shared helper a caller's date formatter for as long as the guard lives.
class SharedDateFormatter {
public:
    explicit SharedDateFormatter(std::shared_ptr<const DateFormatter> formatter) {
        TvOFXHelper::defaultHelper()->setDateFormatter(std::move(formatter));
    }
    ~SharedDateFormatter() { TvOFXHelper::defaultHelper()->setDateFormatter(nullptr); }
    SharedDateFormatter(const SharedDateFormatter&) = delete;
    SharedDateFormatter& operator=(const SharedDateFormatter&) = delete;
};

}  // namespace brackwell::tests
