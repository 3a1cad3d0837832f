// Effects that misbehave on purpose: each misdeed must be found, and named.
#include <gtest/gtest.h>

#include <stdexcept>

#include "StubEffect.h"

using namespace standin;

namespace {

struct Misdeed {
    const char* name;
    PF_Cmd command;
    StubEffect::Action action;
    const char* violation;   // part of what the books say; empty: no rule was broken at once
    const char* unbalanced;  // likewise of what stays out on loan
};

// All of them on the way through one frame of each road.
const Misdeed kMisdeeds[] = {
    {"KeepsParameter", PF_Cmd_RENDER,
     [](const StubCall& call) {
         PF_ParamDef def{};
         return call.in->inter.checkout_param(call.in->effect_ref, 3, 0, 1, 24, &def);
     },
     "", "checked-out parameter 3 in RENDER: 1"},
    {"ChecksParameterInTwice", PF_Cmd_RENDER,
     [](const StubCall& call) {
         PF_ParamDef def{};
         call.in->inter.checkout_param(call.in->effect_ref, 3, 0, 1, 24, &def);
         PF_ParamDef copy = def;
         call.in->inter.checkin_param(call.in->effect_ref, &def);
         call.in->inter.checkin_param(call.in->effect_ref, &copy);
         return PF_Err_NONE;
     },
     "check-in of a definition that is not checked out in RENDER", ""},
    {"ChecksOutInPanelUpdate", PF_Cmd_UPDATE_PARAMS_UI,
     [](const StubCall& call) {
         PF_ParamDef def{};
         call.in->inter.checkout_param(call.in->effect_ref, 3, 0, 1, 24, &def);
         return PF_Err_NONE;
     },
     "checkout of a parameter in UPDATE_PARAMS_UI", ""},
    {"WritesBehindTheRow", PF_Cmd_RENDER,
     [](const StubCall& call) {
         call.output->data[call.output->width].alpha = 1;
         return PF_Err_NONE;
     },
     "outside the pixels of the input or the output", ""},
    {"ChangesTheInput", PF_Cmd_RENDER,
     [](const StubCall& call) {
         call.params[0]->u.ld.data[5].red ^= 1;
         return PF_Err_NONE;
     },
     "changed the input's pixels", ""},
    {"KeepsWorld", PF_Cmd_RENDER,
     [](const StubCall& call) {
         PF_EffectWorld world{};
         return call.in->utils->new_world(call.in->effect_ref, 4, 4, 1, &world);
     },
     "", "world: 1"},
    {"DisposesOfTheOutput", PF_Cmd_RENDER,
     [](const StubCall& call) {
         call.in->utils->dispose_world(call.in->effect_ref, call.output);
         return PF_Err_NONE;
     },
     "disposal of a world that the effect does not have", ""},
    {"ReleasesWhatItDoesNotHave", PF_Cmd_RENDER,
     [](const StubCall& call) { return call.in->pica_basicP->ReleaseSuite(kPFWorldSuite, 2); },
     "suite \"PF World Suite\" 2 given back without being lent", ""},
    {"KeepsSequenceData", PF_Cmd_SEQUENCE_SETDOWN, [](const StubCall&) { return PF_Err_NONE; }, "",
     "handle: 1"},
    {"Throws", PF_Cmd_RENDER, [](const StubCall&) -> PF_Err { throw std::runtime_error("out"); },
     "an exception left the effect in RENDER", ""},
    {"PromisesMoreThanAsked", PF_Cmd_SMART_PRE_RENDER,
     [](const StubCall& call) {
         const PF_Err code = StubEffect::usual(PF_Cmd_SMART_PRE_RENDER, call);
         auto& output = *call.extraAs<PF_PreRenderExtra>().output;
         output.result_rect.right += 1;
         output.max_result_rect.right += 1;
         return code;
     },
     "the result is larger than what was asked for", ""},
    {"TakesTheOutputFirst", PF_Cmd_SMART_RENDER,
     [](const StubCall& call) {
         PF_EffectWorld* output = nullptr;
         return call.extraAs<PF_SmartRenderExtra>().cb->checkout_output(call.in->effect_ref,
                                                                        &output);
     },
     "checkout of the output before any input in SMART_RENDER", ""},
    {"FillsADeadWorld", PF_Cmd_RENDER,
     [](const StubCall& call) {
         PF_EffectWorld world{};
         call.in->utils->new_world(call.in->effect_ref, 4, 4, 1, &world);
         PF_EffectWorld copy = world;
         call.in->utils->dispose_world(call.in->effect_ref, &world);
         return call.in->utils->fill(call.in->effect_ref, nullptr, nullptr, &copy);
     },
     "fill of a world that is not alive", ""},
};

class Misdeeds : public testing::TestWithParam<Misdeed> {};

}  // namespace

TEST_P(Misdeeds, AreNamed) {
    const Misdeed& misdeed = GetParam();
    StubEffect effect;
    effect.on(misdeed.command, misdeed.action);
    HostOffer offer;
    offer.rowPadding = 8;
    Host host(effect.module(), offer);
    ASSERT_EQ(host.start(), 0);
    {
        Instance instance(host, {40, 20});
        FrameRequest frame;
        frame.input = Image::opaqueBlack(40, 20, Depth::bits8);
        for (const Road road : {Road::smart, Road::legacy}) {
            frame.road = road;
            renderFrame(instance, frame);
        }
    }
    host.stop();
    const auto found = [](const std::string& text, const std::string& part) {
        return part.empty() ? text.empty() : text.find(part) != std::string::npos;
    };
    EXPECT_PRED2(found, host.ledger().violationText(), misdeed.violation);
    EXPECT_PRED2(found, host.ledger().unbalanced(), misdeed.unbalanced);
}

INSTANTIATE_TEST_SUITE_P(All, Misdeeds, testing::ValuesIn(kMisdeeds),
                         [](const auto& misdeed) { return std::string(misdeed.param.name); });
