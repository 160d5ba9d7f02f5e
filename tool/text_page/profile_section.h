// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/profile.h>

namespace tool {

class TextPage;

void showSignOn(TextPage& page, const brackwell::TvOFXSignOnResponse& signOn);
void showProfile(TextPage& page, const brackwell::TvOFXFIProfileResponse& profile);

}  // namespace tool
