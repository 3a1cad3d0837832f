#pragma once

#include <filesystem>
#include <string>

#include "host/HostOffer.h"
#include "validate/Report.h"

namespace validate {

// A temporary folder that the effect takes for the one its module lies in, so that what it stores
// beside the module lands there, also by the system's word (off Windows). Removed with everything
// in it; the word stays, for a check has a process of its own.
class OwnFolder {
  public:
    explicit OwnFolder(Report& report);
    ~OwnFolder();
    OwnFolder(const OwnFolder&) = delete;
    OwnFolder& operator=(const OwnFolder&) = delete;

    // A host that tells this folder.
    standin::HostOffer offer() const;
    std::filesystem::path settings() const { return path_ / "Module.ini"; }

    std::string readSettings() const;
    void writeSettings(const std::string& content) const;

  private:
    std::string module() const;

    std::filesystem::path path_;
};

}  // namespace validate
