// Reading a building file, and starting the command-line tool: each in a process of its own.

#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "Buildings/BuildingFile.hpp"
#include "Cases/Cases.hpp"
#include "Support/Process.hpp"
#include "Support/Timing.hpp"

namespace KorvaniBenchmarks {

namespace {

/// A file with a building, which is removed with this.
class BuildingFile {
 public:
  explicit BuildingFile(std::size_t features)
      : path_(std::filesystem::temp_directory_path() /
              ("korvani-" + std::to_string(getpid()) + ".building.geojson")) {
    std::ofstream(path_) << buildingFileText(makeOfficesOfFeatures(features));
  }
  ~BuildingFile() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
  }
  BuildingFile(const BuildingFile&) = delete;
  BuildingFile& operator=(const BuildingFile&) = delete;

  std::string path() const { return path_.string(); }

 private:
  std::filesystem::path path_;
};

[[noreturn]] void giveUp(const std::string& program) {
  std::cerr << program << " failed\n";
  std::exit(EXIT_FAILURE);
}

void load(benchmark::State& state, const std::string& file) {
  std::vector<double> times;
  std::vector<double> readTimes;
  std::vector<double> megabytes;
  for ([[maybe_unused]] auto _ : state) {
    const auto output = outputOf({KORVANI_BENCHMARK_LOAD, file});
    if (!output) giveUp(KORVANI_BENCHMARK_LOAD);
    std::istringstream numbers(*output);
    double read = 0;
    double whole = 0;
    double kilobytes = 0;
    numbers >> read >> whole >> kilobytes;
    readTimes.push_back(read / 1e9);
    times.push_back(whole);
    megabytes.push_back(kilobytes * 1024 / 1e6);
  }
  state.counters[kTime] = median(std::move(times));
  state.counters["seconds of it to read"] = median(std::move(readTimes));
  state.counters["MB at most"] = median(std::move(megabytes));
}

#ifdef KORVANI_NAV
void start(benchmark::State& state) {
  timeEach(state, 20, [](std::size_t) {
    if (!outputOf({KORVANI_NAV, "--version"})) giveUp(KORVANI_NAV);
  });
}
#endif

}  // namespace

void addLoading(const Extent& extent) {
  for (const std::size_t features : {10000U, 100000U, 1000000U}) {
    if (extent.quick && features > 100000) continue;
    const auto file = std::make_shared<Shared<BuildingFile>>(
        [features] { return std::make_shared<BuildingFile>(features); });
    measure({"Loading", "file to first route, features", features}, kEngine,
            [file](benchmark::State& state) { load(state, file->get().path()); });
  }
#ifdef KORVANI_NAV
  measure({"Start-up", "korvani-nav --version", 1}, kEngine, start);
#endif
}

}  // namespace KorvaniBenchmarks
