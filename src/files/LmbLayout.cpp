#include "files/LmbLayout.h"

#include "base/LittleEndian.h"

#include <algorithm>
#include <limits>
#include <string>

namespace tavex2 {

namespace {

/// Calls `visit` for every field in the order of the file; `Records` is LmbRecords or const LmbRecords.
template <class Records, class Visit>
void forEachField(Records& records, Visit& visit) {
    auto& header = records.header;
    visit(header.Title);
    visit(header.NumChannels);
    visit(header.NumSamples);
    visit(header.Rate);
    visit(header.Duration);
    visit(header.ChannelOn);
    visit(header.ChannelNumber);
    visit(header.ChannelRate);
    visit(header.ChannelScale);
    visit(header.ChannelOffset);
    visit(header.ChannelIndexA);
    visit(header.ChannelIndexB);
    visit(header.Labels);
    visit(header.Units);
    visit(records.infoA);
    visit(records.infoB);
    visit(records.comments);
}

class Encoder {
  public:
    explicit Encoder(std::span<std::byte> to) : m_rest(to) {}

    template <Arithmetic T>
    void operator()(const T& field) {
        std::ranges::copy(littleEndianBytes(field), m_rest.begin());
        m_rest = m_rest.subspan(sizeof(T));
    }
    template <std::size_t N>
    void operator()(const FixedText<N>& field) {
        (*this)(field.bytes());
    }
    template <class T, std::size_t N>
    void operator()(const std::array<T, N>& field) {
        for (const T& each : field)
            (*this)(each);
    }

  private:
    std::span<std::byte> m_rest;
};

class Decoder {
  public:
    explicit Decoder(std::span<const std::byte> from) : m_rest(from) {}

    template <Arithmetic T>
    void operator()(T& field) {
        std::array<std::byte, sizeof(T)> bytes;
        std::ranges::copy(m_rest.first<sizeof(T)>(), bytes.begin());
        field = fromLittleEndian<T>(bytes);
        m_rest = m_rest.subspan(sizeof(T));
    }
    template <std::size_t N>
    void operator()(FixedText<N>& field) {
        (*this)(field.bytes());
    }
    template <class T, std::size_t N>
    void operator()(std::array<T, N>& field) {
        for (T& each : field)
            (*this)(each);
    }

  private:
    std::span<const std::byte> m_rest;
};

} // namespace

std::array<std::byte, lmbRecordBytes> encodeLmbRecords(const LmbRecords& records) {
    std::array<std::byte, lmbRecordBytes> bytes;
    Encoder encode(bytes);
    forEachField(records, encode);
    return bytes;
}

LmbRecords decodeLmbRecords(std::span<const std::byte, lmbRecordBytes> bytes) {
    LmbRecords records;
    Decoder decode(bytes);
    forEachField(records, decode);
    return records;
}

Result<std::uint64_t> lmbFileBytes(int channels, std::int64_t samples) {
    constexpr std::int64_t mostSamples = std::numeric_limits<std::int32_t>::max();
    if (channels < 1 || channels > mostChannels || samples < 1 || samples > mostSamples)
        return Error{ErrorKind::InvalidValue, "A trial file holds 1 to " + std::to_string(mostChannels) +
                                                  " channels of 1 to " + std::to_string(mostSamples) +
                                                  " samples; this trial has " + std::to_string(channels) +
                                                  " channels of " + std::to_string(samples) + " samples."};
    const auto blocks = static_cast<std::uint64_t>(channels) + 1;
    return lmbIdentificationBytes + lmbRecordBytes + sizeof(float) * blocks * static_cast<std::uint64_t>(samples);
}

} // namespace tavex2
