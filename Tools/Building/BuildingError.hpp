#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>

namespace KorvaniTools {

/// What is wrong with a building file, and where.
///
/// `what()` says all of it on one line that is safe for a terminal:
///
///     hall.building.geojson: features[12]: level of a node: found "two", expected an integer
///     from -1000 to 1000
class BuildingError : public std::runtime_error {
 public:
  /// @param file the file's name as it was given
  /// @param feature index of the faulty feature, from 0; absent when the fault is not in one
  /// @param subject what the fault is about, e.g. "level of a node"; may be empty
  BuildingError(std::string file, std::optional<std::size_t> feature, std::string subject,
                std::string found, std::string expected);

  const std::string& file() const { return file_; }
  std::optional<std::size_t> feature() const { return feature_; }
  const std::string& subject() const { return subject_; }
  const std::string& found() const { return found_; }
  const std::string& expected() const { return expected_; }

 private:
  std::string file_;
  std::optional<std::size_t> feature_;
  std::string subject_;
  std::string found_;
  std::string expected_;
};

}  // namespace KorvaniTools
