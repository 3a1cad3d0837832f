// Ledger, fault plans, handles and worlds: what the tests of the effect rely on.
#include <gtest/gtest.h>

#include <cstring>

#include "host/Faults.h"
#include "host/FillCopy.h"
#include "host/Handles.h"
#include "host/Worlds.h"

using namespace standin;

TEST(Ledger, NamesWhatIsOutAndWhatCameTooOften) {
    Ledger ledger;
    const Balance before = ledger.balance();
    ledger.lend(Loan::suite, "\"A\" 1");
    ledger.lend(Loan::suite, "\"A\" 1");
    ledger.lend(Loan::world);
    ledger.giveBack(Loan::suite, "\"A\" 1");
    EXPECT_EQ(ledger.unbalanced(), "world: 1 not given back; suite \"A\" 1: 1 not given back");
    EXPECT_EQ(ledger.changedSince(before), "world: 1 more than before; suite: 1 more than before");
    EXPECT_EQ(ledger.total(Loan::suite), 2);

    ledger.giveBack(Loan::suite, "\"B\" 1");
    EXPECT_EQ(ledger.violationText(), "suite \"B\" 1 given back without being lent\n");
    EXPECT_EQ(ledger.live(Loan::suite), 1);
}

TEST(Faults, FailTheNthCallOfAKindAndCountOn) {
    Faults faults;
    faults.onCall(CallKind::fill);
    faults.failAt(CallKind::fill, 2, 77);
    faults.failFrom(CallKind::abort, 3);
    EXPECT_EQ(faults.onCall(CallKind::fill), 0);
    EXPECT_EQ(faults.onCall(CallKind::copy), 0);
    EXPECT_EQ(faults.onCall(CallKind::fill), 77);
    EXPECT_EQ(faults.onCall(CallKind::fill), 0);
    EXPECT_EQ(faults.calls(CallKind::fill), 3);
    for (int i = 1; i <= 4; ++i) {
        EXPECT_EQ(faults.onCall(CallKind::abort), i < 3 ? 0 : PF_Interrupt_CANCEL);
    }
    EXPECT_EQ(faults.failures(), 3);
    faults.clear();
    EXPECT_EQ(faults.onCall(CallKind::abort), 0);
    EXPECT_EQ(faults.calls(CallKind::abort), 1);
}

TEST(Handles, AreExactAndWatched) {
    const auto owner = std::make_shared<Ledger>();
    Ledger caller;
    const PF_Handle handle = handles::create(owner, 24);
    void* first = handles::lock(handle, caller);
    EXPECT_EQ(*handle, first);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(first) % 16, 0u);
    std::memset(first, 7, 24);
    handles::unlock(handle, caller, true);
    EXPECT_EQ(handles::bytes(handle), std::vector<std::uint8_t>(24, 7));
    EXPECT_EQ(handles::size(handle, caller), 24u);
    EXPECT_EQ(caller.violationText(), "");

    handles::unlock(handle, caller, false);
    handles::lock(handle, caller);
    handles::dispose(handle, caller);
    handles::dispose(handle, caller);
    EXPECT_EQ(caller.violationText(),
              "unlock of a handle that is not locked\n"
              "disposal of a locked handle of 24 bytes\n"
              "disposal of a handle that is not alive\n");
    EXPECT_EQ(owner->unbalanced(), "");
    // What a negative 32-bit size becomes when it is widened with its sign.
    EXPECT_EQ(handles::create(owner, static_cast<A_HandleSize>(std::int64_t{-8})), nullptr);
}

TEST(Worlds, NoticeEveryByteOutsideThePicture) {
    HostOffer offer;
    offer.rowPadding = 12;
    offer.guardBytes = 16;
    offer.shiftPixels = true;
    for (const Depth depth : {Depth::bits8, Depth::bits16, Depth::float32}) {
        auto buffer = WorldBuffer::make(3, 2, depth, offer, false);
        const PF_EffectWorld& world = buffer->world();
        EXPECT_EQ(depthOf(world), depth);
        EXPECT_EQ(buffer->untouchedPixels(), 6);
        auto* pixels = reinterpret_cast<std::byte*>(world.data);
        const int picture = 3 * bytesPerPixel(depth);
        for (int at = -20; at < 2 * world.rowbytes + 16; ++at) {
            const bool inside = at >= 0 && at < 2 * world.rowbytes && at % world.rowbytes < picture;
            pixels[at] ^= std::byte{1};
            ASSERT_EQ(buffer->marginsIntact(), inside) << "byte " << at;
            pixels[at] ^= std::byte{1};
        }
        const Image image = Image::filled(3, 2, depth, 1, 0.5, 0, 1);
        buffer->load(image, 0, 0);
        EXPECT_EQ(buffer->untouchedPixels(), 0);
        EXPECT_TRUE(buffer->holds(image, 0, 0));
        EXPECT_EQ(buffer->toImage(), image);
        EXPECT_EQ(hashPixels(world, depth), hashPixels(image));
        EXPECT_TRUE(buffer->marginsIntact());
    }
}

TEST(Worlds, FillTakesThePartInsideAndCopyWantsOneSize) {
    HostOffer offer;
    offer.rowPadding = 8;
    auto from = WorldBuffer::make(5, 4, Depth::bits16, offer, true);
    auto to = WorldBuffer::make(4, 4, Depth::bits16, HostOffer{}, true);
    const PF_LRect half{-3, 1, 2, 99};
    fill(from->world(), Depth::bits16, &half, fillColor(PF_Pixel{255, 0, 255, 0}));
    const Image filled = from->toImage();
    EXPECT_EQ(filled.get(1, 0)[0], 0);
    EXPECT_EQ(filled.get(2, 1)[0], 0);
    EXPECT_EQ(filled.row<PF_Pixel16>(3)[1].green, 32768);

    EXPECT_FALSE(copy(from->world(), to->world(), Depth::bits16, nullptr, nullptr));
    const PF_LRect left{1, 0, 5, 4};
    EXPECT_TRUE(copy(from->world(), to->world(), Depth::bits16, &left, nullptr));
    EXPECT_TRUE(to->holds(filled, 1, 0));
    EXPECT_TRUE(from->marginsIntact() && to->marginsIntact());
}
