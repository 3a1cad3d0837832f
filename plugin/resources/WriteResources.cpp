// Writes what the resource script takes from the effect's own constants: the property list, and
// the version as macros of a header. Built and run by the build on the building machine.
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "params/ProductVersion.h"
#include "resources/PropertyList.h"

namespace {

using namespace streakfall;

bool writeFile(const char* path, const std::string& content) {
    std::ofstream file(path, std::ios::binary);
    file << content << std::flush;
    if (!file) std::fprintf(stderr, "cannot write %s\n", path);
    return file.good();
}

std::string propertyListBytes() {
    static constexpr auto kList = propertyList();
    return {kList.begin(), kList.end()};
}

std::string versionMacros() {
    std::ostringstream text;
    text << "#define PRODUCT_NAME \"" << kProductName << "\"\n"
         << "#define VERSION_NUMBERS " << kVersionMajor << ',' << kVersionMinor << ','
         << kVersionBugFix << ',' << kVersionBuild << '\n'
         << "#define VERSION_TEXT \"" << kVersionMajor << '.' << kVersionMinor << '.'
         << kVersionBugFix << "\"\n";
    return text.str();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s PROPERTY_LIST VERSION_HEADER\n", argv[0]);
        return 2;
    }
    return writeFile(argv[1], propertyListBytes()) && writeFile(argv[2], versionMacros()) ? 0 : 1;
}
