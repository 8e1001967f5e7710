#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace KorvaniBenchmarks {

/// Shows what was measured as Markdown tables on standard output, one for each `Row::table`, when
/// all is done. While it runs, each time goes to standard error.
///
/// A table has a column for each contestant, then how many times faster than the best of the others
/// the engine is, how many times more it takes than in the row above (of the same data), and
/// the engine's further counters.
class Tables : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;
  void Finalize() override;

  /// Whether a benchmark gave an error instead of a time.
  bool failed() const { return failed_; }

 private:
  using Counters = std::map<std::string, double>;

  struct MeasuredRow {
    std::string data;
    std::size_t size = 0;
    std::map<std::string, double> times;  ///< by contestant, nanoseconds
    Counters further;                     ///< the engine's
  };

  struct Table {
    std::string name;
    std::vector<std::string> contestants;
    std::vector<std::string> counters;
    std::vector<MeasuredRow> rows;
  };

  void add(const std::vector<std::string>& name, const Run& run);
  Table& tableCalled(const std::string& name);

  static MeasuredRow& rowOf(Table& table, const std::string& data, std::size_t size);
  static void print(const Table& table);
  static void printRow(const Table& table, const MeasuredRow& row, const MeasuredRow* above);

  std::vector<Table> tables_;
  bool failed_ = false;
};

}  // namespace KorvaniBenchmarks
