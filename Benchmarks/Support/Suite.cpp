#include "Support/Suite.hpp"

#include <cstdlib>
#include <iostream>
#include <utility>

namespace KorvaniBenchmarks {

void measure(const Row& row, const std::string& contestant,
             std::function<void(benchmark::State&)> run) {
  const std::string name =
      row.table + '/' + row.data + '/' + std::to_string(row.size) + '/' + contestant;
  benchmark::RegisterBenchmark(name.c_str(), std::move(run))->UseRealTime();
}

void disagree(const Row& row, const std::string& contestant, const std::string& how) {
  std::cerr << row.table << ", " << row.data << ", " << row.size << ": " << contestant
            << " and the engine disagree: " << how << '\n';
  std::exit(EXIT_FAILURE);
}

void keepOnly(std::shared_ptr<void> data) {
  static std::shared_ptr<void> kept;
  kept = std::move(data);
}

}  // namespace KorvaniBenchmarks
