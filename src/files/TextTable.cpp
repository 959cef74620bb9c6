#include "files/TextTable.h"

#include "base/DecimalText.h"

#include <algorithm>
#include <array>
#include <future>
#include <span>
#include <string>
#include <thread>
#include <vector>

namespace tavex2 {

namespace {

constexpr std::int64_t rowsOfABlock = 8192;

/// Rows that one thread makes.
struct Block {
    std::int64_t first = 0;
    std::int64_t last = 0; ///< behind the last row
    float time = 0;        ///< of the first row, s
    std::string text;
};

char* put(char* to, std::string_view text) {
    return std::copy(text.begin(), text.end(), to);
}

/// The samples of a block of one channel as doubles: one look at the element type a block instead of one a sample.
void takeColumn(const TrialArray& trial, int channel, const Block& block, std::vector<double>& column) {
    column.resize(static_cast<std::size_t>(block.last - block.first));
    trial.visitChannel(channel, [&](auto samples) {
        std::copy(samples.begin() + block.first, samples.begin() + block.last, column.begin());
    });
}

void fill(Block& block, const TrialArray& trial, float step, const TableLayout& layout) {
    const int channels = trial.channels();
    std::vector<std::vector<double>> columns(static_cast<std::size_t>(channels));
    for (int channel = 0; channel < channels; ++channel)
        takeColumn(trial, channel, block, columns[static_cast<std::size_t>(channel)]);

    // Room for the longest row that there can be, once; the text keeps what is used.
    const std::size_t longestRow = (static_cast<std::size_t>(channels) + 1) * (decimalTextRoom + layout.width + 4) + 4;
    std::vector<char> row(longestRow);
    block.text.clear();
    block.text.reserve(static_cast<std::size_t>(block.last - block.first) * (static_cast<std::size_t>(channels) + 1) *
                       12);
    float time = block.time;
    for (std::size_t i = 0; i < static_cast<std::size_t>(block.last - block.first); ++i) {
        char* to = writeDecimalAligned(row.data(), static_cast<double>(time), layout.timeDecimals, layout.width);
        to = put(to, layout.afterTime);
        for (std::size_t channel = 0; channel < columns.size(); ++channel) {
            to = writeDecimalAligned(to, columns[channel][i], layout.valueDecimals, layout.width);
            if (channel + 1 < columns.size() || layout.separatorAtRowEnd) to = put(to, layout.afterValue);
        }
        to = put(to, "\r\n");
        block.text.append(row.data(), to);
        time += step;
    }
}

} // namespace

Result<void> writeRows(AtomicFile& file, const TrialArray& trial, double rateHz, const TableLayout& layout,
                       const AfterChannel& progress) {
    const auto step = static_cast<float>(1.0 / rateHz);
    const std::int64_t rows = trial.samples();
    std::vector<Block> blocks(std::max(1U, std::thread::hardware_concurrency()));
    float time = 0;
    for (std::int64_t next = 0; next < rows;) {
        // The times of a block's first row follow from all before it, so they are summed up here, in order.
        std::size_t used = 0;
        for (; used < blocks.size() && next < rows; ++used) {
            blocks[used].first = next;
            blocks[used].last = next = std::min(next + rowsOfABlock, rows);
            blocks[used].time = time;
            for (std::int64_t row = blocks[used].first; row < next; ++row)
                time += step;
        }
        std::vector<std::future<void>> others;
        for (std::size_t i = 1; i < used; ++i)
            others.push_back(std::async(std::launch::async, [&, i] { fill(blocks[i], trial, step, layout); }));
        fill(blocks.front(), trial, step, layout);
        for (std::future<void>& other : others)
            other.get();
        for (std::size_t i = 0; i < used; ++i)
            if (auto written = file.write(std::as_bytes(std::span(blocks[i].text))); !written) return written;
        constexpr int thousand = 1000;
        if (progress && !progress(static_cast<int>(next * thousand / rows), thousand))
            return Error{ErrorKind::Cancelled, "The export was cancelled; no file was written."};
    }
    return {};
}

} // namespace tavex2
