#include "OutputForm.h"

#include <algorithm>
#include <filesystem>
#include <vector>

#include "Compressions.h"
#include "Failure.h"
#include "Text.h"

namespace tool {

namespace {

using standin::Depth;

std::string formatOf(const std::string& path, const OutputWishes& wishes) {
    if (!wishes.stream.empty()) return wishes.stream;
    const std::string ending = lowered(std::filesystem::path(path).extension().string());
    if (ending == ".exr") return "openexr";
    if (ending == ".png") return "png";
    if (ending == ".tif" || ending == ".tiff") return "tiff";
    failUsage("cannot write {}: the name must end in .png, .tif, .tiff or .exr", path);
}

OIIO::TypeDesc typeOf(const std::string& format, Depth depth, bool half) {
    if (half && format != "openexr") failUsage("--half: only an EXR holds half floats");
    if (format == "openexr") return half ? OIIO::TypeDesc::HALF : OIIO::TypeDesc::FLOAT;
    if (depth == Depth::bits8) return OIIO::TypeDesc::UINT8;
    return depth == Depth::float32 && format == "tiff" ? OIIO::TypeDesc::FLOAT
                                                       : OIIO::TypeDesc::UINT16;
}

std::string labelOf(const std::string& format, OIIO::TypeDesc type) {
    const char* name = format == "openexr" ? "EXR"
                       : format == "png"   ? "PNG"
                       : format == "tiff"  ? "TIFF"
                                           : "raw RGBA";
    const char* bits = type == OIIO::TypeDesc::UINT8    ? "8 bits"
                       : type == OIIO::TypeDesc::UINT16 ? "16 bits"
                       : type == OIIO::TypeDesc::HALF   ? "half"
                                                        : "float";
    return fmt::format("{} {}", name, bits);
}

void chooseCompression(OutputForm& form, const std::string& text) {
    // Quick: the pixels of a field of lines compress well at any level, and higher ones cost
    // several times the drawing.
    constexpr int kQuickPng = 1;
    if (form.format == "png") form.level = kQuickPng;
    if (form.format == "tiff" || form.format == "openexr") form.compression = "zip";
    if (text.empty()) return;
    const auto parts = split(text, ':');
    const auto known = compressionsOf(form.format);
    const auto found = std::find_if(known.begin(), known.end(), [&](const Compression& one) {
        return lowered(parts[0]) == one.name;
    });
    if (found == known.end()) {
        std::vector<std::string> names;
        for (const Compression& one : known) names.emplace_back(one.name);
        failUsage("--compression: \"{}\" is none of those of {}: {}", parts[0], form.label,
                  quotedList(names));
    }
    form.compression = found->name;
    if (form.format == "png" && form.compression == "none") form.level = 0;
    if (parts.size() == 1) return;
    const auto level = parts.size() == 2 ? parseInt(parts[1]) : std::nullopt;
    if (found->most == 0) failUsage("--compression: \"{}\" has no levels", found->name);
    if (!level || *level < found->least || *level > found->most)
        failUsage("--compression: the level of \"{}\" goes from {} to {}", found->name,
                  found->least, found->most);
    form.level = *level;
}

}  // namespace

OutputForm chooseOutputForm(const std::string& path, Depth depth, const OutputWishes& wishes) {
    OutputForm form;
    form.format = formatOf(path, wishes);
    form.type = typeOf(form.format, depth, wishes.half);
    form.label = labelOf(form.format, form.type);
    const bool custom = form.format == "openexr";
    form.alpha = wishes.alpha.value_or(custom ? Alpha::kAssociated : Alpha::kStraight);
    if (form.format == "png" && form.alpha == Alpha::kAssociated)
        failUsage(
            "--alpha premultiplied: a PNG holds straight colour; write an EXR or a TIFF, or "
            "premultiplied: for the input alone");
    chooseCompression(form, wishes.compression);
    return form;
}

Depth depthForOutput(const std::string& path, const OutputWishes& wishes) {
    return formatOf(path, wishes) == "openexr" ? Depth::float32 : Depth::bits8;
}

}  // namespace tool
