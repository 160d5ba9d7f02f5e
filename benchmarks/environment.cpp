// SPDX-License-Identifier: Apache-2.0
// Says what a measurement was made on and with.
#include <gnu/libc-version.h>
#include <sys/utsname.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <pugixml.hpp>
#include <string>
#include <thread>

namespace {

std::string processorName() {
    std::ifstream file("/proc/cpuinfo");
    for (std::string line; std::getline(file, line);)
        if (line.starts_with("model name")) return line.substr(line.find(':') + 2);
    return "unknown processor";
}

/// How many programs wanted a processor over the last minute.
std::string load() {
    std::array<double, 1> average{};
    if (getloadavg(average.data(), 1) != 1) return "unknown";
    return std::to_string(average[0]).substr(0, 4);
}

std::string today() {
    const std::time_t now = std::time(nullptr);
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M UTC", std::gmtime(&now));
    return text.data();
}

std::string systemName() {
    utsname names{};
    return uname(&names) == 0 ? std::string(names.sysname) + " " + names.release + " " + names.machine : "";
}

}  // namespace

int main() {
    const std::string peer =
        std::to_string(PUGIXML_VERSION / 1000) + "." + std::to_string(PUGIXML_VERSION % 1000 / 10);
    std::printf("date       %s\n", today().c_str());
    std::printf("machine    %s, %u processors, load %s\n", processorName().c_str(),
                std::thread::hardware_concurrency(), load().c_str());
    std::printf("system     %s, glibc %s\n", systemName().c_str(), gnu_get_libc_version());
    std::printf("compiler   %s, flags %s\n", BRACKWELL_COMPILER, BRACKWELL_FLAGS);
    std::printf("libraries  pugixml %s, as the system ships it\n", peer.c_str());
}
