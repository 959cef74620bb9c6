#include "files/FileIO.h"

#include "base/Decimal.h"
#include "base/LittleEndian.h"
#include "files/FreeName.h"
#include "files/LmbLayout.h"

#include <algorithm>
#include <bit>
#include <span>
#include <string>
#include <vector>

namespace tavex2 {

namespace {

std::string titleText(int trialNumber, const LocalTime& now) {
    return "Tavex2 analog data file.  Trial " + zeroPadded(trialNumber, 4) + "  " + zeroPadded(now.year, 4) + "-" +
           zeroPadded(now.month, 2) + "-" + zeroPadded(now.day, 2) + " " + zeroPadded(now.hour, 2) + "." +
           zeroPadded(now.minute, 2) + "." + zeroPadded(now.second, 2);
}

/// The header of a trial. Slots above its channels stay as they are in `memory`: unused, or what a loaded file had
/// there.
LmbHeader headerOf(const TrialArray& trial, const SamplingSettings& sampling, const FixedText<100>& title,
                   const LmbHeader& memory) {
    LmbHeader header = memory;
    header.Title = title;
    header.NumChannels = static_cast<std::int16_t>(trial.channels());
    header.NumSamples = static_cast<std::int32_t>(trial.samples());
    header.Rate = sampling.Rate;
    header.Duration = static_cast<double>(sampling.Duration);
    for (int k = 0; k <= trial.channels(); ++k) {
        const auto slot = static_cast<std::size_t>(k);
        header.ChannelOn[slot] = -1;
        header.ChannelNumber[slot] = static_cast<std::int16_t>(k - 1);
        header.ChannelRate[slot] = sampling.Rate;
        header.ChannelScale[slot] = 1.0;
        header.ChannelOffset[slot] = 0.0;
        header.ChannelIndexA[slot] = static_cast<std::int16_t>(k);
        header.ChannelIndexB[slot] = static_cast<std::int16_t>(k);
    }
    for (int channel = 0; channel < trial.channels(); ++channel) {
        const auto slot = static_cast<std::size_t>(channel) + 1;
        if (header.Labels[slot].neverSet()) header.Labels[slot].assign(labelOf(header, channel));
        if (header.Units[slot].neverSet()) header.Units[slot].assign(channelUnitOf(header, channel));
    }
    header.Labels[0].assign("Time");
    header.Units[0].assign("s");
    return header;
}

/// Writes blocks of float32 samples, little-endian, through one small buffer.
class SampleWriter {
  public:
    SampleWriter(AtomicFile& file, SampleProgress progress)
        : m_file(file), m_progress(progress), m_piece(samplesOfAPiece) {}

    /// The times of `samples` samples: the interval is added up in float32, one sample after the other. Other programs
    /// compare files byte by byte, so the rounding that late times carry is part of the format.
    Result<void> writeTimes(std::int64_t samples, std::int32_t rateHz) {
        const auto interval = static_cast<float>(1.0 / rateHz);
        float time = 0.0F;
        return inPieces(static_cast<std::size_t>(samples), [&](std::size_t, std::span<float> piece) {
            for (float& each : piece) {
                each = time;
                time += interval;
            }
        });
    }

    template <class T>
    Result<void> writeChannel(std::span<const T> volts) {
        return inPieces(volts.size(), [volts](std::size_t first, std::span<float> piece) {
            std::ranges::transform(volts.subspan(first, piece.size()), piece.begin(),
                                   [](T each) { return static_cast<float>(each); });
        });
    }

  private:
    /// Calls `fill(first, piece)` for consecutive pieces of a block and writes each.
    template <class Fill>
    Result<void> inPieces(std::size_t samples, Fill fill) {
        for (std::size_t first = 0; first < samples; first += samplesOfAPiece) {
            const std::span<float> piece(m_piece.data(), std::min(samplesOfAPiece, samples - first));
            fill(first, piece);
            if constexpr (std::endian::native == std::endian::big)
                for (float& each : piece)
                    each = std::bit_cast<float>(littleEndianBytes(each));
            if (auto written = m_file.write(std::as_bytes(piece)); !written) return written;
            if (!m_progress.advance(piece.size()))
                return Error{ErrorKind::Cancelled, "Saving was cancelled; no file was written."};
        }
        return {};
    }

    AtomicFile& m_file;
    SampleProgress m_progress;
    std::vector<float> m_piece;
};

Result<void> writeRecords(AtomicFile& file, const LmbRecords& records) {
    const FixedText<lmbIdentificationBytes> identification(lmbIdentification);
    if (auto written = file.write(std::as_bytes(std::span(identification.bytes()))); !written) return written;
    return file.write(encodeLmbRecords(records));
}

Result<void> writeSamples(AtomicFile& file, const TrialArray& trial, std::int32_t rateHz,
                          const FileProgress& progress) {
    SampleWriter writer(file, SampleProgress(progress, (std::int64_t{trial.channels()} + 1) * trial.samples()));
    if (auto written = writer.writeTimes(trial.samples(), rateHz); !written) return written;
    for (int channel = 0; channel < trial.channels(); ++channel) {
        auto written = trial.visitChannel(channel, [&](auto volts) { return writer.writeChannel(volts); });
        if (!written) return written;
    }
    return {};
}

} // namespace

Result<void> WriteLmb(const std::filesystem::path& path, ProgramState& state, const LocalTime& now,
                      const WriteOptions& options) {
    if (!hasCurrentTrial(state))
        return Error{ErrorKind::InvalidValue, "There is no trial to save. Collect or open one first."};
    const TrialData trial = state.trials.CurrentTrial; // kept while the callback lets other things happen
    const SamplingSettings sampling = state.trials.CurrentSettings;
    if (auto bytes = lmbFileBytes(trial->channels(), trial->samples()); !bytes) return bytes.error();
    if (sampling.Rate < 1)
        return Error{ErrorKind::InvalidValue, "The trial has no sampling rate and cannot be saved. Collect it again."};

    const FixedText<100> title =
        options.title ? *options.title : FixedText<100>(titleText(state.settings.setup.TrialNumber, now));
    const LmbRecords records{headerOf(*trial, sampling, title, state.header), state.infoA, state.infoB, state.comments};

    Result<AtomicFile> file = AtomicFile::create(path, options.ifExists);
    if (!file) return file.error();
    if (auto written = writeRecords(file.value(), records); !written) return written;
    if (auto written = writeSamples(file.value(), *trial, sampling.Rate, options.progress); !written) return written;
    if (auto committed = file.value().commit(); !committed) return committed;

    state.header = records.header;
    state.flags.Unsaved = false;
    return {};
}

Result<std::filesystem::path> WriteLmbToFreeName(const std::filesystem::path& folder, ProgramState& state,
                                                 const LocalTime& now, const FileProgress& progress) {
    return writeToFreeName(folder, state.TrialName, ".lmb", [&](const std::filesystem::path& path) {
        return WriteLmb(path, state, now, {IfExists::Refuse, progress});
    });
}

} // namespace tavex2
