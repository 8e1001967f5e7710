#include "Buildings/Floor.hpp"

#include <algorithm>
#include <utility>

#include "Buildings/FloorDraft.hpp"

namespace KorvaniBenchmarks {

namespace {

constexpr double kHalfCorridor = 1.25;
constexpr double kRoomDepth = kRowPitch / 2 - kHalfCorridor;
constexpr double kHalfDoor = 0.45;
// Nodes of a hall.
constexpr std::size_t kHallLength = 15;
constexpr std::size_t kHallWidth = 3;

/// Draws the blocks of a level, row by row from the south.
class FloorMaker {
 public:
  FloorMaker(FloorDraft& draft, FloorSize size)
      : draft_(draft), size_(size), openDoors_(size.columns) {}

  Floor make() {
    for (std::size_t row = 0; row < size_.rows; ++row) addRow(row);
    addOuterWall();
    return std::move(floor_);
  }

 private:
  using Nodes = std::vector<std::uint32_t>;

  /// One side of a block's corridor: `outwards` is 1 to the north and -1 to the south.
  struct Side {
    double west;
    double east;
    double corridor;
    double outwards;

    double wall() const { return corridor + outwards * kHalfCorridor; }
    double back() const { return wall() + outwards * kRoomDepth; }
  };

  struct Door {
    double x;
    std::uint32_t inside;
  };

  double eastEnd() const { return static_cast<double>(size_.columns) * kBlockLength; }
  double northEnd() const { return static_cast<double>(size_.rows - 1) * kRowPitch; }

  void addRow(std::size_t row) {
    Nodes junctions;
    for (std::size_t column = 0; column <= size_.columns; ++column) {
      junctions.push_back(addJunction(row, column));
      if (row > 0) draft_.join(junctionsBelow_[column], junctions[column]);
    }
    for (std::size_t column = 0; column < size_.columns; ++column) {
      addBlock(row, column, junctions[column], junctions[column + 1]);
    }
    junctionsBelow_ = std::move(junctions);
  }

  std::uint32_t addJunction(std::size_t row, std::size_t column) {
    SeededNumbers& numbers = draft_.numbers();
    const Metres place{static_cast<double>(column) * kBlockLength + numbers.between(-0.3, 0.3),
                       static_cast<double>(row) * kRowPitch + numbers.between(-0.3, 0.3)};
    const std::uint32_t junction = draft_.addNode(place);
    if (row % 6 != 0) return junction;
    const std::uint32_t shaft = draft_.addNode({place.x + 0.5, place.y + 0.6});
    draft_.join(junction, shaft);
    (column % 2 == 0 ? floor_.stairs : floor_.lifts).push_back(shaft);
    return junction;
  }

  void addBlock(std::size_t row, std::size_t column, std::uint32_t west, std::uint32_t east) {
    const double left = static_cast<double>(column) * kBlockLength + kHalfCorridor;
    const double right = left + kBlockLength - 2 * kHalfCorridor;
    const double corridor = static_cast<double>(row) * kRowPitch;
    std::vector<Door> doors = std::exchange(openDoors_[column], {});
    const Side south{left, right, corridor, -1};
    const Side north{left, right, corridor, 1};
    if (doors.empty()) {
      addRooms(south, doors);
    } else {
      addFront(south, xsOf(doors));
    }
    if (row + 1 < size_.rows && draft_.numbers().oneIn(10)) {
      addHall(north, doors, openDoors_[column]);
    } else {
      addRooms(north, doors);
      draft_.addWall({{left, north.back()}, {right, north.back()}});
    }
    addCorridor(corridor, std::move(doors), west, east);
  }

  static std::vector<double> xsOf(const std::vector<Door>& doors) {
    std::vector<double> xs;
    xs.reserve(doors.size());
    for (const Door& door : doors) xs.push_back(door.x);
    return xs;
  }

  /// The wall along the corridor, with gaps at the doors, which are given from west to east.
  void addFront(const Side& side, const std::vector<double>& doors) {
    double from = side.west;
    for (const double door : doors) {
      draft_.addWall({{from, side.wall()}, {door - kHalfDoor, side.wall()}});
      from = door + kHalfDoor;
    }
    draft_.addWall({{from, side.wall()}, {side.east, side.wall()}});
  }

  void addRooms(const Side& side, std::vector<Door>& doors) {
    SeededNumbers& numbers = draft_.numbers();
    std::vector<double> xs;
    double from = side.west;
    addDivision(side, from, {});
    while (from < side.east) {
      double to = from + numbers.between(3.0, 7.0);
      if (side.east - to < 3.0) to = side.east;
      const std::uint32_t room = addRoom(side, from, to);
      if (from > side.west) divideFromNeighbour(side, from, doors.back().inside, room);
      const double door = numbers.between(from + 0.7, to - 0.7);
      doors.push_back({door, room});
      xs.push_back(door);
      from = to;
    }
    addDivision(side, from, {});
    addFront(side, xs);
  }

  std::uint32_t addRoom(const Side& side, double from, double to) {
    SeededNumbers& numbers = draft_.numbers();
    const double x = (from + to) / 2 + numbers.between(-0.5, 0.5);
    const double y = side.wall() + side.outwards * numbers.between(1.8, 3.6);
    return draft_.addNode({x, y});
  }

  /// Three rooms of ten have a door to the next one.
  void divideFromNeighbour(const Side& side, double x, std::uint32_t room, std::uint32_t next) {
    if (draft_.numbers().below(10) >= 3) return addDivision(side, x, {});
    draft_.join(room, next);
    const Metres a = draft_.placeOf(room);
    const Metres b = draft_.placeOf(next);
    const double crossing = a.y + (b.y - a.y) * ((x - a.x) / (b.x - a.x));
    addDivision(side, x, {crossing});
  }

  /// A wall from the corridor to the back, with gaps.
  void addDivision(const Side& side, double x, const std::vector<double>& gaps) {
    double from = side.wall();
    for (const double gap : gaps) {
      draft_.addWall({{x, from}, {x, gap - side.outwards * kHalfDoor}});
      from = gap + side.outwards * kHalfDoor;
    }
    draft_.addWall({{x, from}, {x, side.back()}});
  }

  /// A hall with pillars, three doors to its own corridor and three to the next one.
  void addHall(const Side& side, std::vector<Door>& doors, std::vector<Door>& nextDoors) {
    const double pitch = (side.east - side.west) / kHallLength;
    const Nodes nodes = addHallNodes(side, pitch);
    std::vector<double> xs;
    for (const std::size_t along :
         {kHallLength / 6, kHallLength / 2, kHallLength - kHallLength / 6}) {
      const std::size_t first = along * kHallWidth;
      doors.push_back({draft_.placeOf(nodes[first]).x, nodes[first]});
      xs.push_back(doors.back().x);
      const std::uint32_t last = nodes[first + kHallWidth - 1];
      nextDoors.push_back({draft_.placeOf(last).x, last});
      addPillar(side, pitch * static_cast<double>(along), pitch);
    }
    addFront(side, xs);
    addHallEnds(side);
  }

  /// Rows of nodes across the hall, each node joined with those around it.
  Nodes addHallNodes(const Side& side, double pitch) {
    SeededNumbers& numbers = draft_.numbers();
    Nodes nodes;
    for (std::size_t i = 0; i < kHallLength * kHallWidth; ++i) {
      const std::size_t along = i / kHallWidth;
      const std::size_t across = i % kHallWidth;
      const double x = side.west + pitch * (static_cast<double>(along) + 0.5);
      const double y = side.wall() + pitch * (static_cast<double>(across) + 0.5);
      nodes.push_back(
          draft_.addNode({x + numbers.between(-0.8, 0.8), y + numbers.between(-0.8, 0.8)}));
      if (across > 0) draft_.join(nodes[i - 1], nodes[i]);
      if (along == 0) continue;
      draft_.join(nodes[i - kHallWidth], nodes[i]);
      if (across > 0) draft_.join(nodes[i - kHallWidth - 1], nodes[i]);
      if (across + 1 < kHallWidth) draft_.join(nodes[i - kHallWidth + 1], nodes[i]);
    }
    return nodes;
  }

  void addPillar(const Side& side, double along, double pitch) {
    constexpr double kHalfPillar = 0.15;
    const double x = side.west + along;
    const double y = side.wall() + pitch;
    draft_.addWall({{x - kHalfPillar, y - kHalfPillar},
                    {x + kHalfPillar, y - kHalfPillar},
                    {x + kHalfPillar, y + kHalfPillar},
                    {x - kHalfPillar, y + kHalfPillar},
                    {x - kHalfPillar, y - kHalfPillar}});
  }

  void addHallEnds(const Side& side) {
    const double far = side.wall() + 2 * kRoomDepth;
    draft_.addWall({{side.west, side.wall()}, {side.west, far}});
    draft_.addWall({{side.east, side.wall()}, {side.east, far}});
  }

  /// The corridor's nodes are the places in front of the doors. One stretch in sixty has a step,
  /// and one in a hundred and fifty is one way, always in the same direction of a row, so that
  /// nothing is cut off.
  void addCorridor(double y, std::vector<Door> doors, std::uint32_t west, std::uint32_t east) {
    SeededNumbers& numbers = draft_.numbers();
    std::sort(doors.begin(), doors.end(), [](const Door& a, const Door& b) { return a.x < b.x; });
    std::uint32_t last = west;
    for (const Door& door : doors) {
      const std::uint32_t node = draft_.addNode({door.x, y + numbers.between(-0.4, 0.4)});
      draft_.join(node, door.inside);
      addStretch(last, node);
      last = node;
    }
    addStretch(last, east);
  }

  void addStretch(std::uint32_t from, std::uint32_t to) {
    if (draft_.numbers().oneIn(150)) return draft_.joinOneWay(from, to);
    if (draft_.numbers().oneIn(60)) return draft_.join(from, to, 1.5, false);
    draft_.join(from, to);
  }

  void addOuterWall() {
    const double west = -kHalfCorridor;
    const double east = eastEnd() + kHalfCorridor;
    const double south = -kRowPitch / 2;
    const double north = northEnd() + kRowPitch / 2;
    draft_.addWall({{west, south}, {east, south}, {east, north}, {west, north}, {west, south}});
    draft_.finish({west - 1, south - 1}, {east + 1, north + 1});
  }

  FloorDraft& draft_;
  FloorSize size_;
  Floor floor_;
  Nodes junctionsBelow_;
  /// By column: the doors of the hall that reaches here from the row below; none without a hall.
  std::vector<std::vector<Door>> openDoors_;
};

}  // namespace

Floor addFloor(PlainBuilding& building, std::int64_t level, FloorSize size,
               SeededNumbers& numbers) {
  FloorDraft draft(building, level, numbers);
  return FloorMaker(draft, size).make();
}

}  // namespace KorvaniBenchmarks
