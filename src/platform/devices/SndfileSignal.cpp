#include "platform/devices/SndfileSignal.h"

#include "base/PathText.h"
#include "platform/InputFile.h"

#include <sndfile.h>

#include <utility>

namespace tavex2 {

namespace {

namespace fs = std::filesystem;

constexpr double fullScaleVolts = 10.0;

struct CloseFile {
    void operator()(SNDFILE* file) const { sf_close(file); }
};

class SndfileSignal final : public RecordedSignal {
  public:
    SndfileSignal(std::unique_ptr<SNDFILE, CloseFile> file, const SF_INFO& info, std::string name)
        : m_file(std::move(file)), m_info(info), m_name(std::move(name)) {}

    std::string name() const override { return m_name; }
    int channels() const override { return m_info.channels; }
    double rateHz() const override { return m_info.samplerate; }
    std::int64_t scans() const override { return m_info.frames; }

    Result<void> read(std::int64_t first, std::span<double> interleaved) override {
        const auto scans = static_cast<std::int64_t>(interleaved.size()) / m_info.channels;
        const bool placed = m_position == first || sf_seek(m_file.get(), first, SEEK_SET) == first;
        if (!placed || sf_readf_double(m_file.get(), interleaved.data(), scans) != scans) {
            m_position = -1;
            return Error{ErrorKind::ReadFailed, "The recording " + m_name + " can no longer be read"};
        }
        m_position = first + scans;
        for (double& sample : interleaved)
            sample *= fullScaleVolts;
        return {};
    }

  private:
    std::unique_ptr<SNDFILE, CloseFile> m_file;
    SF_INFO m_info;
    std::string m_name;
    std::int64_t m_position = 0; ///< scan that the library reads next
};

} // namespace

Result<std::unique_ptr<RecordedSignal>> openSndfileSignal(const fs::path& path) {
    const std::string name = pathText(path);
    if (const auto opened = openForReading(path); !opened) return opened.error();

    SF_INFO info{};
    std::unique_ptr<SNDFILE, CloseFile> file(sf_open(path.string().c_str(), SFM_READ, &info));
    if (!file)
        return Error{ErrorKind::BadFormat,
                     "The recording " + name + " is not a sound file that can be played. Give a WAVE or FLAC file."};
    if (info.frames < 1)
        return Error{ErrorKind::BadFormat, "The recording " + name + " holds no samples. Give another file."};
    // The library scales floating-point files to full scale 1 as they are, and whole numbers by their own full scale.
    sf_command(file.get(), SFC_SET_NORM_DOUBLE, nullptr, SF_TRUE);
    return std::unique_ptr<RecordedSignal>(
        std::make_unique<SndfileSignal>(std::move(file), info, pathText(path.filename())));
}

} // namespace tavex2
