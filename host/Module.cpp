#include "host/Module.h"

#include <filesystem>

#include "host/PathText.h"

namespace standin {
namespace {

constexpr char kEntryName[] = "EntryPointFunc";

std::string absolutePath(const std::string& path) {
    std::error_code failed;
    const auto absolute = std::filesystem::absolute(fileAt(path), failed).make_preferred();
    if (failed || !std::filesystem::is_regular_file(absolute, failed)) {
        throw ModuleError("cannot load the effect module \"" + path + "\": no such file");
    }
    return pathText(absolute);
}

}  // namespace

Module::Module(const std::string& path) : path_(absolutePath(path)) {
    try {
        library_.open(path_);
    } catch (const std::runtime_error& error) {
        throw ModuleError("cannot load the effect module \"" + path + "\": " + error.what());
    }
    entry_ = reinterpret_cast<PF_EntryPoint>(library_.symbol(kEntryName));
    if (!entry_) {
        throw ModuleError("\"" + path + "\" is no effect module: it has no function " + kEntryName);
    }
}

Module::Module(PF_EntryPoint ownEntry) : entry_(ownEntry) {}

void Module::called(const std::shared_ptr<Services>& services) {
    const std::lock_guard lock(mutex_);
    if (!firstCaller_) {
        firstCaller_ = services;
    }
}

void Module::setDown() {
    const std::lock_guard lock(mutex_);
    firstCaller_.reset();
}

void Module::hostStarted() {
    const std::lock_guard lock(mutex_);
    ++started_;
}

bool Module::hostStopsLast() {
    const std::lock_guard lock(mutex_);
    return --started_ == 0;
}

}  // namespace standin
