#include "acquisition/records/SamplingBlock.h"

#include "base/LittleEndian.h"

#include <algorithm>

namespace tavex2 {

namespace {

/// Calls `visit` for each number and text of the record in the order of the file.
template <class Sampling, class Visit>
void forEachPart(Sampling& sampling, Visit&& visit) {
    visit(sampling.DIOMask);
    for (auto& latency : sampling.DIOLatency)
        visit(latency);
    for (auto& state : sampling.DIOState)
        visit(state);
    for (auto& character : sampling.Channels.bytes())
        visit(character);
    visit(sampling.Rate);
    visit(sampling.Duration);
    visit(sampling.UpperVolts);
    visit(sampling.LowerVolts);
    visit(sampling.NumChannels);
    visit(sampling.NumSamples);
    visit(sampling.Repeat);
}

} // namespace

std::array<std::byte, samplingBlockBytes> encodeSampling(const SamplingSettings& sampling) {
    std::array<std::byte, samplingBlockBytes> bytes;
    std::byte* to = bytes.data();
    forEachPart(sampling, [&to](auto part) {
        const auto field = littleEndianBytes(part);
        to = std::copy(field.begin(), field.end(), to);
    });
    return bytes;
}

SamplingSettings decodeSampling(std::span<const std::byte, samplingBlockBytes> bytes) {
    SamplingSettings sampling;
    const std::byte* from = bytes.data();
    forEachPart(sampling, [&from]<class T>(T& part) {
        std::array<std::byte, sizeof(T)> field;
        std::copy_n(from, sizeof(T), field.begin());
        part = fromLittleEndian<T>(field);
        from += sizeof(T);
    });
    return sampling;
}

} // namespace tavex2
