#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace KorvaniTools {

/// Collects what could not be used of a map or had to be guessed, and sums it up: one sentence for
/// all that is alike, which names the first features and counts the rest.
///
///     remarks.add({"way has no level", "ways have no level"}, "way/12");
///     remarks.note("unit.geojson: no category, taken as rooms", "\"u1\"");
///     remarks.addSentence("node/5 leads to no other level");
///     remarks.addSentence("node/7 leads to no other level");
///     remarks.sentences();  // {"1 way has no level: way/12",
///                           //  "unit.geojson: no category, taken as rooms: \"u1\"",
///                           //  "node/5 leads to no other level; so with node/7"}
///
/// Sentences are in the order in which their kinds came first. A value: copy and move it. Cost:
/// logarithmic in the number of features for each that is added.
class Remarks {
 public:
  /// How many features a sentence names unless it is told otherwise.
  static constexpr std::size_t kNamed = 5;
  static constexpr std::size_t kAll = static_cast<std::size_t>(-1);

  /// A kind of remark, as it follows the number 1 and other numbers.
  struct Kind {
    const char* one;
    const char* many;
  };

  /// Adds a feature, or does nothing when it has been added to this kind before. So do the others.
  void add(const Kind& kind, const std::string& source);

  /// Notes that `what` holds for `example`.
  void note(const std::string& what, const std::string& example);

  /// Adds a sentence that begins with the feature's name, which has no blanks. Sentences that go on
  /// alike become one; what ends them in brackets is about the feature alone.
  void addSentence(const std::string& sentence);

  /// @param named how many features each of them names, at least 1
  std::vector<std::string> sentences(std::size_t named = kNamed) const;

 private:
  enum class Form { counted, noted, told };
  struct Entry {
    Form form = Form::counted;
    std::string one;   ///< what is said of a single feature; tells entries apart
    std::string many;  ///< of several; only for those that are counted
    std::vector<std::string> sources;
    std::set<std::string> known;
  };
  void add(Form form, const std::string& one, const std::string& many, const std::string& source);
  static std::string sentenceOf(const Entry& entry, std::size_t named);

  std::vector<Entry> entries_;
};

}  // namespace KorvaniTools
