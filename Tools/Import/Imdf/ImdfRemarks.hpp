#pragma once

/// Internal. What could not be used of an archive: counted, with the first examples.

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace KorvaniTools {

class ImdfRemarks {
 public:
  /// Notes that `what` ("unit.geojson: no category, taken as rooms") holds for `example`, usually
  /// a feature's id in quotation marks.
  void note(const std::string& what, const std::string& example);

  /// One sentence for each thing noted, in the order in which they were noted first.
  std::vector<std::string> sentences() const;

 private:
  struct Entry {
    std::string what;
    std::size_t count = 0;
    std::vector<std::string> examples;
  };

  std::vector<Entry> entries_;
  std::map<std::string, std::size_t> indexes_;
};

}  // namespace KorvaniTools
