#include "Building/BuildingError.hpp"

#include <utility>

#include "Support/PlainText.hpp"

namespace KorvaniTools {
namespace {

std::string message(const std::string& file, std::optional<std::size_t> feature,
                    const std::string& subject, const std::string& found,
                    const std::string& expected) {
  std::string text = file + ": ";
  if (feature) text += "features[" + std::to_string(*feature) + "]: ";
  if (!subject.empty()) text += subject + ": ";
  return plainLine(text + "found " + found + ", expected " + expected);
}

}  // namespace

BuildingError::BuildingError(std::string file, std::optional<std::size_t> feature,
                             std::string subject, std::string found, std::string expected)
    : std::runtime_error(message(file, feature, subject, found, expected)),
      file_(std::move(file)),
      feature_(feature),
      subject_(std::move(subject)),
      found_(std::move(found)),
      expected_(std::move(expected)) {}

}  // namespace KorvaniTools
