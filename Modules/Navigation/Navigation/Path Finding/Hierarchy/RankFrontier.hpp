#pragma once

// Internal.

/// The places that a search upwards has still to expand, lowest first: a set of small numbers.
///
/// A bit for each number, and above each word of 64 bits a bit that says whether it has any. To add
/// a number or to take the lowest one out seldom touches more than the word that it is in; a heap
/// would compare and move a dozen entries.
///
/// Once numbers are taken out, none below them may be added before the set is empty and `rewind`
/// is called.

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace KorvaniNavigation {

class RankFrontier {
 public:
  /// For numbers below `count`.
  explicit RankFrontier(std::uint32_t count) {
    std::size_t words = count;
    do {
      words = std::max<std::size_t>((words + 63) / 64, 1);
      levels_.emplace_back(words, 0);
    } while (words > 1);
  }

  bool empty() const { return size_ == 0; }

  /// For numbers lower than those taken out; the set must be empty.
  void rewind() {
    for (auto& level : levels_) {
      level[word_] = 0;
      word_ /= 64;
    }
  }

  /// A number that is in the set already is added no second time.
  void add(std::uint32_t number) {
    std::uint64_t& word = levels_.front()[number / 64];
    const std::uint64_t bit = std::uint64_t{1} << (number % 64);
    if ((word & bit) != 0) return;
    ++size_;
    const bool wasEmpty = word == 0;
    word |= bit;
    if (wasEmpty) mark(number / 64);
  }

  /// Takes the lowest number out; there must be one.
  std::uint32_t takeLowest() {
    if (levels_.front()[word_] == 0) findWord();
    std::uint64_t& word = levels_.front()[word_];
    const auto bit = static_cast<std::uint32_t>(std::countr_zero(word));
    word &= word - 1;
    --size_;
    return word_ * 64 + bit;
  }

 private:
  void mark(std::uint32_t index) {
    for (std::size_t level = 1; level < levels_.size(); ++level, index /= 64) {
      levels_[level][index / 64] |= std::uint64_t{1} << (index % 64);
    }
  }

  // The bits above the words that were emptied are taken back here.
  void findWord() {
    std::size_t level = 0;
    while (levels_[level][word_] == 0) {
      const std::uint64_t bit = std::uint64_t{1} << (word_ % 64);
      word_ /= 64;
      levels_[++level][word_] &= ~bit;
    }
    for (; level > 0; --level) {
      const std::uint64_t word = levels_[level][word_];
      word_ = word_ * 64 + static_cast<std::uint32_t>(std::countr_zero(word));
    }
  }

  std::vector<std::vector<std::uint64_t>> levels_;
  std::uint32_t word_ = 0;  // none of the lower words has a number
  std::size_t size_ = 0;
};

}  // namespace KorvaniNavigation
