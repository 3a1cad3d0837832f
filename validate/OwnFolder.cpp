#include "validate/OwnFolder.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace validate {

OwnFolder::OwnFolder(Report& report) {
    std::string made = (std::filesystem::temp_directory_path() / "validate-XXXXXX").string();
    if (!mkdtemp(made.data())) report.stop("no temporary folder");
    path_ = made;
    // Where the host does not tell the path the effect may ask the system, and would store beside
    // the module itself.
    setenv("STREAKFALL_OWN_PATH", module().c_str(), 1);
}

OwnFolder::~OwnFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string OwnFolder::module() const { return (path_ / "Module.plug").string(); }

standin::HostOffer OwnFolder::offer() const {
    standin::HostOffer offer;
    offer.modulePath = module();
    return offer;
}

std::string OwnFolder::readSettings() const {
    std::ifstream in(settings(), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void OwnFolder::writeSettings(const std::string& content) const {
    std::ofstream(settings(), std::ios::binary) << content;
}

}  // namespace validate
