// The settings file: where it is, and the values that the user made the defaults.
//
// It lies beside the module's own file and has one section a version, "[Version=1.5]", with a line
// for each value in host order. The dialog writes it, the adding of the parameters reads it.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "hostapi/hostapi.h"

namespace streakfall {

// The section of this version, or empty when the settings file is not to be used. Process-wide;
// set each time the parameters are added to a host, which hosts may do at once. Static text.
extern std::atomic<const char*> settingsSection;

void useSettingsSection();
void dropSettingsSection();

// The module's file as the host tells it, with or beside a code; as the system does where the host
// says nothing. Empty when neither knows.
std::string modulePath(const PF_InData* inData);

// The module's file with the extension "ini". A file name without an extension gets one; empty
// when nobody names the file.
std::string settingsPath(const PF_InData* inData);

// The stored value, or the fallback where there is none. A number falls back to its six decimals.
std::int32_t storedInteger(const char* key, std::int32_t fallback, const char* path);
double storedNumber(const char* key, double fallback, const char* path);

// A failed write goes unnoticed: the old value stays.
void storeInteger(const char* key, std::int32_t value, const char* path);
void storeNumber(const char* key, double value, const char* path);

}  // namespace streakfall
