#pragma once

#include <vector>

#include "Building/Building.hpp"
#include "Json/EngineJson.hpp"
#include "Lint/LintFinding.hpp"

namespace KorvaniTools {

/// Findings for programs, and to drop on a map. Both carry the building's name, attribution and
/// licence, and count the findings in `summary`: `{"errors", "warnings", "notes"}`.

/// `{"name", "attribution", "licence", "summary", "findings": [FINDING, ...]}`. A finding is
/// `{"rule", "severity", "level", "levels", "message", "at": [{"lat", "lon"}, ...], "nodes",
/// "edges": [{"from", "to"}, ...], "features", "names"}`; `level` is the lowest of `levels`, null
/// when there are none.
OrderedJson lintJson(const std::vector<LintFinding>& findings, const Building& building);

/// The same as a FeatureCollection. A feature's properties are the members of a finding, with
/// `kind` "finding" in front; its geometry is what there is to draw: lines, a polygon or points.
OrderedJson lintGeoJson(const std::vector<LintFinding>& findings, const Building& building);

}  // namespace KorvaniTools
