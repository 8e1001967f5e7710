#pragma once

#include <set>
#include <string>
#include <vector>

namespace KorvaniTools {

/// Collects what an importer could not use, and sums it up: one sentence a kind, which names
/// the first five features.
///
///     remarks.add({"way has no level", "ways have no level"}, "way/12");
///     remarks.sentences();  // {"1 way has no level: way/12"}
///
/// Sentences are in the order in which their kinds came first.
class Remarks {
 public:
  /// A kind of remark, as it follows the number 1 and other numbers.
  struct Kind {
    const char* one;
    const char* many;
  };

  /// Adds a feature, or does nothing when it has been added to this kind before.
  void add(const Kind& kind, const std::string& source);

  std::vector<std::string> sentences() const;

 private:
  struct Entry {
    Kind kind;
    std::vector<std::string> named;  ///< the first sources
    std::set<std::string> sources;
  };
  std::vector<Entry> entries_;
};

}  // namespace KorvaniTools
