#pragma once

#include "platform/Board.h"

#include <memory>
#include <vector>

namespace tavex2 {

/// The boards of this machine by their device number: the first has number 1.
class BoardList {
  public:
    /// Device numbers go from 1 to this.
    static constexpr int mostBoards = 10;

    void add(std::unique_ptr<Board> board) { m_boards.push_back(std::move(board)); }
    int count() const { return static_cast<int>(m_boards.size()); }

    /// The board with this number; null when there is none.
    Board* find(int number) const {
        return number >= 1 && number <= count() ? m_boards[static_cast<std::size_t>(number) - 1].get() : nullptr;
    }

  private:
    std::vector<std::unique_ptr<Board>> m_boards;
};

} // namespace tavex2
