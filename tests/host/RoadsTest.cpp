// Instances and frames as the stand-in plays them, with an effect of the test's own.
#include <gtest/gtest.h>

#include <fstream>
#include <thread>

#include "StubEffect.h"

using namespace standin;

namespace {

FrameRequest request(Road road = Road::smart) {
    FrameRequest frame;
    frame.road = road;
    frame.input = Image::opaqueBlack(40, 20, Depth::bits8);
    return frame;
}

struct Played : testing::Test {
    StubEffect effect;
    Host host{effect.module()};

    void SetUp() override { ASSERT_EQ(host.start(), 0); }
    void TearDown() override {
        EXPECT_EQ(host.stop(), 0);
        EXPECT_EQ(host.ledger().violationText(), "");
        EXPECT_EQ(host.ledger().unbalanced(), "");
    }
};

}  // namespace

using Roads = Played;
using Instances = Played;

TEST_F(Instances, KnowTheParametersAsTheyWereAdded) {
    ASSERT_EQ(host.params().size(), 4u);
    EXPECT_EQ(host.param("Slider")->group, "Group");
    EXPECT_EQ(host.param("Slider")->index, 3);
    EXPECT_EQ(host.param("Slider")->validMax, 10);
    EXPECT_EQ(host.param("Point")->group, "");
    EXPECT_EQ(host.param("Group"), nullptr);
    EXPECT_EQ(host.param(StubEffect::kGroupEnd)->type, PF_Param_GROUP_END);
}

TEST_F(Instances, TellSupervisedChangesAndAdoptTheAnswer) {
    effect.on(PF_Cmd_USER_CHANGED_PARAM, [](const StubCall& call) {
        EXPECT_EQ(call.extraAs<PF_UserChangedParamExtra>().param_index, 1);
        PF_ParamDef& slider = *call.params[3];
        slider.u.sd.value = call.params[1]->u.td.x_value >> 16;
        slider.uu.change_flags = PF_ChangeFlag_CHANGED_VALUE;
        return PF_Err_NONE;
    });
    effect.on(PF_Cmd_UPDATE_PARAMS_UI, [](const StubCall& call) {
        const auto* utils = call.suite<PF_ParamUtilsSuite1>(kPFParamUtilsSuite, 2);
        PF_ParamDef copy = *call.params[3];
        copy.ui_flags = call.params[3]->u.sd.value > 5 ? PF_PUI_DISABLED : 0;
        utils->PF_UpdateParamUI(call.in->effect_ref, 3, &copy);
        return call.in->pica_basicP->ReleaseSuite(kPFParamUtilsSuite, 2);
    });
    Instance instance(host, {400, 200});
    EXPECT_EQ(instance.value(StubEffect::kPoint), Value::point(100, 100));
    EXPECT_TRUE(instance.enabled(StubEffect::kSlider));
    EXPECT_EQ(instance.setValue(StubEffect::kPoint, Value::point(8, 0)), 0);
    EXPECT_EQ(instance.value(StubEffect::kSlider), Value::number(8));
    EXPECT_FALSE(instance.enabled(StubEffect::kSlider));
    EXPECT_EQ(instance.controlUpdates(), 2);
    EXPECT_THROW(instance.storeValue(99, Value::number(1)), std::invalid_argument);
}

TEST_F(Roads, DeliverPointsInPixelsOfTheScaledPictureAndValuesAtTheirTime) {
    PF_Point seen{};
    A_long slider = 0;
    effect.on(PF_Cmd_RENDER, [&](const StubCall& call) {
        PF_ParamDef point{};
        const auto& inter = call.in->inter;
        inter.checkout_param(call.in->effect_ref, 1, 5, 1, 24, &point);
        seen = {point.u.td.x_value, point.u.td.y_value};
        slider = call.params[3]->u.sd.value;
        return inter.checkin_param(call.in->effect_ref, &point);
    });
    Instance instance(host, {80, 60});
    instance.storeKey(StubEffect::kPoint, {0, 24}, Value::point(0, 0));
    instance.storeKey(StubEffect::kPoint, {10, 24}, Value::point(30, 9));
    instance.storeKey(StubEffect::kSlider, {3, 24}, Value::number(1));
    instance.storeKey(StubEffect::kSlider, {9, 24}, Value::number(7));
    FrameRequest frame = request(Road::legacy);
    frame.currentTime = 8;
    frame.downsampleX = {1, 2};
    frame.downsampleY = {1, 3};
    EXPECT_EQ(renderFrame(instance, frame).code, 0);
    EXPECT_EQ(seen.h, static_cast<A_long>(7.5 * 65536));
    EXPECT_EQ(seen.v, static_cast<A_long>(1.5 * 65536));
    EXPECT_EQ(slider, 1);
}

TEST_F(Roads, RenderThePartThatIsAskedFor) {
    Instance instance(host, {40, 20});
    FrameRequest frame = request();
    frame.originX = -3;
    frame.rect = PF_LRect{-10, 5, 12, 9};
    frame.discardedPlans = 2;
    frame.input.set(0, 5, {1, 0, 0, 1});
    effect.on(PF_Cmd_SMART_RENDER, [&](const StubCall& call) {
        auto& extra = call.extraAs<PF_SmartRenderExtra>();
        EXPECT_EQ(extra.input->bitdepth, 8);
        PF_EffectWorld* input = nullptr;
        PF_EffectWorld* output = nullptr;
        extra.cb->checkout_layer_pixels(call.in->effect_ref, 0, &input);
        extra.cb->checkout_output(call.in->effect_ref, &output);
        EXPECT_EQ(input->origin_x, -3);
        EXPECT_EQ(input->origin_y, 5);
        EXPECT_EQ(input->data->blue, 255);
        return call.in->utils->copy(call.in->effect_ref, input, output, nullptr, nullptr);
    });
    const FrameResult result = renderFrame(instance, frame);
    EXPECT_TRUE(result.rendered);
    EXPECT_EQ(result.resultRect.left, -3);
    EXPECT_EQ(result.resultRect.right, 12);
    EXPECT_EQ(result.maxResultRect.right, 37);
    EXPECT_EQ(result.output.width(), 15);
    EXPECT_EQ(result.output.height(), 4);
    EXPECT_EQ(result.unwritten, 0);
    ASSERT_TRUE(result.layerRequest);
    EXPECT_EQ(result.layerRequest->rect.left, -10);

    frame.rect = PF_LRect{};
    EXPECT_FALSE(renderFrame(instance, frame).rendered);
    frame.rect.reset();
    frame.planOnly = true;
    EXPECT_FALSE(renderFrame(instance, frame).rendered);
    frame.input = Image::opaqueBlack(4, 4, Depth::float32);
    frame.road = Road::legacy;
    EXPECT_THROW(renderFrame(instance, frame), std::invalid_argument);
}

TEST_F(Roads, ShowWhatWasNotWritten) {
    effect.on(PF_Cmd_RENDER, [](const StubCall&) { return PF_Err{PF_Err_NONE}; });
    Instance instance(host, {40, 20});
    EXPECT_EQ(renderFrame(instance, request(Road::legacy)).unwritten, 800);
}

TEST_F(Roads, CancelReachesAbortAndProgress) {
    effect.on(PF_Cmd_RENDER, [](const StubCall& call) {
        call.in->inter.progress(call.in->effect_ref, 10, 100);
        return call.in->inter.abort(call.in->effect_ref);
    });
    Instance instance(host, {40, 20});
    FrameRequest frame = request(Road::legacy);
    host.faults().failAt(CallKind::abort, 2, 99);
    EXPECT_EQ(renderFrame(instance, frame).code, 0);
    EXPECT_EQ(renderFrame(instance, frame).code, 99);
    frame.onProgress = [&](A_long, A_long) {
        host.cancel();
        return false;
    };
    const FrameResult result = renderFrame(instance, frame);
    EXPECT_EQ(result.code, PF_Interrupt_CANCEL);
    EXPECT_EQ(result.progress, std::vector<A_long>{10});
    EXPECT_EQ(result.calls, (std::vector{CallKind::progress, CallKind::abort}));
}

// One host's services used in another's commands stay that host's, also when it has gone.
TEST(Hosts, EachHaveTheirOwnBooks) {
    StubEffect effect;
    SPBasicSuite* kept = nullptr;
    effect.on(PF_Cmd_GLOBAL_SETUP, [&](const StubCall& call) {
        if (!kept) {
            kept = call.in->pica_basicP;
        }
        return PF_Err_NONE;
    });
    PF_Handle block = nullptr;
    effect.on(PF_Cmd_RENDER, [&](const StubCall&) {
        const void* suite = nullptr;
        kept->AcquireSuite(kPFHandleSuite, 2, &suite);
        block = static_cast<const PF_HandleSuite1*>(suite)->host_new_handle(100);
        return PF_Err_NONE;
    });
    effect.on(PF_Cmd_GLOBAL_SETDOWN, [&](const StubCall& call) {
        call.in->utils->host_dispose_handle(block);
        return kept->ReleaseSuite(kPFHandleSuite, 2);
    });
    auto first = std::make_unique<Host>(effect.module());
    Host second(effect.module());
    ASSERT_EQ(first->start(), 0);
    std::thread([&] {
        ASSERT_EQ(second.start(), 0);
        Instance instance(second, {40, 20});
        EXPECT_EQ(renderFrame(instance, request(Road::legacy)).code, 0);
    }).join();
    EXPECT_EQ(second.ledger().unbalanced(), "");
    EXPECT_EQ(first->ledger().live(Loan::handle), 1);
    EXPECT_EQ(first->ledger().live(Loan::suite), 1);
    first.reset();
    EXPECT_EQ(second.stop(), 0);
    EXPECT_EQ(second.ledger().violationText(), "");
}

TEST(Modules, SayWhichFileIsNoEffectAndWhy) {
    const auto reason = [](const std::string& path) {
        try {
            Module module(path);
            return std::string("loaded");
        } catch (const ModuleError& error) {
            return std::string(error.what());
        }
    };
    EXPECT_EQ(reason("no/such.so"), "cannot load the effect module \"no/such.so\": no such file");
    const std::string text = testing::TempDir() + "no-effect.so";
    std::ofstream(text) << "text";
    EXPECT_NE(reason(text).find("cannot load the effect module \"" + text), std::string::npos);
}
