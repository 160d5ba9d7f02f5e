// SPDX-License-Identifier: Apache-2.0
#include "console/messages.h"
#include "run.h"

namespace tool {
namespace {

std::shared_ptr<brackwell::TvOFXRequest> makeRequest(const RequestOptions& options) {
    if (!options.isProfile) return brackwell::TvOFXAccountInfoRequest::initWithUpdateDateTime(options.since);
    auto request = brackwell::TvOFXFIProfileRequest::initWithUpdateDateTime(options.since);
    request->setClientRouting(options.routing);
    return request;
}

}  // namespace

bool runRequest(Run& run) {
    if (!run.options.request.isProfile && run.options.request.routing != 0)
        say("--routing", "is for profile requests only and has no effect here");
    const auto request = makeRequest(run.options.request);
    request->setOfxVersion(run.options.request.version);
    run.output.write(request->ofxString());
    run.output.keep();
    return true;
}

}  // namespace tool
