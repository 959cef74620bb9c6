#include "app/LmbSignal.h"

#include "base/Decimal.h"
#include "base/PathText.h"
#include "files/Import.h"

#include <cmath>
#include <utility>

namespace tavex2 {

namespace {

class LmbSignal final : public RecordedSignal {
  public:
    LmbSignal(LmbFile file, std::string name) : m_file(std::move(file)), m_name(std::move(name)) {
        if (!m_file.identified) m_name += " (without identification)";
    }

    std::string name() const override { return m_name; }
    int channels() const override { return m_file.samples.channels(); }
    double rateHz() const override { return m_file.header.Rate; }
    std::int64_t scans() const override { return m_file.samples.samples(); }

    Result<void> read(std::int64_t first, std::span<double> interleaved) override {
        const auto width = static_cast<std::size_t>(channels());
        for (std::size_t channel = 0; channel < width; ++channel) {
            const std::span<const float> samples = m_file.samples.floats(static_cast<int>(channel));
            for (std::size_t i = channel; i < interleaved.size(); i += width)
                interleaved[i] = static_cast<double>(samples[static_cast<std::size_t>(first) + i / width]);
        }
        return {};
    }

  private:
    LmbFile m_file;
    std::string m_name;
};

} // namespace

Result<std::unique_ptr<RecordedSignal>> openLmbSignal(const std::filesystem::path& path) {
    Result<LmbFile> file = readLmbOfAnyKind(path);
    if (!file) return file.error();
    if (const double rateHz = file.value().header.Rate; rateHz != std::floor(rateHz))
        return Error{ErrorKind::InvalidValue, pathText(path) + " was taken at " + plainNumber(rateHz) +
                                                  " Hz. Only a trial whose rate is a whole number can play a board."};
    return std::unique_ptr<RecordedSignal>(
        std::make_unique<LmbSignal>(std::move(file).value(), pathText(path.filename())));
}

} // namespace tavex2
