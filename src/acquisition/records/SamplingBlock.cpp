#include "acquisition/records/SamplingBlock.h"

#include "base/LittleEndian.h"

#include <algorithm>

namespace tavex2 {

namespace {

/// Calls `visit` for each number and character of the record in the order of the file.
template <class Sampling, class Visit>
void forEachPart(Sampling& sampling, Visit&& visit) {
    const auto visitAll = [&visit](auto& parts) {
        for (auto& part : parts)
            visit(part);
    };
    forEachSampling(sampling, [&](const char*, auto& field) {
        if constexpr (requires { field.bytes(); })
            visitAll(field.bytes());
        else if constexpr (requires { field.size(); })
            visitAll(field);
        else
            visit(field);
    });
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
