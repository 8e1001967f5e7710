#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// The commands of korvani-nav. Each does its work and gives the process's exit status; what is
/// wrong with its input it throws.

namespace KorvaniTools {

inline constexpr int kExitOk = 0;
inline constexpr int kExitNoRoute = 1;
inline constexpr int kExitFindings = 1;
inline constexpr int kExitBadInput = 2;

/// Shows what is in a building file.
int runInfo(const std::string& file);

struct ConfigOptions {
  std::string format = "text";  ///< text or json
};

/// Lists everything that can be configured.
int runConfig(const ConfigOptions& options);

struct RouteOptions {
  std::string file;
  std::string from;
  std::vector<std::string> to;
  bool barrierFree = false;
  bool optimise = false;
  std::vector<std::string> settings;  ///< KEY=VALUE
  std::string format = "text";        ///< text, json or geojson
  std::string output;                 ///< path, or empty for standard output
};

/// Shows the route between two places.
int runRoute(const RouteOptions& options);

struct SimulateOptions {
  std::string file;
  std::string from;
  std::string to;
  double noise = 0;    ///< metres
  double speed = 1.5;  ///< metres per second
  std::uint64_t seed = 1;
  double levelGlitches = 0;  ///< a probability
  bool detour = false;
  bool barrierFree = false;
  std::vector<std::string> settings;  ///< KEY=VALUE
  std::string output;                 ///< path, or empty for standard output
};

/// Writes a trace of somebody who walks from one place to another.
int runSimulate(const SimulateOptions& options);

struct ReplayOptions {
  std::string building;
  std::string trace;
  std::string output;  ///< path, or empty for standard output
};

/// Does with the engine what a trace says, and writes what the engine delivers: to standard
/// output line by line, to a file at the end.
int runReplay(const ReplayOptions& options);

struct LintCommandOptions {
  std::string file;
  std::vector<std::string> rules;  ///< the only ones to try; empty: all
  std::vector<std::string> skip;   ///< those not to try
  bool strict = false;             ///< warnings count as errors
  bool listRules = false;          ///< list the rules, and look at no file
  std::string format = "text";     ///< text, json or geojson
  std::string output;              ///< path, or empty for standard output
};

/// Shows what has to be mended in a building.
int runLint(const LintCommandOptions& options);

struct DrawOptions {
  std::string file;
  std::vector<std::string> route;  ///< start and destinations; empty: none
  std::string trace;               ///< path of a trace; empty: none
  bool barrierFree = false;
  bool optimise = false;
  std::vector<std::string> settings;  ///< KEY=VALUE
  std::string level;                  ///< number or name of the only one; empty: all
  bool graph = false;
  std::string theme;   ///< light or dark; empty: light
  std::string output;  ///< path that ends in .svg or .html
};

/// Draws a building, with a route or a recorded walk.
int runDraw(const DrawOptions& options);

struct ImportOptions {
  std::string format;  ///< osm or imdf
  std::string file;
  std::string output;       ///< path, or "-" for standard output
  std::string box;          ///< W,S,E,N; empty: everything (osm only)
  std::string name;         ///< empty: as the source says
  std::string connections;  ///< path of a connection table, or empty for the standard one
  bool assumeDoors = false;
  bool allRemarks = false;
  bool quiet = false;
  std::string language;     ///< of names; empty: the standard one (imdf only)
  std::string attribution;  ///< imdf only
  std::string licence;      ///< imdf only
};

/// Makes a building file of a map.
int runImport(const ImportOptions& options);

}  // namespace KorvaniTools
