// The parameters as the host sees them; those named "product" hold for this product alone.
#include <algorithm>
#include <set>

#include "validate/Checks.h"
#include "validate/Play.h"

namespace validate {
namespace {

using namespace standin;

void expectRange(const ParamInfo& param, Report& report) {
    if (param.type != PF_Param_SLIDER && param.type != PF_Param_FLOAT_SLIDER) return;
    report.expect(param.validMin < param.validMax, "an empty range");
    report.expect(param.sliderMin >= param.validMin && param.sliderMax <= param.validMax,
                  "the slider goes past the valid range");
    const double value = param.defaultValue.part[0];
    report.expect(value >= param.validMin && value <= param.validMax,
                  text("the default ", value, " is outside the valid range"));
}

void consistent(const Subject& subject, Report& report) {
    Play play(subject, report);
    std::set<A_long> ids;
    std::set<std::string> names;
    int open = 0;
    for (const ParamInfo& param : play.host().params()) {
        report.at(text("parameter ", param.index, " \"", param.name, "\""));
        report.expect(param.id > 0, text("has the id ", param.id));
        report.expect(ids.insert(param.id).second, text("shares the id ", param.id));
        report.expect(kindName(param.type) != kindName(PF_Param_RESERVED), "is of no known kind");
        report.expect(param.name.size() <= 31, "has a name without an end");
        if (param.hasValue()) {
            report.expect(!param.name.empty(), "has no name");
            report.expect(names.insert(param.name).second, "shares its name");
        }
        open += param.type == PF_Param_GROUP_START;
        open -= param.type == PF_Param_GROUP_END;
        expectRange(param, report);
    }
    report.at("");
    report.expectSame(open, 0, "the number of groups left open");
    report.note(text(ids.size(), " parameters"));
    play.end();
}

// What every panel, project and settings file of this product relies on.
struct Kind {
    PF_ParamType type;
    long count;
};

void productParams(const Subject& subject, Report& report) {
    Play play(subject, report);
    const auto& params = play.host().params();
    report.expectSame<std::size_t>(params.size(), 62, "the number of parameters");
    report.expectSame<A_long>(play.host().global().numParams, 63, "num_params");
    static constexpr Kind kKinds[] = {
        {PF_Param_SLIDER, 4},      {PF_Param_ANGLE, 1},     {PF_Param_CHECKBOX, 8},
        {PF_Param_COLOR, 1},       {PF_Param_POINT, 2},     {PF_Param_FLOAT_SLIDER, 34},
        {PF_Param_GROUP_START, 6}, {PF_Param_GROUP_END, 6},
    };
    for (const Kind& kind : kKinds) {
        report.expectSame<long>(std::ranges::count(params, kind.type, &ParamInfo::type), kind.count,
                                text("the number of kind ", kindName(kind.type)).c_str());
    }
    // Projects hold values under these numbers: none is new, none is used again.
    static constexpr A_long kRetired[] = {15, 17, 29, 34, 43, 46};
    for (A_long id = 2; id <= 69; ++id) {
        const bool retired = std::ranges::find(kRetired, id) != std::end(kRetired);
        report.expect((play.host().param(id) == nullptr) == retired,
                      text("id ", id, retired ? " is used again" : " is missing"));
    }
    play.end();
}

void productAnnouncement(const Subject& subject, Report& report) {
    Play play(subject, report);
    const GlobalInfo& global = play.host().global();
    report.expectSame<A_u_long>(global.version, 693763, "my_version");
    report.expectSame<PF_OutFlags>(global.outFlags, 0x6000072, "out_flags");
    report.expectSame<PF_OutFlags2>(global.outFlags2, 0x1419, "out_flags2");
    const std::string about = play.host().about();
    report.expect(about.starts_with("Q_Streakfall 1.5.2"), "the about text reads " + about);
    play.end();
}

}  // namespace

std::span<const Check> paramChecks() {
    static constexpr Check kChecks[] = {
        {"params.consistent", 1, 20, "Ids and names are unique, ranges hold sliders and defaults",
         consistent},
        {"product.params", 1, 20, "The list is that of the product, id by id", productParams},
        {"product.announcement", 1, 20, "Version, flags and about text are those of the product",
         productAnnouncement},
    };
    return kChecks;
}

}  // namespace validate
