#include "files/TextTable.h"

#include <algorithm>
#include <condition_variable>
#include <future>
#include <mutex>
#include <new>
#include <optional>
#include <span>
#include <string_view>
#include <system_error>
#include <thread>
#include <vector>

namespace tavex2 {

namespace {

/// Few enough that the text of a usual row count stays in a processor's own cache until it is written.
constexpr std::int64_t rowsOfABlock = 2048;

/// Rows that one thread makes.
struct Block {
    std::int64_t first = 0;
    std::int64_t last = 0; ///< behind the last row
    float time = 0;        ///< of the first row, s
};

char* put(char* to, std::string_view text) {
    return std::copy(text.begin(), text.end(), to);
}

/// Makes the text of blocks, one after another; each thread has one of its own.
class RowMaker {
  public:
    RowMaker(const TrialArray& trial, float step, const TableLayout& layout)
        : m_trial(trial), m_step(step), m_layout(layout),
          m_longestRow((static_cast<std::size_t>(trial.channels()) + 1) * (decimalTextRoom + 1) + 2) {}

    /// The rows of a block as text, which stands until the next call.
    std::span<const char> rowsOf(const Block& block) {
        return m_trial.elementType() == ElementType::Float32 ? rowsOf<float>(block) : rowsOf<double>(block);
    }

  private:
    template <class T>
    std::span<const char> rowsOf(const Block& block) {
        const auto channels = static_cast<std::size_t>(m_trial.channels());
        std::vector<std::span<const T>> samples(channels);
        for (std::size_t channel = 0; channel < channels; ++channel)
            samples[channel] = m_trial.samplesOf<T>(static_cast<int>(channel));

        std::vector<double> values(channels);
        std::size_t used = 0;
        float time = block.time;
        for (auto row = static_cast<std::size_t>(block.first); row < static_cast<std::size_t>(block.last); ++row) {
            if (m_text.size() - used < m_longestRow) m_text.resize(m_text.size() * 2 + m_longestRow);
            for (std::size_t channel = 0; channel < channels; ++channel)
                values[channel] = static_cast<double>(samples[channel][row]);
            char* to = writeDecimal(m_text.data() + used, static_cast<double>(time), m_layout.time);
            to = put(to, m_layout.afterTime);
            to = writeDecimals(to, values, m_layout.value, m_layout.afterValue);
            to = put(to, "\r\n");
            used = static_cast<std::size_t>(to - m_text.data());
            time += m_step;
        }
        return std::span(m_text).first(used);
    }

    const TrialArray& m_trial;
    float m_step;
    const TableLayout& m_layout;
    std::size_t m_longestRow;
    std::vector<char> m_text;
};

/// The rows of a table on their way to the file: any number of threads take blocks in order and write them in order.
/// The first error, or a cancellation, ends it for all.
class RowQueue {
  public:
    RowQueue(AtomicFile& file, const TrialArray& trial, float step, const TableLayout& layout)
        : m_file(file), m_trial(trial), m_step(step), m_layout(layout) {}

    /// Takes, makes and writes blocks until there are none. `afterBlock(rows)` is called between blocks on the calling
    /// thread with the rows taken so far.
    template <class AfterBlock>
    void work(AfterBlock afterBlock) {
        try {
            RowMaker maker(m_trial, m_step, m_layout);
            while (const std::optional<Block> block = take()) {
                write(*block, maker.rowsOf(*block));
                afterBlock(block->last);
            }
        } catch (const std::bad_alloc&) {
            // Told to all, because the others wait for this thread's block.
            end({ErrorKind::OutOfMemory, "There is not enough memory for the export. Close other programs."});
        }
    }

    void end(const Error& why) {
        const std::lock_guard lock(m_mutex);
        if (m_outcome) m_outcome = why;
        m_turn.notify_all();
    }

    const Result<void>& outcome() const { return m_outcome; }

  private:
    std::optional<Block> take() {
        const std::lock_guard lock(m_mutex);
        if (!m_outcome || m_next == m_trial.samples()) return {};
        const Block block{.first = m_next, .last = std::min(m_next + rowsOfABlock, m_trial.samples()), .time = m_time};
        // A row's time follows from all before it, so the times are summed up here, in order.
        for (; m_next < block.last; ++m_next)
            m_time += m_step;
        return block;
    }

    void write(const Block& block, std::span<const char> rows) {
        std::unique_lock lock(m_mutex);
        m_turn.wait(lock, [&] { return m_written == block.first || !m_outcome; });
        if (!m_outcome) return;
        lock.unlock(); // nobody else writes before m_written moves on
        Result<void> written = m_file.write(std::as_bytes(rows));
        lock.lock();
        if (!written) m_outcome = std::move(written);
        m_written = block.last;
        m_turn.notify_all();
    }

    AtomicFile& m_file;
    const TrialArray& m_trial;
    float m_step;
    const TableLayout& m_layout;

    std::mutex m_mutex; // guards what follows
    std::condition_variable m_turn;
    std::int64_t m_next = 0;    // the first row that nobody has taken
    float m_time = 0;           // its time
    std::int64_t m_written = 0; // rows in the file
    Result<void> m_outcome;
};

} // namespace

Result<void> writeRows(AtomicFile& file, const TrialArray& trial, double rateHz, const TableLayout& layout,
                       const FileProgress& progress) {
    RowQueue queue(file, trial, static_cast<float>(1.0 / rateHz), layout);
    std::vector<std::future<void>> others;
    try {
        for (unsigned i = 1; i < std::thread::hardware_concurrency(); ++i)
            others.push_back(std::async(std::launch::async, [&queue] { queue.work([](std::int64_t) {}); }));
    } catch (const std::system_error&) {
        // The system has no more threads; those that there are do the work.
    }
    const auto tell = [&](std::int64_t rows) {
        constexpr int thousand = 1000;
        if (progress && !progress(static_cast<int>(rows * thousand / trial.samples()), thousand))
            queue.end({ErrorKind::Cancelled, "The export was cancelled; no file was written."});
    };
    queue.work(tell);
    for (std::future<void>& other : others)
        other.get();
    // The others may have been so quick that nobody has been asked yet.
    if (queue.outcome()) tell(trial.samples());
    return queue.outcome();
}

} // namespace tavex2
