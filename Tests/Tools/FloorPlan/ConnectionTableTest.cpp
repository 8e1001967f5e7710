#include "FloorPlan/ConnectionTable.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "Support/InputError.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::ConnectionKind;
using KorvaniTools::ConnectionTable;
using KorvaniTools::InputError;

class ConnectionTableFile : public testing::Test {
 protected:
  ~ConnectionTableFile() override { std::filesystem::remove(path_); }

  ConnectionTable read(const std::string& text) const {
    std::ofstream(path_) << text;
    return ConnectionTable::withFile(path_);
  }

  std::string complaint(const std::string& text) const {
    try {
      read(text);
    } catch (const InputError& error) {
      return error.what();
    }
    return "none";
  }

  void expectComplaint(const std::string& text, const std::string& words) const {
    const std::string what = complaint(text);
    EXPECT_NE(what.find(words), std::string::npos) << what;
    EXPECT_NE(what.find(path_.string()), std::string::npos) << what;
  }

  std::filesystem::path path_ =
      std::filesystem::temp_directory_path() /
      (std::string("table-") + testing::UnitTest::GetInstance()->current_test_info()->name() +
       ".json");
};

TEST(ConnectionTable, StairsAreSlowAndABarrier) {
  const ConnectionTable table = ConnectionTable::standard();
  const auto& stairs = table.of(ConnectionKind::stairs);
  EXPECT_EQ(stairs.type, "stairs");
  EXPECT_GT(stairs.multiplicator, 1);
  EXPECT_FALSE(stairs.barrierFree);
}

TEST(ConnectionTable, LiftsAndRampsAreWithoutBarriers) {
  EXPECT_TRUE(ConnectionTable::standard().of(ConnectionKind::elevator).barrierFree);
  EXPECT_TRUE(ConnectionTable::standard().of(ConnectionKind::ramp).barrierFree);
}

TEST(ConnectionTable, FloorAndDoorsHaveNoType) {
  EXPECT_FALSE(ConnectionTable::standard().of(ConnectionKind::path).type);
  EXPECT_FALSE(ConnectionTable::standard().of(ConnectionKind::door).type);
}

TEST_F(ConnectionTableFile, ChangesWhatItNamesAndKeepsTheRest) {
  const auto table = read(R"({"stairs": {"multiplicator": 2.5}, "door": {"type": "door"},
                              "ramp": {"barrierFree": false, "type": null}})");
  EXPECT_EQ(table.of(ConnectionKind::stairs).multiplicator, 2.5);
  EXPECT_EQ(table.of(ConnectionKind::stairs).type, "stairs");
  EXPECT_EQ(table.of(ConnectionKind::door).type, "door");
  EXPECT_FALSE(table.of(ConnectionKind::ramp).barrierFree);
  EXPECT_FALSE(table.of(ConnectionKind::ramp).type);
  EXPECT_EQ(table.of(ConnectionKind::elevator).multiplicator, 8);
}

TEST_F(ConnectionTableFile, NamesAnUnknownKind) {
  expectComplaint(R"({"stair": {}})", "found the kind \"stair\", expected path, door, stairs");
}

TEST_F(ConnectionTableFile, NamesAnUnknownMember) {
  expectComplaint(R"({"stairs": {"speed": 2}})", "stairs.speed: found an unknown member");
}

TEST_F(ConnectionTableFile, NamesAnIllTypedMember) {
  expectComplaint(R"({"stairs": {"barrierFree": "no"}})",
                  "stairs.barrierFree: found \"no\", expected true or false");
  expectComplaint(R"({"stairs": {"type": 3}})", "stairs.type: found 3");
  expectComplaint(R"({"stairs": 3})", "stairs: found 3, expected an object");
}

TEST_F(ConnectionTableFile, RefusesAMultiplicatorThatIsNotAboveZero) {
  expectComplaint(R"({"ramp": {"multiplicator": 0}})", "ramp.multiplicator: found 0");
  expectComplaint(R"({"ramp": {"multiplicator": -1}})", "expected a number above 0");
  expectComplaint(R"({"ramp": {"multiplicator": "2"}})", "expected a number above 0");
}

TEST_F(ConnectionTableFile, SaysThatAFileIsNotJson) {
  expectComplaint("{\"stairs\": ", "not JSON");
  expectComplaint("[]", "expected an object of kinds");
}

TEST_F(ConnectionTableFile, SaysThatAFileCannotBeRead) {
  EXPECT_THROW(ConnectionTable::withFile(path_), InputError);
}

}  // namespace
}  // namespace KorvaniTest
