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
  explicit RankFrontier(std::uint32_t count) : words_(wordsFor(count)) {
    for (std::size_t words = words_.size(); words > 1; words = marks_.back().size()) {
      marks_.emplace_back(wordsFor(words));
    }
  }

  bool empty() const { return size_ == 0; }

  /// For numbers lower than those taken out; the set must be empty.
  void rewind() {
    for (auto& level : marks_) {
      word_ /= 64;
      level[word_] = 0;
    }
    word_ = 0;
  }

  /// A number that is in the set already is added no second time.
  void add(std::uint32_t number) {
    std::uint64_t& word = words_[number / 64];
    const std::uint64_t bit = std::uint64_t{1} << (number % 64);
    if ((word & bit) != 0) return;
    ++size_;
    if (word == 0) mark(number / 64);
    word |= bit;
  }

  /// Takes the lowest number out; there must be one.
  std::uint32_t takeLowest() {
    if (words_[word_] == 0) findWord();
    std::uint64_t& word = words_[word_];
    const auto bit = static_cast<std::uint32_t>(std::countr_zero(word));
    word &= word - 1;
    --size_;
    return word_ * 64 + bit;
  }

 private:
  static std::size_t wordsFor(std::size_t bits) {
    return std::max<std::size_t>((bits + 63) / 64, 1);
  }

  void mark(std::uint32_t index) {
    for (auto& level : marks_) {
      level[index / 64] |= std::uint64_t{1} << (index % 64);
      index /= 64;
    }
  }

  // The marks of the words that were emptied are taken back here, and in rewind().
  void findWord() {
    std::size_t level = 0;
    do {
      marks_[level][word_ / 64] &= ~(std::uint64_t{1} << (word_ % 64));
      word_ /= 64;
    } while (marks_[level++][word_] == 0);
    for (; level > 0; --level) {
      const std::uint64_t word = marks_[level - 1][word_];
      word_ = word_ * 64 + static_cast<std::uint32_t>(std::countr_zero(word));
    }
  }

  std::vector<std::uint64_t> words_;
  std::vector<std::vector<std::uint64_t>> marks_;  // of words that have a number, of words of those
  std::uint32_t word_ = 0;                         // none of the lower words has a number
  std::size_t size_ = 0;
};

}  // namespace KorvaniNavigation
