#include "params/Settings.h"

#include "params/Numbers.h"
#include "params/ProductVersion.h"
#include "platform/Platform.h"

namespace streakfall {

namespace {

static_assert(kVersionMajor < 10 && kVersionMinor < 10, "the text has one digit for each");
constexpr char kVersionSection[] = {
    'V', 'e', 'r', 's', 'i', 'o', 'n', '=', '0' + kVersionMajor, '.', '0' + kVersionMinor, '\0'};

}  // namespace

constinit std::atomic<const char*> settingsSection{""};

void useSettingsSection() { settingsSection = kVersionSection; }

void dropSettingsSection() { settingsSection = ""; }

std::string modulePath(const PF_InData* inData) {
    // One more than the host may fill, so that the text ends whatever it does.
    char told[kPFPlatDataPathRoom + 1] = {};
    inData->utils->get_platform_data(inData->effect_ref, PF_PlatData_RES_FILE_PATH, told);
    return told[0] != '\0' ? told : platform::ownModulePath();
}

std::string settingsPath(const PF_InData* inData) {
    const std::string path = modulePath(inData);
    if (path.empty()) return {};

    // A point in a folder's name is no extension: cutting there would name a file in the folder
    // above.
    const std::size_t folder = path.find_last_of("/\\");
    const std::size_t point = path.rfind('.');
    const bool hasExtension = point != path.npos && (folder == path.npos || point > folder);
    return (hasExtension ? path.substr(0, point) : path) + ".ini";
}

std::int32_t storedInteger(const char* key, std::int32_t fallback, const char* path) {
    return platform::profileInt(settingsSection, key, fallback, path);
}

double storedNumber(const char* key, double fallback, const char* path) {
    char text[128];
    platform::profileString(settingsSection, key, sixDecimals(fallback).c_str(), text, path);
    return parseDecimal(text);
}

void storeInteger(const char* key, std::int32_t value, const char* path) {
    platform::writeProfileString(settingsSection, key, std::to_string(value).c_str(), path);
}

void storeNumber(const char* key, double value, const char* path) {
    platform::writeProfileString(settingsSection, key, sixDecimals(value).c_str(), path);
}

}  // namespace streakfall
