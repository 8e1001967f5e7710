// The nodes in sight of a position against the plain way: sort all nodes by distance and compare
// each with all walls. What a world holds follows from its seed, which a failing case prints.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <ostream>
#include <random>
#include <vector>

#include "Navigation/Localisation/VisibleNodes.hpp"
#include "Navigation/Localisation/VisibleNodesByBoxes.hpp"
#include "PlainSights.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::CLLocationCoordinate2D;
using KorvaniNavigation::MKMapPoint;
using KorvaniNavigation::NodeTree;
using KorvaniNavigation::visibleNodes;
using KorvaniNavigation::visibleNodesByBoxes;
using KorvaniNavigation::WallEdge;
using KorvaniNavigation::WallGrid;
using KorvaniPlatform::MKCoordinateForMapPoint;
using KorvaniPlatform::MKMapPointForCoordinate;

using Places = std::vector<CLLocationCoordinate2D>;

struct SightWorld {
  std::uint32_t seed = 0;
  CLLocationCoordinate2D corner;
  int power = 0;  // the size in degrees, as a power of ten
  int steps = 0;  // nothing stands but on so many coordinates each way; 0 for anywhere
  int nodeCount = 0;
  int wallCount = 0;
  int roomCount = 0;  // closed polygons; the first of them is around most positions
  int roomCorners = 0;
  bool hasFarNode = false;  // one so far away that all others share a few cells
};

std::ostream& operator<<(std::ostream& out, const SightWorld& world) {
  return out << "world " << world.seed << " at " << world.corner.latitude << ","
             << world.corner.longitude << " size 1e" << world.power << " steps " << world.steps
             << " nodes " << world.nodeCount << " walls " << world.wallCount << " rooms "
             << world.roomCount << " of " << world.roomCorners
             << (world.hasFarNode ? " and a far node" : "");
}

SightWorld anySightWorld(int mostNodes) {
  SightWorld world;
  world.seed = *rc::gen::arbitrary<std::uint32_t>();
  world.corner.latitude = *rc::gen::element(48.1, 48.1, 0.0, 84.0, -70.0);
  world.corner.longitude = *rc::gen::element(11.5, 11.5, 179.99, -179.99);
  // Where levels are as large as countries, lines slip through corners that walls share.
  world.power = *rc::gen::element(-7, -5, -4, -3, -2, 0, 1, 1);
  world.steps = *rc::gen::element(0, 0, 3, 10);
  world.nodeCount = *rc::gen::weightedOneOf<int>(
      {{1, rc::gen::inRange(0, 5)}, {5, rc::gen::inRange(5, mostNodes)}});
  world.wallCount = *rc::gen::element(0, 0, 2, 30);
  world.roomCount = *rc::gen::element(0, 1, 1, 4);
  world.roomCorners = *rc::gen::element(3, 4, 4, 6, 40);
  world.hasFarNode = *rc::gen::element(false, false, true);
  return world;
}

// Draws what a world holds.
class SightSource {
 public:
  explicit SightSource(const SightWorld& world)
      : world_(world), chance_(world.seed), size_(std::pow(10.0, world.power)), middle_(place()) {
    for (int i = 0; i < world_.wallCount; ++i) walls_.push_back({place(), place()});
    for (int i = 0; i < world_.roomCount; ++i) addRoom(i == 0 ? middle_ : place());
    viewpoint_ = nextPosition();
    for (int i = 0; i < world_.nodeCount; ++i) nodes_.push_back(node());
    if (world_.hasFarNode) nodes_.push_back(beside(middle_, 1000));
  }

  const Places& nodes() const { return nodes_; }

  std::vector<WallEdge> edges() const {
    std::vector<WallEdge> edges;
    for (const Wall& wall : walls_) {
      edges.push_back({MKMapPointForCoordinate(wall.from), MKMapPointForCoordinate(wall.to), 0});
    }
    return edges;
  }

  // The one that some nodes stand exactly behind corners of, as far as rounding allows.
  CLLocationCoordinate2D viewpoint() const { return viewpoint_; }

  CLLocationCoordinate2D nextPosition() {
    constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
    switch (chance_() % 16) {
      case 0:
        return place();
      case 1:
        return nodes_.empty() ? middle_ : nodes_[chance_() % nodes_.size()];
      case 2:
        return corner();
      case 3:
        return beside(corner(), std::pow(10.0, between(-12, -3)));
      case 4:
      case 5:
        return onWall();
      case 6:
        return beside(onWall(), 1e-9);
      case 7:
        return beside(middle_, 20);
      case 8:
        return chance_() % 8 == 0 ? CLLocationCoordinate2D{kUnknown, 11} : middle_;
      default:
        return beside(middle_, 0.05);
    }
  }

 private:
  struct Wall {
    CLLocationCoordinate2D from;
    CLLocationCoordinate2D to;
  };

  double between(double low, double high) {
    return low + (high - low) * (static_cast<double>(chance_()) / 4294967296.0);
  }

  double fraction() {
    const double exact = between(0, 1);
    return world_.steps == 0 ? exact : std::round(exact * world_.steps) / world_.steps;
  }

  CLLocationCoordinate2D place() {
    return {world_.corner.latitude + fraction() * size_,
            world_.corner.longitude + fraction() * size_};
  }

  CLLocationCoordinate2D beside(CLLocationCoordinate2D place, double reach) {
    return {place.latitude + between(-reach, reach) * size_,
            place.longitude + between(-reach, reach) * size_};
  }

  CLLocationCoordinate2D corner() {
    return walls_.empty() ? middle_ : walls_[chance_() % walls_.size()].to;
  }

  CLLocationCoordinate2D onWall() {
    if (walls_.empty()) return middle_;
    const auto& [from, to] = walls_[chance_() % walls_.size()];
    const double part = chance_() % 2 == 0 ? 0.5 : between(0, 1);
    return {from.latitude + (to.latitude - from.latitude) * part,
            from.longitude + (to.longitude - from.longitude) * part};
  }

  CLLocationCoordinate2D behindACorner() {
    const MKMapPoint from = MKMapPointForCoordinate(viewpoint_);
    const MKMapPoint over = MKMapPointForCoordinate(corner());
    const double reach = between(1, 4);
    return MKCoordinateForMapPoint(
        {from.x + (over.x - from.x) * reach, from.y + (over.y - from.y) * reach});
  }

  CLLocationCoordinate2D node() {
    constexpr double kInfinite = std::numeric_limits<double>::infinity();
    switch (chance_() % 32) {
      case 0:
        return nodes_.empty() ? middle_ : nodes_[chance_() % nodes_.size()];
      case 1:
        return corner();
      case 2:
        return onWall();
      case 3:
        return chance_() % 32 == 0 ? CLLocationCoordinate2D{kInfinite, 11} : place();
      case 4:
        return chance_() % 32 == 0 ? CLLocationCoordinate2D{48, kInfinite - kInfinite} : place();
      case 5:
      case 6:
      case 7:
      case 8:
        return behindACorner();
      default:
        return place();
    }
  }

  void addRoom(CLLocationCoordinate2D around) {
    const double radius = between(0.06, 0.4) * size_;
    const double turn = chance_() % 2 == 0 ? 0 : between(0, 6.3);
    Places corners;
    for (int i = 0; i < world_.roomCorners; ++i) {
      const double angle = turn + 6.283185307179586 * i / world_.roomCorners;
      corners.push_back({around.latitude + radius * std::sin(angle),
                         around.longitude + radius * std::cos(angle)});
    }
    for (std::size_t i = 0; i < corners.size(); ++i) {
      walls_.push_back({corners[i], corners[(i + 1) % corners.size()]});
    }
  }

  const SightWorld& world_;
  std::mt19937 chance_;
  double size_;
  CLLocationCoordinate2D middle_;
  CLLocationCoordinate2D viewpoint_;
  std::vector<Wall> walls_;
  Places nodes_;
};

// How many of the positions tried saw something.
int assertSameSights(const SightWorld& world, int positions) {
  SightSource source(world);
  const NodeTree tree(source.nodes());
  const auto edges = source.edges();
  const WallGrid walls(edges);
  const PlainSights plain(source.nodes(), edges);
  int seeing = 0;
  for (int i = 0; i < positions; ++i) {
    const auto position = i == 0 ? source.viewpoint() : source.nextPosition();
    const auto expected = plain.from(position);
    if (visibleNodes(tree, walls, position) != expected ||
        visibleNodesByBoxes(tree, walls, position) != expected) {
      RC_LOG() << world << ", position " << i << "\n";
      RC_FAIL("not the nodes of the plain way");
    }
    seeing += expected.empty() ? 0 : 1;
  }
  return seeing;
}

RC_GTEST_PROP(VisibleNodesProperties, AreThoseOfThePlainWay, ()) {
  const auto worlds =
      *rc::gen::resize(rc::kNominalSize, rc::gen::container<std::vector<SightWorld>>(
                                             40, rc::gen::exec([] { return anySightWorld(150); })));
  int seeing = 0;
  for (const SightWorld& world : worlds) seeing += assertSameSights(world, 12);
  RC_TAG(seeing > 240 ? "most positions see something" : "most positions see nothing");
}

// So many nodes that whole areas are passed over.
RC_GTEST_PROP(VisibleNodesProperties, AreThoseOfThePlainWayOnLargeLevels, ()) {
  const SightWorld world =
      *rc::gen::resize(rc::kNominalSize, rc::gen::exec([] { return anySightWorld(4000); }));
  assertSameSights(world, 5);
}

// What is seen then is what lines reach that slip through a corner of the room.
RC_GTEST_PROP(VisibleNodesProperties, AreThoseOfThePlainWayFromClosedRoomsOnLargeLevels, ()) {
  SightWorld world =
      *rc::gen::resize(rc::kNominalSize, rc::gen::exec([] { return anySightWorld(4000); }));
  world.power = 1;
  world.nodeCount += 1000;
  world.roomCount = 1;
  const int seeing = assertSameSights(world, 4);
  RC_TAG(seeing > 1 ? "some see something" : "few see something");
}

}  // namespace
}  // namespace KorvaniTest
