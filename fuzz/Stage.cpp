#include "Stage.h"

#include <cstdio>
#include <cstdlib>

#include "host/Module.h"

namespace fuzz {

using namespace standin;

namespace {

Module& effect() {
    static Module module(STREAKFALL_MODULE);
    return module;
}

HostOffer withoutGuards(HostOffer offer) {
    offer.guardBytes = 0;
    return offer;
}

}  // namespace

void finding(std::string_view what) {
    std::fprintf(stderr, "FINDING: %.*s\n", static_cast<int>(what.size()), what.data());
    std::abort();
}

Stage::Stage(HostOffer offer) : host_(effect(), withoutGuards(std::move(offer))) { start(); }

Stage::~Stage() { stop(); }

void Stage::restart() {
    stop();
    start();
}

void Stage::start() {
    const PF_Err code = host_.start();
    expect(code == PF_Err_NONE, "the start answers code ", code);
}

void Stage::stop() {
    const PF_Err code = host_.stop();
    expect(code == PF_Err_NONE, "the stop answers code ", code);
    const std::string broken = host_.ledger().violationText();
    expect(broken.empty(), broken);
}

void Stage::expectTidy() {
    const std::string broken = host_.ledger().violationText();
    expect(broken.empty(), broken);
    for (const Loan loan : {Loan::param, Loan::layerPixels, Loan::world, Loan::preRenderData}) {
        const long live = host_.ledger().live(loan);
        expect(live == 0, name(loan), " not given back: ", live);
    }
}

}  // namespace fuzz
