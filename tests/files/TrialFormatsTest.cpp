#include "files/TrialFormats.h"

#include "support/TemporaryFolder.h"
#include "support/Trials.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

/// How much room the files of a trial take.

namespace tavex2::test {
namespace {

namespace fs = std::filesystem;

/// A trial of full-scale samples, which have the longest numbers.
std::shared_ptr<Trial> fullScale(int channels, std::int64_t samples, std::int32_t rateHz, double volts) {
    TrialArray array = TrialArray::allocate(ElementType::Float64, channels == 1 ? 1 : 2, channels, samples).value();
    for (int channel = 0; channel < channels; ++channel)
        std::ranges::fill(array.doubles(channel), volts);
    ProgramState state;
    state.settings.sampling.Repeat = 500;
    return collectedTrial(state, std::make_shared<const TrialArray>(std::move(array)), rateHz);
}

void expectRoomFor(const Trial& trial, const fs::path& folder) {
    for (const TrialFormat& format : trialFormats()) {
        const fs::path file = folder / ("t" + std::string(format.extension));
        const auto written = format.write(file, trial, {});
        ASSERT_TRUE(written) << written.error().text;
        EXPECT_LE(fs::file_size(file), format.mostBytes(trial.samples->channels(), trial.samples->samples()))
            << format.extension << ", " << trial.samples->channels() << " channels of " << trial.samples->samples();
        fs::remove(file);
    }
}

RC_GTEST_PROP(TrialFormats, NoFileIsLargerThanTheRoomThatIsReckonedForIt, ()) {
    const TemporaryFolder folder;
    const int channels = *rc::gen::inRange(1, mostChannels + 1);
    const int samples = *rc::gen::inRange(1, 200);
    const double volts = *rc::gen::element(-10.0, 10.0, -9.99999, 0.0);
    expectRoomFor(*fullScale(channels, samples, *rc::gen::inRange(1, 100001), volts), folder.path());
    RC_ASSERT(!testing::Test::HasFailure());
}

TEST(TrialFormats, AnHourAtFullScaleHasRoom) {
    // Enough rows that one byte too little in any of them comes to more than a head.
    const TemporaryFolder folder;
    constexpr int rateHz = 5;
    constexpr int hour = 3600;
    for (const int channels : {1, 2, mostChannels})
        expectRoomFor(*fullScale(channels, hour * rateHz + 1, rateHz, -10.0), folder.path());
}

#ifndef _WIN32
TEST(TrialFormats, AFolderWithALongPathHasRoom) {
    const TemporaryFolder folder;
    fs::path deep = folder.path();
    constexpr std::size_t longestPath = 4000;
    constexpr std::size_t nameLength = 200;
    while (deep.native().size() + nameLength < longestPath)
        deep /= std::string(nameLength, 'd');
    fs::create_directories(deep);
    expectRoomFor(*fullScale(mostChannels, 1, 1000, -10.0), deep);
}
#endif

} // namespace
} // namespace tavex2::test
