#include "Metadata.h"

#include <string_view>

namespace tool {

namespace {

constexpr const char* kCarried[] = {
    "PixelAspectRatio", "XResolution",     "YResolution", "ResolutionUnit", "FramesPerSecond",
    "smpte:TimeCode",   "oiio:ColorSpace", "oiio:Gamma",  "chromaticities", "ICCProfile",
    "ImageDescription", "whiteLuminance",  "Copyright",   "Artist",         "smpte:KeyCode",
};
constexpr char kFingerprint[] = "streakfall:fingerprint";
constexpr char kLook[] = "streakfall:look";
// TIFF has no names of one's own: there both stand behind the program's name.
constexpr std::string_view kBehindProgram = ", fingerprint ";
constexpr std::string_view kBehindFingerprint = ", look ";

std::string textBehind(const std::string& text, std::string_view mark) {
    const auto at = text.find(mark);
    return at == std::string::npos ? "" : text.substr(at + mark.size());
}

}  // namespace

OIIO::ParamValueList carriedMetadata(const OIIO::ImageSpec& input) {
    OIIO::ParamValueList carried;
    for (const char* name : kCarried)
        if (const OIIO::ParamValue* value = input.find_attribute(name)) carried.push_back(*value);
    return carried;
}

void putMetadata(OIIO::ImageSpec& output, const std::string& format,
                 const OIIO::ParamValueList& carried, const Stamp& stamp) {
    // In a TIFF the library keeps the colour space in a second directory, for which it reads back
    // what it wrote, and a file in memory cannot be read. The profile tells the space there.
    for (const OIIO::ParamValue& value : carried)
        if (format != "tiff" || value.name() != "oiio:ColorSpace")
            output.extra_attribs.push_back(value);
    // EXR files get the time of day when nothing stands there. What is no text is not written, so
    // that equal pictures are equal files.
    output.attribute("DateTime", 0);
    OIIO::attribute("debug", 0);  // the library's word about it is not for the user
    if (stamp.fingerprint.empty()) return;
    if (format == "tiff") {
        std::string software = stamp.program;
        software += kBehindProgram;
        software += stamp.fingerprint;
        software += kBehindFingerprint;
        software += stamp.look;
        output.attribute("Software", software);
        return;
    }
    output.attribute("Software", stamp.program);
    output.attribute(kLook, stamp.look);
    output.attribute(kFingerprint, stamp.fingerprint);
}

std::string stampedFingerprint(const OIIO::ImageSpec& spec) {
    const std::string own(spec.get_string_attribute(kFingerprint));
    if (!own.empty()) return own;
    const std::string software(spec.get_string_attribute("Software"));
    const std::string behind = textBehind(software, kBehindProgram);
    return behind.substr(0, behind.find(kBehindFingerprint));
}

std::string stampedLook(const OIIO::ImageSpec& spec) {
    const std::string own(spec.get_string_attribute(kLook));
    return own.empty()
               ? textBehind(std::string(spec.get_string_attribute("Software")), kBehindFingerprint)
               : own;
}

}  // namespace tool
