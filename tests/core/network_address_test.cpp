#include "core/network_address.h"

#include <gtest/gtest.h>

namespace brenvo::core {
namespace {

TEST(NetworkAddress, AnAddressIsFourNumbers) {
  for (const char* text : {"127.0.0.1", "0.0.0.0", "255.255.255.255"}) {
    EXPECT_TRUE(IsAddress(text)) << text;
  }
  for (const char* text : {"", "localhost", "127.0.0", "127.0.0.1.2", "127.0.0.256", "127..0.1",
                           "127.0.0.-1", "127.0.0.1 ", "1.2.3.4x"}) {
    EXPECT_FALSE(IsAddress(text)) << text;
  }
}

TEST(NetworkAddress, AGroupBeginsWith224To239) {
  EXPECT_TRUE(IsGroupAddress("224.0.0.1"));
  EXPECT_TRUE(IsGroupAddress("239.255.0.1"));
  EXPECT_FALSE(IsGroupAddress("223.0.0.1"));
  EXPECT_FALSE(IsGroupAddress("240.0.0.1"));
}

TEST(NetworkAddress, TargetsAreAddressesWithPorts) {
  EXPECT_EQ(TargetsOf("127.0.0.1:2238, 192.168.1.5:1"),
            (std::vector<NetworkTarget>{{"127.0.0.1", 2238}, {"192.168.1.5", 1}}));
  EXPECT_EQ(FaultOfTargets("127.0.0.1:2238 here:1"), "here:1");
  EXPECT_EQ(FaultOfTargets("127.0.0.1:0"), "127.0.0.1:0");
  EXPECT_EQ(FaultOfTargets("127.0.0.1:65536"), "127.0.0.1:65536");
  EXPECT_EQ(FaultOfTargets(""), "");
  EXPECT_EQ(TargetsOf("127.0.0.1 x").size(), 0u);
}

}  // namespace
}  // namespace brenvo::core
