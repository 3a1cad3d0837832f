#include "validate/OwnFolder.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace validate {

OwnFolder::OwnFolder(Report& report) {
    std::string made = (std::filesystem::temp_directory_path() / "validate-XXXXXX").string();
    if (!mkdtemp(made.data())) report.stop("no temporary folder");
    path_ = made;
}

OwnFolder::~OwnFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

standin::HostOffer OwnFolder::offer() const {
    standin::HostOffer offer;
    offer.modulePath = (path_ / "Module.plug").string();
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
