#include <fstream>
#include <string>

#include "Building/BuildingGraph.hpp"
#include "Building/BuildingReader.hpp"
#include "Json/EngineJson.hpp"
#include "Trace/Replay.hpp"
#include "Trace/TraceReader.hpp"
#include "korvani-nav/Commands.hpp"
#include "korvani-nav/Output.hpp"

namespace KorvaniTools {

int runReplay(const ReplayOptions& options) {
  const Building building = readBuilding(options.building);
  std::ifstream file = openTrace(options.trace);
  TraceReader reader(file, options.trace);
  Replay replay(makeGraph(building));
  const bool toStandardOutput = options.output.empty() || options.output == "-";
  std::string collected;
  while (const auto line = reader.next()) {
    for (const OrderedJson& event : replay.carryOut(*line)) {
      const std::string text = jsonText(event) + '\n';
      if (toStandardOutput) {
        // At once, since a faulty line may end the replay.
        writeOutput(text, options.output);
      } else {
        collected += text;
      }
    }
  }
  if (!toStandardOutput) writeOutput(collected, options.output);
  return kExitOk;
}

}  // namespace KorvaniTools
