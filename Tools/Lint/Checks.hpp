#pragma once

/// Internal. The rules: each looks for one kind of fault. Findings come in the order of the file,
/// without their rule's name. What a rule finds is told in the list of rules (Lint.cpp).

#include <vector>

#include "Lint/LintFinding.hpp"

namespace KorvaniTools {

class LintSubject;

using LintFindings = std::vector<LintFinding>;

// EdgeChecks.cpp, WallChecks.cpp
LintFindings findEdgesThroughWalls(LintSubject& subject);
LintFindings findShortEdges(LintSubject& subject);
LintFindings findLongEdges(LintSubject& subject);
LintFindings findEdgesToThemselves(LintSubject& subject);
LintFindings findDuplicateEdges(LintSubject& subject);
LintFindings findUntypedLevelChanges(LintSubject& subject);
LintFindings findEdgesOverSeveralLevels(LintSubject& subject);
LintFindings findObstaclesWithoutExtent(LintSubject& subject);
LintFindings findObstaclesOutsideRegions(LintSubject& subject);

// RegionChecks.cpp, NodeChecks.cpp
LintFindings findNodesOutsideRegions(LintSubject& subject);
LintFindings findNodesInOtherRegions(LintSubject& subject);
LintFindings findOverlappingRegions(LintSubject& subject);
LintFindings findDuplicateNodes(LintSubject& subject);

// ReachChecks.cpp
LintFindings findIslands(LintSubject& subject);
LintFindings findOneWayTraps(LintSubject& subject);
LintFindings findPartsWithoutWayIn(LintSubject& subject);
LintFindings findUnconnectedLevels(LintSubject& subject);

// PlaceChecks.cpp
LintFindings findPlacesOnEmptyLevels(LintSubject& subject);
LintFindings findPlacesOutOfSight(LintSubject& subject);
LintFindings findUnreachablePlaces(LintSubject& subject);
LintFindings findPlacesWithoutWayOut(LintSubject& subject);
LintFindings findPlacesWithBarriers(LintSubject& subject);

}  // namespace KorvaniTools
