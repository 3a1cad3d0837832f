// Worlds as hosts may lay them out, of every size, and requests for parts of them.
#include "host/Worlds.h"
#include "validate/Checks.h"
#include "validate/Frames.h"
#include "validate/Random.h"
#include "validate/RawCommand.h"

namespace validate {
namespace {

using namespace standin;

struct Origin {
    A_long x, y;
};

void layouts(const Subject& subject, Report& report) {
    struct Layout {
        int rowPadding, guardBytes;
        bool shiftPixels;
    };
    static constexpr Layout kLayouts[] = {
        {4, 64, false}, {0, 64, true}, {52, 4096, true}, {65536, 64, false}, {12, 0, false},
    };
    static constexpr Origin kOrigins[] = {{0, 0}, {-17, 5}, {40, 31}, {-30000, 30000}};
    for (const Layout& layout : kLayouts) {
        HostOffer offer;
        offer.rowPadding = layout.rowPadding;
        offer.guardBytes = layout.guardBytes;
        offer.shiftPixels = layout.shiftPixels;
        offer.moveUnlockedHandles = true;
        Play plain(subject, report);
        Play laid(subject, report, offer);
        storeBusyValues(plain, Dabs::large);
        storeBusyValues(laid, Dabs::large);
        for (const Way& way : kWays) {
            for (const Origin& origin : kOrigins) {
                report.at(text(name(way), ", ", layout.rowPadding, " bytes behind rows, origin ",
                               origin.x, ", ", origin.y));
                FrameRequest request = frameOf(way, 37, 29);
                request.originX = origin.x;
                request.originY = origin.y;
                report.expectNone(difference(laid.picture(request), plain.picture(request)));
            }
        }
        laid.end();
        plain.end();
    }
}

void sizes(const Subject& subject, Report& report) {
    struct Size {
        int width, height;
    };
    static constexpr Size kSizes[] = {
        {1, 1}, {2, 1}, {1, 2}, {3, 3}, {1, 61}, {67, 1}, {17, 5}, {30000, 1}, {1, 30000}, {300, 2},
    };
    Play play(subject, report);
    for (const Dabs dabs : {Dabs::small, Dabs::large}) {
        storeBusyValues(play, dabs);
        for (const Size& size : kSizes) {
            for (const Way& way : kWays) {
                report.at(text(name(way), ", ", size.width, " x ", size.height));
                play.picture(frameOf(way, size.width, size.height));
            }
        }
    }
    play.end();
}

// Downsampled, interlaced, in draft quality, with steps of time that are none.
void oddRequests(const Subject& subject, Report& report) {
    Play play(subject, report);
    storeBusyValues(play, Dabs::small);
    Random random(subject.seed);
    static constexpr A_long kSteps[] = {0, 1, -1, 1001, INT32_MIN, INT32_MAX};
    static constexpr A_long kTimes[] = {0, 1, -1, 48, INT32_MIN, INT32_MAX};
    static constexpr PF_RationalScale kScales[] = {{1, 1}, {1, 2}, {1, 8}, {3, 4}, {2, 1}};
    for (int round = 0; round < 120; ++round) {
        report.at(text("seed ", subject.seed, " round ", round));
        FrameRequest request = frameOf(random.oneOf(std::span<const Way>(kWays)), 40, 30);
        request.currentTime = random.oneOf(std::span<const A_long>(kTimes));
        request.timeStep = random.oneOf(std::span<const A_long>(kSteps));
        request.downsampleX = random.oneOf(std::span<const PF_RationalScale>(kScales));
        request.downsampleY = random.oneOf(std::span<const PF_RationalScale>(kScales));
        request.quality = random.between(PF_Quality_DRAWING_AUDIO, PF_Quality_HI);
        request.field = random.between(PF_Field_FRAME, PF_Field_LOWER);
        request.pixelAspectRatio = {random.between(1, 3), 2};
        play.set("Clear Background", round % 2);
        play.picture(request);
    }
    play.end();
}

// Parts of the picture, also empty ones and ones outside of it. The result never exceeds what was
// asked for (the host's books tell), and an empty one is not rendered.
void partsOfPictures(const Subject& subject, Report& report) {
    Play play(subject, report);
    storeBusyValues(play, Dabs::small);
    Random random(subject.seed);
    long empty = 0;
    for (int round = 0; round < 200; ++round) {
        report.at(text("seed ", subject.seed, " round ", round));
        FrameRequest request = frameOf({kWays[round % 3].depth, Road::smart}, 50, 40);
        request.originX = random.between(-20, 20);
        const A_long left = random.between(-60, 90), top = random.between(-60, 90);
        request.rect =
            PF_LRect{left, top, left + random.between(-5, 60), top + random.between(-5, 60)};
        const FrameResult result = play.render(request);
        report.expectSame<PF_Err>(result.code, 0, "the code");
        report.expect(result.unwritten == 0, "pixels of the part were never written");
        empty += !result.rendered;
        play.expectTidy();
    }
    report.at("");
    report.note(text(empty, " empty parts"));
    play.end();
}

// A layer without pixels on one side. Hosts do not ask for such frames on purpose.
class EmptyFrame : public RawCommand {
  public:
    EmptyFrame(Instance& instance, A_long width, A_long height, Depth depth)
        : RawCommand(instance),
          instance_(instance),
          input_(WorldBuffer::make(width, height, depth, instance.host().offer(), false)),
          output_(WorldBuffer::make(width, height, depth, instance.host().offer(), false)) {}

    PF_Err legacy() {
        ParamArray params(instance_, host().global().numParams, {in.current_time, in.time_scale},
                          {});
        params.inputLayer() = input_->world();
        return run(PF_Cmd_RENDER, params.pointers(), &output_->world());
    }

    PF_Err smart() {
        PF_PreRenderInput planInput{};
        PF_PreRenderOutput plan{};
        PF_PreRenderCallbacks planCallbacks{planLayer, nullptr};
        PF_PreRenderExtra planExtra{&planInput, &plan, &planCallbacks};
        PF_Err code = run(PF_Cmd_SMART_PRE_RENDER, nullptr, nullptr, &planExtra);
        if (!code) {
            PF_SmartRenderInput input{};
            input.pre_render_data = plan.pre_render_data;
            PF_SmartRenderCallbacks callbacks{pixels, checkin, output};
            PF_SmartRenderExtra extra{&input, &callbacks};
            code = run(PF_Cmd_SMART_RENDER, nullptr, nullptr, &extra);
        }
        if (plan.delete_pre_render_data_func)
            plan.delete_pre_render_data_func(plan.pre_render_data);
        return code;
    }

    bool intact() const { return input_->marginsIntact() && output_->marginsIntact(); }

  private:
    static EmptyFrame& self(PF_ProgPtr ref) { return static_cast<EmptyFrame&>(*ref->command); }
    static PF_Err planLayer(PF_ProgPtr, PF_ParamIndex, A_long, const PF_RenderRequest*, A_long,
                            A_long, A_u_long, PF_CheckoutResult* answer) {
        *answer = {};
        return PF_Err_NONE;
    }
    static PF_Err pixels(PF_ProgPtr ref, A_long, PF_EffectWorld** world) {
        *world = &self(ref).input_->world();
        return PF_Err_NONE;
    }
    static PF_Err checkin(PF_ProgPtr, A_long) { return PF_Err_NONE; }
    static PF_Err output(PF_ProgPtr ref, PF_EffectWorld** world) {
        *world = &self(ref).output_->world();
        return PF_Err_NONE;
    }

    Instance& instance_;
    std::unique_ptr<WorldBuffer> input_;
    std::unique_ptr<WorldBuffer> output_;
};

void worldsWithoutPixels(const Subject& subject, Report& report) {
    struct Size {
        A_long width, height;
    };
    Play play(subject, report);
    storeBusyValues(play, Dabs::small);
    for (const Size& size : {Size{0, 0}, Size{0, 20}, Size{20, 0}, Size{0, 30000}}) {
        for (const Way& way : kWays) {
            report.at(text(name(way), ", ", size.width, " x ", size.height));
            EmptyFrame frame(play.instance(), size.width, size.height, way.depth);
            const PF_Err code = way.road == Road::smart ? frame.smart() : frame.legacy();
            report.expectSame<PF_Err>(code, 0, "the code");
            report.expect(frame.intact(), "something was written into a world without pixels");
            play.expectTidy();
        }
    }
    play.end();
}

// A host that says yes and gives nothing, and one that lost the plan's data.
void withheldWorlds(const Subject& subject, Report& report) {
    Play play(subject, report);
    for (int given = 0; given < 8; ++given) {
        FrameRequest request = frameOf(kWays[0]);
        request.withholdInput = (given & 1) != 0;
        request.withholdOutput = (given & 2) != 0;
        request.withholdPlanData = (given & 4) != 0;
        report.at(text("withheld", request.withholdInput ? " input" : "",
                       request.withholdOutput ? " output" : "",
                       request.withholdPlanData ? " plan data" : ""));
        const FrameResult result = play.render(request);
        const PF_Err wanted = request.withholdPlanData ? PF_Err_INTERNAL_STRUCT_DAMAGED : 0;
        report.expectSame(result.code, wanted, "the code");
        play.expectTidy();
    }
    play.end();
}

}  // namespace

std::span<const Check> worldChecks() {
    static constexpr Check kChecks[] = {
        {"worlds.withheld", 3, 20, "Worlds and plan data that do not come are done without",
         withheldWorlds},
        {"worlds.layouts", 4, 30, "Padding, guards and origins change no pixel and stay untouched",
         layouts},
        {"worlds.sizes", 4, 40, "Worlds of one pixel, one row, one column and the longest side",
         sizes},
        {"worlds.without_pixels", 4, 20, "Worlds of no size are left alone", worldsWithoutPixels},
        {"worlds.parts", 4, 30, "Requests for any part, also for none, are answered within it",
         partsOfPictures},
        {"worlds.odd_requests", 4, 30, "Any scale, time, step, field and quality gives a frame",
         oddRequests},
    };
    return kChecks;
}

}  // namespace validate
