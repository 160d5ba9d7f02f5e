// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace tool {

/// Writes "subject: text" as a line to standard error, in one piece. What a terminal might obey is
/// made visible when standard error is one.
void say(std::string_view subject, std::string_view text);

/// The same for lines without a subject, which end in line feeds.
void sayText(std::string_view lines);

/// @{
/// From now on messages to a terminal wait, and are written when they are released.
void holdMessages() noexcept;
void releaseMessages();
/// @}

/// False once anything could not be written to standard error.
bool areMessagesWritten() noexcept;

}  // namespace tool
