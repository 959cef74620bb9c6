#include "base/TrialArray.h"

#include <gmock/gmock.h>

#include <limits>
#include <numeric>
#include <type_traits>

// Under a sanitizer, too, an allocation that cannot be made is to fail as it does for the user, and not to end the
// test.
#if defined(__SANITIZE_ADDRESS__)
extern "C" const char* __asan_default_options() {
    return "allocator_may_return_null=1";
}
#elif defined(__SANITIZE_THREAD__)
extern "C" const char* __tsan_default_options() {
    return "allocator_may_return_null=1";
}
#endif

namespace tavex2::test {
namespace {

using testing::ElementsAre;

/// Sample (c, i) is 10 c + i.
TrialArray numbered(ElementType type, int channels, std::int64_t samples) {
    TrialArray array = TrialArray::allocate(type, 2, channels, samples).value();
    for (int c = 0; c < channels; ++c) {
        if (type == ElementType::Float32)
            std::iota(array.floats(c).begin(), array.floats(c).end(), 10.0F * static_cast<float>(c));
        else
            std::iota(array.doubles(c).begin(), array.doubles(c).end(), 10.0 * c);
    }
    return array;
}

TEST(TrialArrayTest, IsEmptyUntilItIsAllocated) {
    const TrialArray array;
    EXPECT_TRUE(array.empty());
    EXPECT_EQ(array.channels(), 0);
    EXPECT_EQ(array.samples(), 0);
}

TEST(TrialArrayTest, KeepsTheShapeAskedFor) {
    const TrialArray array = TrialArray::allocate(ElementType::Float32, 2, 3, 5).value();
    EXPECT_FALSE(array.empty());
    EXPECT_EQ(array.rank(), 2);
    EXPECT_EQ(array.channels(), 3);
    EXPECT_EQ(array.samples(), 5);
    EXPECT_EQ(array.elementType(), ElementType::Float32);
    EXPECT_EQ(array.elementSize(), 4U);
    EXPECT_EQ(array.floats(2).size(), 5U);
}

TEST(TrialArrayTest, RefusesShapesThatAreNoTrial) {
    const auto refused = [](int rank, int channels, std::int64_t samples) {
        const auto result = TrialArray::allocate(ElementType::Float64, rank, channels, samples);
        return !result && result.error().kind == ErrorKind::InvalidValue;
    };
    EXPECT_TRUE(refused(2, 0, 10));
    EXPECT_TRUE(refused(2, -1, 10));
    EXPECT_TRUE(refused(2, 2, 0));
    EXPECT_TRUE(refused(2, 2, -5));
    EXPECT_TRUE(refused(1, 2, 10));
    EXPECT_TRUE(refused(0, 1, 10));
    EXPECT_TRUE(refused(3, 1, 10));
}

TEST(TrialArrayTest, SaysSoWhenTheMachineCannotHoldATrial) {
    for (const std::int64_t samples :
         {std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::max() / (64 * 8) - 1}) {
        const auto result = TrialArray::allocate(ElementType::Float64, 2, 64, samples);
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error().kind, ErrorKind::OutOfMemory);
        EXPECT_THAT(result.error().text, testing::HasSubstr("64 channels"));
    }
}

TEST(TrialArrayTest, LaysChannelsOneAfterTheOther) {
    const TrialArray array = numbered(ElementType::Float64, 3, 4);
    EXPECT_THAT(array.doubles(1), ElementsAre(10, 11, 12, 13));
    EXPECT_EQ(array.doubles(0).data() + 4, array.doubles(1).data());
    EXPECT_EQ(array.doubles(1).data() + 4, array.doubles(2).data());
}

TEST(TrialArrayTest, GivesOneSampleAsVoltsWhateverItsWidth) {
    EXPECT_EQ(numbered(ElementType::Float32, 2, 3).at(1, 2), 12.0);
    EXPECT_EQ(numbered(ElementType::Float64, 2, 3).at(0, 0), 0.0);
}

TEST(TrialArrayTest, VisitsAChannelInItsOwnWidth) {
    const auto width = [](auto samples) { return sizeof(typename decltype(samples)::value_type); };
    EXPECT_EQ(numbered(ElementType::Float32, 1, 2).visitChannel(0, width), 4U);
    EXPECT_EQ(numbered(ElementType::Float64, 1, 2).visitChannel(0, width), 8U);
}

TEST(TrialArrayTest, TruncatesEveryChannel) {
    TrialArray array = numbered(ElementType::Float64, 3, 4);
    array.truncate(2);
    EXPECT_EQ(array.samples(), 2);
    EXPECT_THAT(array.doubles(0), ElementsAre(0, 1));
    EXPECT_THAT(array.doubles(1), ElementsAre(10, 11));
    EXPECT_THAT(array.doubles(2), ElementsAre(20, 21));
}

TEST(TrialArrayTest, TruncatesToItsOwnLengthAndToNothing) {
    TrialArray array = numbered(ElementType::Float32, 2, 3);
    array.truncate(3);
    EXPECT_THAT(array.floats(1), ElementsAre(10, 11, 12));
    array.truncate(0);
    EXPECT_TRUE(array.empty());
    EXPECT_TRUE(array.floats(1).empty());
}

TEST(TrialArrayTest, IsMovedAndNeverCopied) {
    static_assert(!std::is_copy_constructible_v<TrialArray> && std::is_nothrow_move_constructible_v<TrialArray>);
    TrialArray from = numbered(ElementType::Float64, 1, 2);
    const double* where = from.doubles(0).data();
    const TrialArray to = std::move(from);
    EXPECT_EQ(to.doubles(0).data(), where);
}

} // namespace
} // namespace tavex2::test
