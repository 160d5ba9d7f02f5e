// SPDX-License-Identifier: Apache-2.0
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
    const auto request = makeRequest(run.options.request);
    request->setOfxVersion(run.options.request.version);
    run.output.write(request->ofxString());
    return true;
}

}  // namespace tool
