#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace KorvaniBenchmarks {

/// How much is measured.
struct Extent {
  bool quick = false;  ///< a few minutes in all, without the biggest buildings
};

/// The one whose time is compared with that of all others in a row of a table.
inline constexpr const char* kEngine = "engine";

/// A row of a table, which is what has the same table, data and size.
struct Row {
  std::string table;  ///< what is measured
  std::string data;   ///< on what
  std::size_t size;   ///< how big that is; rows of a table grow with it
};

/// Has `run` be measured as what `contestant` takes in that row.
///
/// `run` sets the counter `kTime` of its state, as `timeEach` and `timeTogether` do. Further
/// counters become columns. Rows are measured in the order in which they are added, one contestant
/// right after the other.
void measure(const Row& row, const std::string& contestant,
             std::function<void(benchmark::State&)> run);

/// Ends the program because two contestants disagree: times of different answers do not compare.
[[noreturn]] void disagree(const Row& row, const std::string& contestant, const std::string& how);

/// Keeps this until the next call.
void keepOnly(std::shared_ptr<void> data);

/// What the contestants of one row share; made when the first of them runs. Of all of them only the
/// last one that was asked for is kept, since big buildings take a lot of memory.
template <class Data>
class Shared {
 public:
  using Make = std::function<std::shared_ptr<Data>()>;

  explicit Shared(Make make) : make_(std::move(make)) {}

  Data& get() {
    std::shared_ptr<Data> data = kept_.lock();
    if (!data) {
      keepOnly(nullptr);
      data = make_();
      kept_ = data;
    }
    keepOnly(data);
    return *data;
  }

 private:
  Make make_;
  std::weak_ptr<Data> kept_;
};

}  // namespace KorvaniBenchmarks
