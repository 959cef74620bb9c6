#include "platform/devices/Simulator.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

namespace tavex2 {

namespace {

constexpr int loopedLines = 3;
constexpr double lineHighVolts = 5.0;
constexpr double quantiserSteps = 65536; // 16 bits

template <class T>
bool readNumber(std::string_view text, T lowest, T highest, T& number) {
    T value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size() || value < lowest || value > highest) return false;
    number = value;
    return true;
}

bool readFault(std::string_view text, SimulatorOptions& options) {
    using Fault = SimulatorOptions::Fault;
    options.fault = Fault::None;
    if (text == "refuse") options.fault = Fault::RefuseConfiguration;
    if (text == "open") options.fault = Fault::RefuseToOpen;
    const std::size_t at = text.find('@');
    if (at == std::string_view::npos) return options.fault != Fault::None;

    const std::string_view what = text.substr(0, at);
    if (what == "overrun") options.fault = Fault::Overrun;
    if (what == "vanish") options.fault = Fault::Vanish;
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    return (what == "overrun" || what == "vanish") &&
           readNumber<std::int64_t>(text.substr(at + 1), 0, most, options.faultAfterScans);
}

bool readOption(std::string_view option, SimulatorOptions& options) {
    const std::size_t equals = std::min(option.find('='), option.size());
    const std::string_view name = option.substr(0, equals);
    const std::string_view value = option.substr(std::min(equals + 1, option.size()));
    if (name == "seed")
        return readNumber<std::uint64_t>(value, 0, std::numeric_limits<std::uint64_t>::max(), options.seed);
    if (name == "inputs") return readNumber<int>(value, loopedLines, 64, options.inputs);
    return name == "fail" && readFault(value, options);
}

} // namespace

Result<SimulatorOptions> parseSimulatorOptions(std::string_view text) {
    SimulatorOptions options;
    while (!text.empty()) {
        const std::size_t comma = std::min(text.find(','), text.size());
        const std::string_view option = text.substr(0, comma);
        if (!readOption(option, options))
            return Error{ErrorKind::InvalidValue,
                         "The simulated board has no option \"" + std::string(option) +
                             "\". It takes seed=NUMBER, inputs=3..64 and fail=refuse, open, overrun@SCANS or "
                             "vanish@SCANS, separated by commas."};
        text.remove_prefix(std::min(comma + 1, text.size()));
    }
    return options;
}

Simulator::Simulator(const SimulatorOptions& options, std::string spec, MillisecondClock& clock)
    : m_options(options), m_pacing(clock), m_digitalWrites{{std::chrono::nanoseconds::min(), 0}} {
    m_description = {.name = "Simulated board",
                     .spec = std::move(spec),
                     .inputs = options.inputs,
                     .lowestRateHz = 1,
                     .highestRateHz = 100000,
                     .lowestVolts = -10,
                     .highestVolts = 10,
                     .digitalLines = 8,
                     .appliesLimits = true};
}

DaqOutcome Simulator::check(const StreamConfig&) const {
    if (m_options.fault != SimulatorOptions::Fault::RefuseConfiguration) return {};
    return {DaqStatus::DeviceRefused, "The simulated board was told to refuse."};
}

DaqOutcome Simulator::start(const StreamConfig& config) {
    if (m_options.fault == SimulatorOptions::Fault::RefuseToOpen)
        return {DaqStatus::DeviceUnavailable, "The simulated board was told not to open."};
    m_stream = config;
    m_voltsPerStep = (config.upperVolts - config.lowerVolts) / quantiserSteps;
    m_signals.clear();
    for (const int input : config.channels)
        m_signals.emplace_back(m_options.seed + m_starts, input, config.rateHz);
    ++m_starts;
    m_nextScan = 0;
    m_pacing.begin(config.rateHz);
    return {};
}

BoardRead Simulator::read(std::span<double> interleaved) {
    using Fault = SimulatorOptions::Fault;
    const auto channels = static_cast<std::int64_t>(m_signals.size());
    const std::int64_t asked = static_cast<std::int64_t>(interleaved.size()) / channels;
    const bool fails = m_options.fault == Fault::Overrun || m_options.fault == Fault::Vanish;
    const std::int64_t scans = fails ? std::min(asked, m_options.faultAfterScans - m_nextScan) : asked;
    if (scans > 0) {
        if (!m_pacing.waitForScan(m_nextScan + scans - 1)) return {};
        generate(interleaved.first(static_cast<std::size_t>(scans * channels)));
        m_nextScan += scans;
    }
    if (scans == asked) return {.scans = scans, .status = DaqStatus::Ok, .context = {}};
    return {.scans = std::max<std::int64_t>(scans, 0),
            .status = m_options.fault == Fault::Overrun ? DaqStatus::Overrun : DaqStatus::DeviceVanished,
            .context = "Simulated board"};
}

void Simulator::generate(std::span<double> interleaved) {
    const std::size_t channels = m_signals.size();
    const std::size_t scans = interleaved.size() / channels;
    for (std::size_t column = 0; column < channels; ++column) {
        const SimulatedSignal& signal = m_signals[column];
        if (signal.input() >= m_options.inputs - loopedLines) continue;
        for (std::size_t i = 0; i < scans; ++i)
            interleaved[i * channels + column] = quantised(signal.at(m_nextScan + static_cast<std::int64_t>(i)));
    }
    loopBack(interleaved);
}

/// Fills the columns of the inputs that are wired to digital lines.
void Simulator::loopBack(std::span<double> interleaved) {
    const std::lock_guard lock(m_digitalMutex);
    const std::size_t channels = m_signals.size();
    const std::size_t scans = interleaved.size() / channels;
    std::size_t current = 0;
    for (std::size_t i = 0; i < scans; ++i) {
        const auto time = m_pacing.timeOf(m_nextScan + static_cast<std::int64_t>(i));
        while (current + 1 < m_digitalWrites.size() && m_digitalWrites[current + 1].time <= time)
            ++current;
        for (std::size_t column = 0; column < channels; ++column) {
            const int line = m_signals[column].input() - (m_options.inputs - loopedLines);
            if (line < 0) continue;
            const bool high = ((m_digitalWrites[current].value >> line) & 1) != 0;
            interleaved[i * channels + column] = quantised(high ? lineHighVolts : 0.0);
        }
    }
    m_digitalWrites.erase(m_digitalWrites.begin(), m_digitalWrites.begin() + static_cast<std::ptrdiff_t>(current));
}

double Simulator::quantised(double volts) const {
    const double step = std::nearbyint((volts - m_stream.lowerVolts) / m_voltsPerStep);
    return m_stream.lowerVolts + std::clamp(step, 0.0, quantiserSteps - 1) * m_voltsPerStep;
}

void Simulator::writeDigital(std::uint8_t value) {
    // The time is taken under the lock, so a scan that has been generated can never learn of an earlier write.
    const std::lock_guard lock(m_digitalMutex);
    m_digitalWrites.push_back({m_pacing.now(), value});
}

} // namespace tavex2
