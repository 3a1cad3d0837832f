// The life of the module's process-wide state, and the commands that touch nothing.
#include <cstring>
#include <thread>

#include "PlayedEffect.h"
#include "host/Command.h"
#include "support/SameImage.h"

namespace {

using namespace played;
using namespace standin;

class CommandsTest : public EffectTest {};

// Any command brings the state up, also one that does nothing else.
TEST_F(CommandsTest, IgnoredCommandsTouchNothing) {
    for (const PF_Cmd cmd : {2, 10, 12, 15, 16, 17, 19, 20, 21, 22, 25, 33, 1000, -1, INT32_MIN}) {
        SCOPED_TRACE(cmd);
        host_ = std::make_unique<Host>(module());
        Command command(host(), nullptr);
        std::memset(&command.out, 0x5A, sizeof command.out);
        const PF_OutData before = command.out;
        for (int call = 0; call < 2; ++call) {
            EXPECT_EQ(command.run(cmd), 0);
            EXPECT_EQ(std::memcmp(&command.out, &before, sizeof before), 0);
        }
        EXPECT_GT(host().ledger().live(Loan::handle), 0);
        EXPECT_EQ(host().send(PF_Cmd_GLOBAL_SETDOWN), 0);
        EXPECT_EQ(host().ledger().live(Loan::handle), 0);
        endPlay();
    }
}

TEST_F(CommandsTest, SetdownAsTheFirstCallComesUpAndGoesDown) {
    host_ = std::make_unique<Host>(module());
    EXPECT_EQ(host().send(PF_Cmd_GLOBAL_SETDOWN), 0);
    EXPECT_GT(host().ledger().total(Loan::handle), 60);
    EXPECT_EQ(host().ledger().unbalanced(), "");
}

TEST_F(CommandsTest, EveryLifeIsTheFirst) {
    Image first;
    for (int life = 0; life < 3; ++life) {
        play();
        EXPECT_EQ(host().global().version, 693763u);
        EXPECT_EQ(host().global().outFlags, 0x6000072);
        EXPECT_EQ(host().global().outFlags2, 0x1419);
        EXPECT_EQ(host().global().numParams, 63);
        ASSERT_EQ(host().params().size(), 62u);
        EXPECT_EQ(host().params().front().name, "Start Point");
        setAll(golden::frame("07"));
        const Image picture = render(halfMatted(320, 180, Depth::bits8)).output;
        if (life == 0) first = picture;
        expectSameImage(picture, first);
    }
}

// As many hosts as threads play the one module at once; every frame comes out as it does alone.
TEST_F(CommandsTest, FramesOfSeveralThreadsAreTheFramesInTurn) {
    const char* const names[] = {"03", "07", "09", "17"};
    play();
    std::vector<std::unique_ptr<Host>> hosts;
    std::vector<FrameRequest> requests;
    std::vector<Image> expected;
    for (std::size_t i = 0; i < std::size(names); ++i) {
        setAll(golden::frame(names[i]));
        requests.push_back(halfMatted(320, 180, kDepths[i % 3]));
        expected.push_back(render(requests.back()).output);
        hosts.push_back(std::make_unique<Host>(module()));
        ASSERT_EQ(hosts.back()->start(), 0);
    }

    std::vector<Image> outputs(std::size(names));
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < std::size(names); ++i) {
        threads.emplace_back([&, i] {
            Instance own(*hosts[i], {320, 180});
            for (const auto& row : golden::frame(names[i]).named) {
                own.storeValue(row.first, valueOf(golden::frame(names[i]), row.first));
            }
            for (int round = 0; round < 3; ++round)
                outputs[i] = renderFrame(own, requests[i]).output;
        });
    }
    for (auto& thread : threads) thread.join();
    for (std::size_t i = 0; i < std::size(names); ++i) expectSameImage(outputs[i], expected[i]);
    for (const auto& each : hosts) {
        EXPECT_EQ(each->stop(), 0);
        EXPECT_EQ(each->ledger().unbalanced(), "");
        EXPECT_EQ(each->ledger().violationText(), "");
    }
}

}  // namespace
