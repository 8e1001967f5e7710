#include "Building/JsonText.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "Building/BuildingError.hpp"

namespace KorvaniTools {
namespace {

/// Follows a failing parse up to the fault and counts the features before it.
class FaultLocator : public nlohmann::json_sax<Json> {
 public:
  bool null() override { return valueEnded(); }
  bool boolean(bool) override { return valueEnded(); }
  bool number_integer(number_integer_t) override { return valueEnded(); }
  bool number_unsigned(number_unsigned_t) override { return valueEnded(); }
  bool number_float(number_float_t, const string_t&) override { return valueEnded(); }
  bool string(string_t&) override { return valueEnded(); }
  bool binary(binary_t&) override { return valueEnded(); }

  bool start_object(std::size_t) override { return opened(); }
  bool start_array(std::size_t) override {
    inFeatures_ = inFeatures_ || (depth_ == 1 && featuresKey_);
    return opened();
  }
  bool end_object() override { return closed(); }
  bool end_array() override { return closed(); }
  bool key(string_t& name) override {
    if (depth_ == 1) featuresKey_ = name == "features";
    return true;
  }

  bool parse_error(std::size_t, const std::string&, const Json::exception& fault) override {
    tooLarge_ = fault.id == kNumberOverflow;
    text_ = fault.what();
    // The parser's messages open with an identification in brackets.
    if (const auto end = text_.find("] "); end != std::string::npos) text_.erase(0, end + 2);
    return false;
  }

  std::optional<std::size_t> feature() const {
    return inFeatures_ ? std::optional<std::size_t>(ended_) : std::nullopt;
  }
  bool tooLarge() const { return tooLarge_; }
  const std::string& text() const { return text_; }

 private:
  static constexpr int kNumberOverflow = 406;

  bool opened() {
    ++depth_;
    return true;
  }
  bool closed() {
    --depth_;
    if (depth_ == 1) inFeatures_ = false;
    return valueEnded();
  }
  bool valueEnded() {
    if (inFeatures_ && depth_ == 2) ++ended_;
    return true;
  }

  int depth_ = 0;
  bool featuresKey_ = false;
  bool inFeatures_ = false;
  bool tooLarge_ = false;
  std::size_t ended_ = 0;
  std::string text_;
};

[[noreturn]] void reportFault(std::string_view text, const std::string& file) {
  FaultLocator locator;
  Json::sax_parse(text, &locator);
  throw BuildingError(file, locator.feature(), "", locator.text(),
                      locator.tooLarge() ? "finite numbers" : "JSON");
}

/// Whether `value` has arrays or objects in more than `levels` levels. Text may nest them as deep
/// as it is long, too deep to write such a value out.
bool isNestedDeeperThan(int levels, const Json& value) {
  if (!value.is_structured()) return false;
  if (levels == 0) return true;
  return std::any_of(value.begin(), value.end(), [levels](const Json& element) {
    return isNestedDeeperThan(levels - 1, element);
  });
}

}  // namespace

Json parseJsonText(std::string_view text, const std::string& file) {
  Json value = Json::parse(text, nullptr, /*allow_exceptions=*/false);
  if (value.is_discarded()) reportFault(text, file);
  return value;
}

std::string inQuotes(std::string_view text) {
  constexpr std::size_t kLongest = 60;
  if (text.size() <= kLongest) return '"' + std::string(text) + '"';
  std::size_t end = kLongest;
  // Never cut inside a UTF-8 sequence.
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) --end;
  return '"' + std::string(text.substr(0, end)) + "...\"";
}

std::string brief(const Json& value) {
  if (value.is_null()) return "nothing";
  if (value.is_string()) return inQuotes(value.get_ref<const std::string&>());
  if (value.is_object()) return "an object";
  if (value.is_array() && value.size() > 4) {
    return "an array of " + std::to_string(value.size()) + " values";
  }
  if (isNestedDeeperThan(4, value)) return "an array";
  const std::string text = value.dump();
  return text.size() <= 80 ? text : "an array";
}

std::optional<std::int64_t> wholeNumber(const Json& value) {
  if (value.is_number_unsigned()) {
    const auto number = value.get<std::uint64_t>();
    if (number > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) return {};
    return static_cast<std::int64_t>(number);
  }
  if (value.is_number_integer()) return value.get<std::int64_t>();
  if (!value.is_number_float()) return {};
  const double number = value.get<double>();
  if (number != std::trunc(number) || number < -0x1p63 || number >= 0x1p63) return {};
  return static_cast<std::int64_t>(number);
}

}  // namespace KorvaniTools
