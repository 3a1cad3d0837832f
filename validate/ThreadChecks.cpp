// Several threads in the one module at once.
#include <algorithm>
#include <atomic>
#include <barrier>
#include <thread>

#include "validate/Checks.h"
#include "validate/Frames.h"
#include "validate/OwnFolder.h"
#include "validate/RandomValues.h"
#include "validate/RawCommand.h"

namespace validate {
namespace {

using namespace standin;

constexpr int kThreads = 4;
constexpr int kFramesEach = 6;

// One thread's work: its own host and instance, its own way and values.
struct Worker {
    std::unique_ptr<Play> play;
    std::vector<FrameRequest> requests;
    std::vector<Image> alone, together;

    void render(std::vector<Image>& pictures) {
        pictures.clear();
        for (const FrameRequest& request : requests) {
            pictures.push_back(play->render(request).output);
        }
    }
};

std::vector<Worker> makeWorkers(const Subject& subject, Report& report) {
    Random random(subject.seed);
    std::vector<Worker> workers(kThreads);
    for (int i = 0; i < kThreads; ++i) {
        Worker& worker = workers[i];
        worker.play = std::make_unique<Play>(subject, report);
        if (i % 2) {
            storeRandomValues(worker.play->instance(), random, Reach::inside);
        } else {
            storeBusyValues(*worker.play, i ? Dabs::large : Dabs::small);
        }
        for (int frame = 0; frame < kFramesEach; ++frame) {
            worker.requests.push_back(frameOf(kWays[(i + frame) % std::size(kWays)]));
            worker.requests.back().currentTime = frame;
        }
    }
    return workers;
}

// What the user does meanwhile to other instances: turns controls, saves, stores defaults.
void beBusy(Play& play, Random& random) {
    Instance& instance = play.instance();
    switch (random.below(6)) {
        case 0:
            instance.updatePanel();
            break;
        case 1:
            instance.save();
            break;
        case 2:
            instance.duplicate().setDown();
            break;
        case 3:
            play.host().dialog().answer = kStandinDialogFirstButton;
            instance.openDialog();
            break;
        case 4:
            play.host().about();
            instance.queryDynamicFlags();
            break;
        default:
            play.renewInstance();
    }
    RawCommand(instance).send(PF_Cmd_USER_CHANGED_PARAM, random.between(1, 5));
}

void framesAtOnce(const Subject& subject, Report& report) {
    const OwnFolder folder(report);
    auto workers = makeWorkers(subject, report);
    for (Worker& worker : workers) worker.render(worker.alone);
    Play user(subject, report, folder.offer());

    std::atomic<bool> rendering{true};
    std::vector<std::thread> threads;
    for (Worker& worker : workers) {
        threads.emplace_back([&worker] {
            for (int round = 0; round < 3; ++round) worker.render(worker.together);
        });
    }
    std::thread userThread([&] {
        Random random(subject.seed + 1);
        while (rendering) beBusy(user, random);
    });
    for (std::thread& thread : threads) thread.join();
    rendering = false;
    userThread.join();

    for (int i = 0; i < kThreads; ++i) {
        for (int frame = 0; frame < kFramesEach; ++frame) {
            report.at(text("thread ", i, " frame ", frame));
            report.expectNone(difference(workers[i].together[frame], workers[i].alone[frame]));
        }
    }
    report.at("");
    user.end();
    // What the effect keeps is in the books of its first caller, who therefore goes last.
    for (auto worker = workers.rbegin(); worker != workers.rend(); ++worker) worker->play->end();
}

// Several threads bring the effect up at the same moment, each with another command.
void firstCallAtOnce(const Subject& subject, Report& report) {
    static constexpr PF_Cmd kFirst[kThreads] = {PF_Cmd_GLOBAL_SETUP, PF_Cmd_ABOUT,
                                                PF_Cmd_FRAME_SETUP, PF_Cmd_GLOBAL_SETUP};
    Module& module = moduleOf(subject, report);
    Image expected;
    for (int life = 0; life < 30; ++life) {
        report.at(text("life ", life));
        std::vector<std::unique_ptr<Host>> hosts;
        for (int i = 0; i < kThreads; ++i) hosts.push_back(std::make_unique<Host>(module));
        std::barrier start(kThreads);
        std::vector<PF_Err> codes(kThreads);
        std::vector<std::thread> threads;
        for (int i = 0; i < kThreads; ++i) {
            threads.emplace_back([&, i] {
                start.arrive_and_wait();
                codes[i] = hosts[i]->send(kFirst[i]);
            });
        }
        for (std::thread& thread : threads) thread.join();
        for (const PF_Err code : codes) report.expectSame<PF_Err>(code, 0, "the code");

        Play play(subject, report);
        const Image picture = play.picture(frameOf(kWays[0]));
        if (life == 0) expected = picture;
        report.expectNone(difference(picture, expected));
        play.end();
        for (const auto& host : hosts) {
            reportViolations(*host, report);
            report.expectNone(host->ledger().unbalanced());
        }
    }
}

// One thread's work: a host that starts, makes its value the default and stops, again and again.
struct Starter {
    explicit Starter(Module& module, Report& report)
        : folder(report), host(module, folder.offer()) {}

    // The first number in the panel.
    const ParamInfo* number() const {
        const auto& params = host.params();
        const auto found = std::ranges::find(params, PF_Param_FLOAT_SLIDER, &ParamInfo::type);
        return found == params.end() ? nullptr : &*found;
    }

    void live(double value) {
        if (const PF_Err code = host.start()) throw EffectError("the start", code);
        Instance instance(host, kSmallLayer);
        if (const ParamInfo* const param = number()) {
            opened.push_back(param->defaultValue.part[0]);
            instance.storeValue(param->id, Value::number(value));
            stored.push_back(value);
        }
        if (host.global().outFlags & PF_OutFlag_I_DO_DIALOG) {
            host.dialog().answer = kStandinDialogFirstButton;
            instance.openDialog();
        }
        instance.setDown();
        host.stop();
    }

    OwnFolder folder;
    Host host;
    std::vector<double> stored, opened;
    std::string fault;
};

void startsAtOnce(const Subject& subject, Report& report) {
    constexpr int kLives = 20;
    Play keeper(subject, report);  // the effect is not set down meanwhile
    std::vector<std::unique_ptr<Starter>> starters;
    for (int i = 0; i < kThreads; ++i) {
        starters.push_back(std::make_unique<Starter>(keeper.host().module(), report));
    }
    std::barrier turn(kThreads);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&, i] {
            for (int life = 0; life < kLives; ++life) {
                turn.arrive_and_wait();
                try {
                    starters[i]->live(0.5 * (life * kThreads + i));
                } catch (const EffectError& error) {
                    starters[i]->fault = error.what();
                }
            }
        });
    }
    for (std::thread& thread : threads) thread.join();

    const bool remembers = keeper.host().global().outFlags & PF_OutFlag_I_DO_DIALOG;
    for (const auto& starter : starters) {
        report.expectNone(starter->fault);
        for (std::size_t life = 1; remembers && life < starter->opened.size(); ++life) {
            report.at(text("life ", life));
            report.expectSame(starter->opened[life], starter->stored[life - 1], "the default");
        }
        reportViolations(starter->host, report);
        report.expectNone(starter->host.ledger().unbalanced());
    }
    report.at("");
    keeper.end();
}

}  // namespace

std::span<const Check> threadChecks() {
    static constexpr Check kChecks[] = {
        {"threads.first_call", 9, 60, "Several threads may make the first call at once",
         firstCallAtOnce},
        {"threads.starts", 9, 60, "Hosts may start, store defaults and stop at once", startsAtOnce},
        {"threads.frames", 9, 60, "Frames drawn at once are those drawn in turn", framesAtOnce},
    };
    return kChecks;
}

}  // namespace validate
