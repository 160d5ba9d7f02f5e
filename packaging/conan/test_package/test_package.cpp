// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>

int main() {
    const auto document = brackwell::Data::copy("OFXHEADER:100\nVERSION:102\n\n<OFX></OFX>");
    const auto message = brackwell::TovanaOFXController::importOFXFileFromData(document);
    return message && message->ofxVersion() == 102 ? 0 : 1;
}
