#include <gtest/gtest.h>

#include <string>

#include "resources/PropertyList.h"

namespace {

using namespace streakfall;
using namespace std::string_literals;

// What hosts have found at each offset: the properties' bytes one after the other, spelt out.
const std::string kExpected =
    "\x01\0\0\0\0\0\x0C\0\0\0"s
    "MIB8dnik\0\0\0\0\x04\0\0\0TKFe"s
    "MIB8eman\0\0\0\0\x10\0\0\0\x0CQ_Streakfall\0\0\0"s
    "MIB8gtac\0\0\0\0\x08\0\0\0\x05QUVEX\0\0"s
    "MIB84668\0\0\0\0\x10\0\0\0EntryPointFunc\0\0"s
    "MIB8RVPe\0\0\0\0\x04\0\0\0\x02\0\0\0"s
    "MIB8RVSe\0\0\0\0\x04\0\0\0\x0D\0\0\0"s
    "MIB8REVe\0\0\0\0\x04\0\0\0\x03\x96\x0A\0"s
    "MIB8FNIe\0\0\0\0\x02\0\0\0\0\0\0\0"s
    "MIB8OLGe\0\0\0\0\x04\0\0\0\x72\0\0\x06"s
    "MIB82LGe\0\0\0\0\x04\0\0\0\x19\x14\0\0"s
    "MIB8ANMe\0\0\0\0\x14\0\0\0\x11QUVEX STREAK FALL\0\0"s
    "MIB8LFea\0\0\0\0\x04\0\0\0\0\0\0\0"s;

TEST(PropertyListTest, HasTheBytesThatHostsRead) {
    constexpr auto kList = propertyList();
    ASSERT_EQ(kExpected.size(), kList.size());
    EXPECT_EQ(std::string(kList.begin(), kList.end()), kExpected);
    // One property by its place, as a host that seeks would find it.
    EXPECT_EQ(std::string(kList.begin() + 102, kList.begin() + 102 + 15), "EntryPointFunc\0"s);
}

}  // namespace
