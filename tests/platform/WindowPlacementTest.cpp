#include "platform/WindowPlacement.h"

#include <gtest/gtest.h>

namespace tavex2 {
namespace {

TEST(WindowPlacement, AWindowIsCentredOverItsParent) {
    const WindowPlace parent{.left = 1000, .top = 2000, .width = 9001, .height = 6000};
    EXPECT_EQ(centredOver(parent, 3000, 2000), (WindowCorner{5500 - 1500, 5000 - 1000})); // 5500.5 rounds to even
}

TEST(WindowPlacement, ACentredWindowNeverLeavesTheScreenAtTheTopOrLeft) {
    const WindowPlace parent{.left = 0, .top = 100, .width = 1000, .height = 9000};
    EXPECT_EQ(centredOver(parent, 3000, 2000), (WindowCorner{0, 3600}));
    EXPECT_EQ(centredOver({.left = -2000, .top = -5000, .width = 1000, .height = 1000}, 100, 100),
              (WindowCorner{0, 0}));
    EXPECT_EQ(centredOver({.left = 60000, .top = 0, .width = 1000, .height = 1000}, 0, 0).left, 32767);
}

} // namespace
} // namespace tavex2
