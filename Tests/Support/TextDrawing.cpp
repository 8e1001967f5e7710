#include "Support/TextDrawing.hpp"

#include <algorithm>
#include <cctype>
#include <stdexcept>

namespace KorvaniTest {

namespace {

bool isName(char sign) { return std::isalnum(static_cast<unsigned char>(sign)) != 0; }

[[noreturn]] void refuse(const std::string& what, std::size_t column, std::size_t row) {
  throw std::invalid_argument("drawing, column " + std::to_string(column) + ", row " +
                              std::to_string(row) + ": " + what);
}

TextDrawing::Cell cell(std::size_t column, std::size_t row) {
  return {static_cast<double>(column), static_cast<double>(row)};
}

bool isBlank(const std::string& line) { return line.find_first_not_of(' ') == std::string::npos; }

}  // namespace

TextDrawing::TextDrawing(std::string_view drawing) {
  constexpr Direction kEast{1, 0, '-'};
  constexpr Direction kSouth{0, 1, '|'};
  readRows(drawing);
  readNodes();
  checkLines();
  readLines(kEast);
  readLines(kSouth);
  readWalls(kEast);
  readWalls(kSouth);
  readPillars();
}

// Blank outside the drawing.
char TextDrawing::sign(std::size_t column, std::size_t row) const {
  if (row >= rows_.size() || column >= rows_[row].size()) return ' ';
  return rows_[row][column];
}

void TextDrawing::readRows(std::string_view drawing) {
  std::size_t begin = 0;
  while (begin <= drawing.size()) {
    const std::size_t end = std::min(drawing.find('\n', begin), drawing.size());
    rows_.emplace_back(drawing.substr(begin, end - begin));
    begin = end + 1;
  }
  // A raw string begins behind its bracket and ends with the indentation of the closing one.
  if (rows_.front().empty()) rows_.erase(rows_.begin());
  if (!rows_.empty() && isBlank(rows_.back())) rows_.pop_back();
  for (const std::string& row : rows_) columns_ = std::max(columns_, row.size());
}

void TextDrawing::readNodes() {
  std::string names;
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    for (std::size_t column = 0; column < rows_[row].size(); ++column) {
      const char name = sign(column, row);
      if (!isName(name)) continue;
      if (names.find(name) != std::string::npos) {
        refuse(std::string("node ") + name + " stands twice", column, row);
      }
      names.push_back(name);
      nodes_.push_back({name, cell(column, row)});
    }
  }
}

void TextDrawing::readLines(Direction direction) {
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    for (std::size_t column = 0; column < rows_[row].size(); ++column) {
      if (isName(sign(column, row))) readLine(column, row, direction);
    }
  }
}

void TextDrawing::readLine(std::size_t column, std::size_t row, Direction direction) {
  const char first = sign(column, row);
  std::size_t length = 0;
  do {
    column += direction.column;
    row += direction.row;
    ++length;
  } while (sign(column, row) == direction.line);
  if (length == 1) return;
  if (!isName(sign(column, row))) refuse("a line ends here without a node", column, row);
  lines_.push_back({first, sign(column, row)});
}

// Every sign has a meaning, and every line begins at a node.
void TextDrawing::checkLines() const {
  constexpr std::string_view kSigns = " -|#.";
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    for (std::size_t column = 0; column < rows_[row].size(); ++column) {
      const char here = sign(column, row);
      if (!isName(here) && kSigns.find(here) == std::string_view::npos) {
        refuse(std::string("what does '") + here + "' mean?", column, row);
      }
      const char west = column > 0 ? sign(column - 1, row) : ' ';
      const char north = row > 0 ? sign(column, row - 1) : ' ';
      if ((here == '-' && west != '-' && !isName(west)) ||
          (here == '|' && north != '|' && !isName(north))) {
        refuse("a line begins here without a node", column, row);
      }
    }
  }
}

std::size_t TextDrawing::wallLength(std::size_t column, std::size_t row,
                                    Direction direction) const {
  std::size_t length = 0;
  while (sign(column + length * direction.column, row + length * direction.row) == '#') ++length;
  return length;
}

void TextDrawing::readWalls(Direction direction) {
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    for (std::size_t column = 0; column < rows_[row].size(); ++column) {
      const bool goesOn = column >= direction.column && row >= direction.row &&
                          sign(column - direction.column, row - direction.row) == '#';
      const std::size_t length = goesOn ? 0 : wallLength(column, row, direction);
      if (length < 2) continue;
      const std::size_t last = length - 1;
      walls_.push_back(
          {cell(column, row), cell(column + last * direction.column, row + last * direction.row)});
    }
  }
}

// A sign on its own stands for a wall as wide as its cell.
void TextDrawing::readPillars() {
  const auto isWall = [&](std::size_t column, std::size_t row) { return sign(column, row) == '#'; };
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    for (std::size_t column = 0; column < rows_[row].size(); ++column) {
      if (!isWall(column, row) || isWall(column + 1, row) || isWall(column, row + 1) ||
          (column > 0 && isWall(column - 1, row)) || (row > 0 && isWall(column, row - 1))) {
        continue;
      }
      const Cell centre = cell(column, row);
      walls_.push_back({{centre.column - 0.5, centre.row}, {centre.column + 0.5, centre.row}});
    }
  }
}

}  // namespace KorvaniTest
