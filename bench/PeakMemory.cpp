// Peak memory of one render at 3840 x 2160: what it takes above the host's own worlds, in all
// depths. Fails when that is more than the line buffer and 16 MiB.
//
// The host's worlds and the background are in memory when the effect reports 10 out of 100; the
// process's high-water mark is set back there and read at the end of the command.
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string>

#include "host/FrameRender.h"
#include "host/Host.h"
#include "host/Instance.h"

namespace {

constexpr int kWidth = 3840, kHeight = 2160;
constexpr double kMiB = 1024.0 * 1024.0;
constexpr double kAllowed = 16.0;  // MiB beside the line buffer
constexpr A_long kBackgroundDone = 10, kFrameDone = 100;

// A line of the process's status, in MiB.
double statusMiB(const std::string& key) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(key + ":")) return std::stod(line.substr(key.size() + 1)) / 1024.0;
    }
    throw std::runtime_error("the system does not tell " + key);
}

void setBackPeak() {
    std::ofstream refs("/proc/self/clear_refs");
    refs << "5" << std::flush;
    if (!refs) throw std::runtime_error("the system does not set back the peak of memory");
}

// MiB above what was there when the background was done.
double peakOfRender(standin::Module& module, standin::Depth depth) {
    standin::Host host(module);
    if (host.start() != 0) throw std::runtime_error("the effect does not start");
    standin::Instance instance(host, {kWidth, kHeight});
    for (const auto& [name, value] : {std::pair{"Thickness", 120.0},
                                      {"Length", 1500.0},
                                      {"Density of Lines", 500.0},
                                      {"Repeat", 1.0}}) {
        instance.storeValue(host.param(std::string(name))->id, standin::Value::number(value));
    }
    standin::FrameRequest request;
    request.input = standin::Image::opaqueBlack(kWidth, kHeight, depth);
    double before = 0, peak = 0;
    request.onProgress = [&](A_long done, A_long) {
        if (done == kBackgroundDone) {
            setBackPeak();
            before = statusMiB("VmRSS");
        } else if (done == kFrameDone) {
            peak = statusMiB("VmHWM");
        }
        return false;
    };
    if (standin::renderFrame(instance, request).code != 0 || peak == 0) {
        throw std::runtime_error("the frame failed");
    }
    return peak - before;
}

}  // namespace

int main() {
    standin::Module module(STREAKFALL_MODULE);
    bool good = true;
    for (const auto depth :
         {standin::Depth::bits8, standin::Depth::bits16, standin::Depth::float32}) {
        const double buffer = kWidth * kHeight * standin::bytesPerPixel(depth) / kMiB;
        const double taken = peakOfRender(module, depth);
        std::printf("%2d bits: line buffer %.1f MiB, render %.1f MiB, beside it %.1f MiB\n",
                    standin::bitDepth(depth), buffer, taken, taken - buffer);
        good = good && taken <= buffer + kAllowed;
    }
    return good ? 0 : 1;
}
