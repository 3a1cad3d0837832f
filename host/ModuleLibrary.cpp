#include "host/ModuleLibrary.h"

#include <stdexcept>

#include "host/PathText.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace standin {

#ifdef _WIN32

void ModuleLibrary::open(const std::string& path) {
    const HMODULE module = LoadLibraryW(fileAt(path).c_str());
    if (!module) {
        throw std::runtime_error("system error " + std::to_string(GetLastError()));
    }
    handle_ = reinterpret_cast<void*>(module);
}

void* ModuleLibrary::symbol(const char* name) const {
    return reinterpret_cast<void*>(GetProcAddress(reinterpret_cast<HMODULE>(handle_), name));
}

#else

void ModuleLibrary::open(const std::string& path) {
    handle_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle_) {
        throw std::runtime_error(dlerror());
    }
}

void* ModuleLibrary::symbol(const char* name) const { return dlsym(handle_, name); }

#endif

}  // namespace standin
