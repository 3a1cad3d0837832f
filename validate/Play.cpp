#include "validate/Play.h"

#include <string>

namespace validate {

using namespace standin;

Module& moduleOf(const Subject& subject, Report& report) {
    static std::unique_ptr<Module> loaded;
    if (!loaded) {
        try {
            loaded = std::make_unique<Module>(subject.modulePath);
        } catch (const ModuleError& error) {
            report.stop(error.what());
        }
    }
    return *loaded;
}

void reportViolations(Host& host, Report& report) {
    const auto violations = host.ledger().violations();
    host.ledger().clearViolations();
    for (const std::string& violation : violations) report.finding(violation);
}

Play::Play(const Subject& subject, Report& report, const HostOffer& offer, LayerSize layer)
    : report_(report),
      host_(std::make_unique<Host>(moduleOf(subject, report), offer)),
      layer_(layer) {
    start();
}

Play::~Play() {
    instance_.reset();
    host_->stop();
}

void Play::start() {
    if (const PF_Err code = host_->start()) report_.stop(text("the start answers code ", code));
    renewInstance();
}

void Play::renewInstance() {
    instance_.reset();
    try {
        instance_.emplace(*host_, layer_);
    } catch (const EffectError& error) {
        report_.stop(error.what());
    }
}

void Play::restart() {
    end();
    start();
}

void Play::set(const char* name, double value) {
    if (const ParamInfo* const param = host_->param(std::string(name))) {
        instance_->storeValue(param->id, Value::number(value));
    }
}

Image Play::picture(const FrameRequest& request) {
    const FrameResult result = render(request);
    report_.expectSame<PF_Err>(result.code, 0, "the frame's code");
    report_.expect(result.unwritten == 0,
                   text(result.unwritten, " pixels of the output were never written"));
    expectTidy();
    return result.output;
}

void Play::expectTidy() {
    reportViolations(*host_, report_);
    for (const Loan loan : {Loan::param, Loan::layerPixels, Loan::world, Loan::preRenderData}) {
        const long live = host_->ledger().live(loan);
        report_.expect(live == 0, text(name(loan), " not given back: ", live));
    }
}

void Play::end() {
    if (instance_) {
        report_.expectSame<PF_Err>(instance_->setDown(), 0, "the code of sequence setdown");
        instance_.reset();
    }
    report_.expectSame<PF_Err>(host_->stop(), 0, "the code of global setdown");
    reportViolations(*host_, report_);
    report_.expectNone(host_->ledger().unbalanced());
}

}  // namespace validate
