#include <memory>

#include "Commands.h"
#include "Failure.h"
#include "Look.h"
#include "PictureReader.h"
#include "PictureWriter.h"
#include "RenderOptions.h"
#include "Say.h"
#include "Sheet.h"
#include "ValueOptions.h"
#include "Variation.h"

namespace tool {

namespace {

struct SheetOptions {
    std::string module, input, output;
    std::string size = "960x540";
    std::vector<std::string> vary;
    ParamTexts params;
    SheetForm form;
    bool looks = false;
};

constexpr char kExamples[] =
    "Examples:\n"
    "  streakfall sheet -i photo.jpg -o looks.png --looks\n"
    "  streakfall sheet -i photo.jpg -o seeds.png --look rain --vary \"Random Seed=12 throws\"\n"
    "  streakfall sheet -o fans.png --vary \"Taper=0..100:25\" --vary \"Length=200,500,1000\"";

// Without a picture light lines must be seen as well as dark ones.
standin::Image inputOf(const SheetOptions& options) {
    if (!options.input.empty()) return readPicture(options.input, standin::Depth::bits8);
    const standin::LayerSize size = parseSize(options.size, "--size");
    return standin::Image::filled(size.width, size.height, standin::Depth::bits8, 1, 0.55, 0.60,
                                  0.66);
}

std::vector<Tile> lookTiles(const ParamTexts& base) {
    std::vector<Tile> tiles;
    for (const Look& look : shippedLooks()) {
        tiles.push_back({{look.key}, base});
        tiles.back().params.looks = {look.key};
    }
    return tiles;
}

std::string settingOf(const Variation& variation, std::size_t index) {
    return fmt::format("{}={}", variation.param->name, variation.values[index]);
}

// The first --vary goes along the rows, a second one down the columns.
std::vector<Tile> variedTiles(const std::vector<Variation>& variations, const ParamTexts& base) {
    std::vector<Tile> tiles;
    const std::size_t rows = variations.size() > 1 ? variations[1].values.size() : 1;
    for (std::size_t row = 0; row < rows; ++row) {
        for (std::size_t column = 0; column < variations[0].values.size(); ++column) {
            Tile tile{{settingOf(variations[0], column)}, base};
            if (variations.size() > 1) tile.labels.push_back(settingOf(variations[1], row));
            for (const std::string& label : tile.labels) tile.params.sets.push_back(label);
            tiles.push_back(std::move(tile));
        }
    }
    if (tiles.size() > static_cast<std::size_t>(kMostTiles))
        failUsage("--vary: {} tiles; {} are possible", tiles.size(), kMostTiles);
    return tiles;
}

int drawSheet(SheetOptions options) {
    if (options.looks == !options.vary.empty())
        failUsage("sheet wants either --looks or --vary \"Random Seed=1..12\", once or twice");
    if (options.vary.size() > 2) failUsage("--vary: {} times; twice at most", options.vary.size());
    (void)chooseOutputForm(options.output, standin::Depth::bits8, {});
    EffectSession session(options.module, Defaults::kOwn);
    std::vector<Variation> variations;
    for (const std::string& text : options.vary)
        variations.push_back(parseVariation(ParamLookup(session.host().params()), text));
    if (variations.size() == 2)
        options.form.columns = static_cast<int>(variations[0].values.size());
    const std::vector<Tile> tiles =
        options.looks ? lookTiles(options.params) : variedTiles(variations, options.params);
    writePicture(options.output, makeSheet(session, inputOf(options), tiles, options.form));
    for (const Tile& tile : tiles)
        print("{}{}\n", tile.labels[0], tile.labels.size() > 1 ? ", " + tile.labels[1] : "");
    return 0;
}

}  // namespace

void addSheetCommand(CLI::App& program, int& result) {
    CLI::App* command = program.add_subcommand(
        "sheet",
        "Draw one picture of labelled tiles: all looks, or one\nlook under different values");
    const auto options = std::make_shared<SheetOptions>();
    command->add_option("-i,--input", options->input, "The picture that lines are drawn on")
        ->type_name("FILE");
    command->add_option("-o,--output", options->output, "PNG, TIFF or EXR, by the ending")
        ->type_name("FILE")
        ->required();
    command->add_option("--size", options->size, "Without input: the size of the grey frame")
        ->type_name("WxH")
        ->capture_default_str();
    command
        ->add_option("--vary", options->vary,
                     "One parameter through values: \"Random Seed=1..12\",\n"
                     "\"Taper=0..100:25\", \"Thickness=2,5,12\", \"Random Seed=12 throws\"\n"
                     "(far apart); twice for columns and rows")
        ->type_name("NAME=VALUES")
        ->type_size(1)
        ->allow_extra_args(false)
        ->take_all();
    command->add_flag("--looks", options->looks, "A tile for each look that ships");
    command->add_option("-f,--frame", options->form.frame, "The frame that is drawn")
        ->type_name("FRAME")
        ->capture_default_str();
    command->add_option("--tile", options->form.tileWidth, "Width of a tile, about")
        ->type_name("PIXELS")
        ->check(CLI::Range(16, 4096))
        ->capture_default_str();
    command->add_option("--columns", options->form.columns, "Tiles side by side")
        ->type_name("N")
        ->check(CLI::Range(1, kMostTiles));
    addModuleOption(*command, options->module);
    addValueOptions(*command, options->params, true);
    command->footer(kExamples);
    command->callback([options, &result] { result = drawSheet(*options); });
}

}  // namespace tool
