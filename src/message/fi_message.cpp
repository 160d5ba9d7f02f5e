// SPDX-License-Identifier: Apache-2.0
#include <brackwell/model.h>

#include "fields/description.h"

namespace brackwell {

TvOFXFIMessage::TvOFXFIMessage(const TvOFXResponse& response) : date_(currentDate()), message_("[") {
    const TvOFXStatus* status = response.status().get();
    const auto append = [this](OptionalText text) { message_.append(orAbsent(text)); };
    append(status ? status->severity() : std::nullopt);
    message_.append("] ");
    append(status ? status->message() : std::nullopt);
}

std::shared_ptr<TvOFXFIMessage> TvOFXFIMessage::initWithOFXResponse(const TvOFXResponse& response) {
    return std::make_shared<TvOFXFIMessage>(response);
}

}  // namespace brackwell
