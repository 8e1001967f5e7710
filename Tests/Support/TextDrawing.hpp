#pragma once

/// Reading one level of a building that is drawn as text; see TextBuilding for what the signs
/// mean. A drawing knows cells, not metres.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace KorvaniTest {

class TextDrawing {
 public:
  /// A place on the grid: column to the east and row to the south of the upper left corner.
  struct Cell {
    double column = 0;
    double row = 0;
  };

  /// A letter or digit.
  struct Node {
    char name = ' ';
    Cell cell;
  };

  /// Two nodes with a line between them, the western or northern one first.
  struct Line {
    char first = ' ';
    char second = ' ';
  };

  /// A straight wall, west to east or north to south.
  struct Wall {
    Cell first;
    Cell second;
  };

  /// Throws std::invalid_argument for signs without meaning, lines that do not end at nodes, and
  /// names that stand twice.
  explicit TextDrawing(std::string_view drawing);

  const std::vector<Node>& nodes() const { return nodes_; }
  const std::vector<Line>& lines() const { return lines_; }
  const std::vector<Wall>& walls() const { return walls_; }

  /// Size of the drawing in cells; the longest line counts.
  std::size_t columns() const { return columns_; }
  std::size_t rows() const { return rows_.size(); }

 private:
  struct Direction {
    std::size_t column;
    std::size_t row;
    char line;
  };

  char sign(std::size_t column, std::size_t row) const;
  void readRows(std::string_view drawing);
  void readNodes();
  void readLines(Direction direction);
  void readLine(std::size_t column, std::size_t row, Direction direction);
  void checkLines() const;
  void readWalls(Direction direction);
  void readPillars();
  std::size_t wallLength(std::size_t column, std::size_t row, Direction direction) const;

  std::vector<std::string> rows_;
  std::size_t columns_ = 0;
  std::vector<Node> nodes_;
  std::vector<Line> lines_;
  std::vector<Wall> walls_;
};

}  // namespace KorvaniTest
