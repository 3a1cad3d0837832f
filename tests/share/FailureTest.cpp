#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "share/util/AEException.h"
#include "share/util/PendingErrorList.h"

namespace {

using AEUtil::AEException;
using AEUtil::PendingErrorList;
using AEUtil::RecordError;

TEST(AEExceptionTest, MessageBeginsWithThePlaceAndIsCopied) {
    const AEException failure(25, "source.cpp", 12, "%s of %d", "world", 7);
    const AEException copy = failure;
    EXPECT_STREQ(copy.what(), "source.cpp(12): world of 7");
    EXPECT_EQ(copy.code, 25);

    const std::string longText(5000, 'x');
    const AEException cut(1, longText.c_str(), 1, "%s", longText.c_str());
    EXPECT_EQ(cut.message.size(), 2u * 2047u);
}

TEST(PendingErrorListTest, WithoutAListNothingIsRecorded) {
    RecordError(4);
    EXPECT_EQ(PendingErrorList::takeFirst(), 0);
}

TEST(PendingErrorListTest, EachThreadSeesItsOwnFirstCode) {
    ASSERT_TRUE(PendingErrorList::create());
    std::thread([] { RecordError(99); }).join();
    EXPECT_EQ(PendingErrorList::takeFirst(), 0);
    RecordError(0);
    RecordError(4);
    RecordError(512);
    std::thread([] {
        // As a command does: the system gives the number of a thread that ended to a new one.
        PendingErrorList::clear();
        RecordError(7);
        EXPECT_EQ(PendingErrorList::takeFirst(), 7);
    }).join();
    EXPECT_EQ(PendingErrorList::takeFirst(), 4);
    EXPECT_EQ(PendingErrorList::takeFirst(), 0) << "taking drops the codes behind the first";
    PendingErrorList::destroy();
}

TEST(PendingErrorListTest, CodesBeyondItsRoomAreDropped) {
    ASSERT_TRUE(PendingErrorList::create());
    for (int code = 1; code <= 1000; ++code) RecordError(code);
    EXPECT_EQ(PendingErrorList::takeFirst(), 1);
    RecordError(5);
    EXPECT_EQ(PendingErrorList::takeFirst(), 5) << "room is free again";
    PendingErrorList::destroy();
}

}  // namespace
