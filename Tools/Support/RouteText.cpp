#include "Support/RouteText.hpp"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "Navigation/Directions/TurnByTurnDirectionCalculator.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Platform/Location.hpp"
#include "Support/ConnectionWords.hpp"
#include "Support/RouteStretches.hpp"
#include "Support/Text.hpp"

namespace KorvaniTools {
namespace {

using KorvaniNavigation::Directions;
using KorvaniNavigation::DirectionsType;
using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::Route;
using KorvaniNavigation::Step;

bool goesUp(const Step& change) { return change.end()->level() > change.start()->level(); }

/// Whether one comes out of a level change without having turned or walked: in a lift, or on
/// connections drawn as one point. Headings, and so the turn after it, mean nothing then.
bool isOnTheSpot(const Step& change) {
  const std::string type = foldedCase(change.neighborType());
  return type == "lift" || type == "elevator" ||
         KorvaniPlatform::greatCircleDistance(change.start()->coordinate(),
                                              change.end()->coordinate()) < 0.5;
}

/// What is passed on the way through a stretch: "over steps and through a door". The first
/// steps of the stairs that the stretch leads to do not count.
std::string passagesOf(const RouteStretch& stretch) {
  const std::string next =
      stretch.endsWithChange() ? stretch.ending->levelChangeTypeName().value_or("") : "";
  std::vector<std::string> passages;
  for (const Step& step : stretch) {
    if (step.levelChange() || step.neighborType() == next) continue;
    std::string words = passageWords(step.neighborType());
    const bool known = std::find(passages.begin(), passages.end(), words) != passages.end();
    if (!words.empty() && !known) passages.push_back(std::move(words));
  }
  std::string text;
  for (const std::string& words : passages) text += (text.empty() ? "" : " and ") + words;
  return text;
}

/// Tells a route, stretch by stretch.
class Narrator {
 public:
  Narrator(const Route& route, const LevelNames& levels, const std::string& destination)
      : stretches_(stretchesOf(route)), levels_(levels), destination_(destination) {}

  std::vector<Instruction> tell() {
    std::size_t index = 0;
    if (!stretches_.empty() && stretches_.front().change() != nullptr) index = tellChange(0, "");
    while (index < stretches_.size()) index = tellStretch(index);
    return std::move(told_);
  }

 private:
  /// Tells the walk of a stretch, whose level change has been told, and its ending; gives the
  /// index of the stretch to go on with.
  std::size_t tellStretch(std::size_t index) {
    const RouteStretch& stretch = stretches_[index];
    const bool straight = stretch.forward != nullptr && !stretch.isWithoutWalk();
    if (straight) tellStraight(stretch);
    const std::string lead = straight ? "" : leadOf(stretch);
    if (stretch.endsWithChange()) return tellChange(index + 1, lead);
    if (stretch.ending->type() == DirectionsType::destination) {
      tellDestination(stretch, lead);
    } else {
      tellTurn(index, lead);
    }
    return index + 1;
  }

  void tellStraight(const RouteStretch& stretch) {
    const std::string passages = passagesOf(stretch);
    add(leavingOf(stretch, " and ") + "go straight on for " + (announced_ ? "these " : "") +
            metres(stretch.walked()) + (passages.empty() ? "" : ", " + passages),
        startOf(stretch));
    announced_ = false;
  }

  /// What comes before the ending of a stretch that was not told: "in 8 m, over steps, ".
  std::string leadOf(const RouteStretch& stretch) {
    if (stretch.isWithoutWalk()) return "";
    const std::string passages = passagesOf(stretch);
    std::string lead = leavingOf(stretch, ", ") + (announced_ ? "after these " : "in ") +
                       metres(stretch.walked()) + (passages.empty() ? " " : ", " + passages + ", ");
    announced_ = false;
    return lead;
  }

  /// The reminder to leave what changed the level, with what joins it to the rest.
  static std::string leavingOf(const RouteStretch& stretch, const char* joint) {
    const Step* change = stretch.change();
    if (change == nullptr || !isOnTheSpot(*change)) return "";
    return leavingWords(change->neighborType()) + joint;
  }

  void tellTurn(std::size_t index, const std::string& lead) {
    const RouteStretch& stretch = stretches_[index];
    const Step* change = stretch.change();
    const bool onlyChange = change != nullptr && stretch.isWithoutWalk();
    const bool blind = onlyChange && isOnTheSpot(*change);
    std::string text =
        lead + (blind ? leavingWords(change->neighborType()) : turnWords(stretch.ending->type()));
    announced_ = (stretch.forward != nullptr || onlyChange) && index + 1 < stretches_.size() &&
                 !stretches_[index + 1].isWithoutWalk();
    if (announced_) text += ", then " + metres(stretches_[index + 1].walked());
    add(text, *stretch.ending->nextWaypoint());
  }

  void tellDestination(const RouteStretch& stretch, const std::string& lead) {
    if (stretch.stepCount == 0) return;
    const KRVNavPoint& place = *(stretch.end() - 1)->end();
    add(lead.empty() ? "you have reached " + destination_ : lead + "you reach " + destination_,
        place);
  }

  /// Tells the level change that the stretch at `index` begins with, together with those that
  /// follow it by the same connection, and gives the index of the stretch that walks on.
  std::size_t tellChange(std::size_t index, const std::string& lead) {
    announced_ = false;
    if (index >= stretches_.size() || stretches_[index].change() == nullptr) {
      tellChangeWithoutStep(*stretches_[index - 1].ending, lead);
      return index;
    }
    const Step& first = *stretches_[index].change();
    double distance = first.distance();
    while (continuesChange(index)) {
      ++index;
      distance += stretches_[index].change()->distance();
    }
    const Step& last = *stretches_[index].change();
    add(lead +
            levelChangeWords(first.neighborType(), goesUp(first),
                             levels_.words(last.end()->level())) +
            " (" + metres(distance) + ")",
        *first.start());
    return index;
  }

  /// For instructions that do not go with the steps: what the instruction itself says.
  void tellChangeWithoutStep(const Directions& change, const std::string& lead) {
    const KRVNavPoint& arrival = *change.nextWaypoint();
    add(lead + levelChangeWords(change.levelChangeTypeName().value_or(""),
                                change.type() == DirectionsType::levelUp,
                                levels_.words(arrival.level())),
        arrival);
  }

  /// Whether the change at the start of a stretch goes straight on with that of the next.
  bool continuesChange(std::size_t index) const {
    const RouteStretch& stretch = stretches_[index];
    if (!stretch.endsWithChange() || !stretch.isWithoutWalk()) return false;
    if (index + 1 == stretches_.size()) return false;
    const Step* next = stretches_[index + 1].change();
    return next != nullptr && goesUp(*next) == goesUp(*stretch.change()) &&
           next->neighborType() == stretch.change()->neighborType();
  }

  /// Where the walk of a stretch begins.
  static const KRVNavPoint& startOf(const RouteStretch& stretch) {
    const Step* change = stretch.change();
    if (change != nullptr) return *change->end();
    return stretch.stepCount > 0 ? *stretch.firstStep->start() : *stretch.forward->nextWaypoint();
  }

  void add(std::string text, const KRVNavPoint& point) {
    told_.push_back({std::move(text), point.coordinate(), point.level()});
  }

  std::vector<RouteStretch> stretches_;
  const LevelNames& levels_;
  const std::string& destination_;
  std::vector<Instruction> told_;
  bool announced_ = false;  ///< the walk of the stretch to come was told by the turn into it
};

/// Whether a step leads to where it starts: what is left of one that has just been walked.
bool isWalked(const Step& step) {
  return !step.levelChange() && KorvaniPlatform::greatCircleDistance(
                                    step.start()->coordinate(), step.end()->coordinate()) < 0.01;
}

/// The route without a walked step in front. Such a step has no direction, so the turn from it
/// into the next one means nothing, and neither do instructions that are computed with it.
Route withoutWalkedStep(const Route& route) {
  const std::vector<Step>& steps = route.steps();
  if (steps.size() < 2 || route.directions().empty() || !isWalked(steps.front())) return route;
  Route ahead(std::vector<Step>(steps.begin() + 1, steps.end()));
  ahead.setDirections(
      KorvaniNavigation::TurnByTurnDirectionCalculator().directionsForRoute(ahead.steps(), false));
  return ahead;
}

}  // namespace

std::string turnWords(DirectionsType type) {
  switch (type) {
    case DirectionsType::left:
      return "turn left";
    case DirectionsType::right:
      return "turn right";
    case DirectionsType::turnaround:
      return "turn back";
    case DirectionsType::bearLeft:
      return "bear left";
    case DirectionsType::bearRight:
      return "bear right";
    default:
      return "go on";
  }
}

std::vector<Instruction> routeInstructions(const Route& route, const LevelNames& levels,
                                           const std::string& destination) {
  const Route ahead = withoutWalkedStep(route);
  return Narrator(ahead, levels, destination).tell();
}

std::string setOffDirection(const Route& route) {
  if (route.steps().empty()) return "";
  const Step& first = route.steps().front();
  if (first.levelChange() && isOnTheSpot(first)) return "";
  return compassPoint(first.heading());
}

}  // namespace KorvaniTools
