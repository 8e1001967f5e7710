#include "Platform/Value.hpp"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

namespace KorvaniPlatform {
namespace {

std::vector<std::string> keysOf(const Dictionary& dictionary) {
  std::vector<std::string> keys;
  for (const auto& [key, value] : dictionary) keys.push_back(key);
  return keys;
}

TEST(Value, BoxesNumbersWithTheirKind) {
  EXPECT_EQ(*Value(true).number(), Number::boolean(true));
  EXPECT_EQ(*Value(3).number(), Number::integer(3));
  EXPECT_EQ(*Value(0).number(), Number::integer(0));
  EXPECT_EQ(*Value(std::size_t{3}).number(), Number::integer(3));
  EXPECT_EQ(*Value(0.5f).number(), Number::single(0.5f));
  EXPECT_EQ(*Value(0.5).number(), Number::real(0.5));
  EXPECT_EQ(*Value(Number::real(1)).number(), Number::real(1));
}

TEST(Value, TakesEveryKindOfString) {
  const std::string string = "Level height";
  const std::string_view view = string;
  EXPECT_EQ(*Value("Level height").string(), string);
  EXPECT_EQ(*Value(string).string(), string);
  EXPECT_EQ(*Value(view).string(), string);
  EXPECT_EQ(*Value(std::string("Level height")).string(), string);
}

TEST(Value, IsExactlyOneOfNumberStringAndDictionary) {
  const Value number = 1.5;
  EXPECT_TRUE(number.isNumber());
  EXPECT_FALSE(number.isString());
  EXPECT_FALSE(number.isDictionary());
  EXPECT_EQ(number.string(), nullptr);
  EXPECT_EQ(number.dictionary(), nullptr);

  const Value string = "true";
  EXPECT_TRUE(string.isString());
  EXPECT_FALSE(string.isNumber());
  EXPECT_EQ(string.number(), nullptr);

  const Value dictionary = Dictionary{{"level", 2}};
  EXPECT_TRUE(dictionary.isDictionary());
  EXPECT_FALSE(dictionary.isNumber());
  EXPECT_FALSE(dictionary.isString());
  EXPECT_EQ(*dictionary.dictionary()->find("level"), Value(2));
}

TEST(Value, OtherPointersAreNoValues) {
  EXPECT_FALSE((std::is_constructible_v<Value, int*>));
  EXPECT_FALSE((std::is_constructible_v<Value, const void*>));
}

TEST(Value, EqualityComparesKindAndContent) {
  EXPECT_EQ(Value(1), Value(1));
  EXPECT_NE(Value(1), Value(1.0));
  EXPECT_NE(Value(1), Value("1"));
  EXPECT_EQ(Value("a"), Value(std::string("a")));
  EXPECT_EQ(Value(Dictionary{{"a", 1}}), Value(Dictionary{{"a", 1}}));
  EXPECT_NE(Value(Dictionary{{"a", 1}}), Value(Dictionary{{"a", 2}}));
}

TEST(Dictionary, StartsEmpty) {
  const Dictionary empty;
  EXPECT_TRUE(empty.empty());
  EXPECT_EQ(empty.size(), 0u);
  EXPECT_EQ(empty.begin(), empty.end());
  EXPECT_EQ(empty.find("level"), nullptr);
  EXPECT_FALSE(empty.contains("level"));
}

TEST(Dictionary, KeepsTheOrderOfAddition) {
  Dictionary dictionary{{"second", 2}, {"first", 1}};
  dictionary.set("zero", 0);
  dictionary.set("another", "text");
  EXPECT_EQ(keysOf(dictionary), (std::vector<std::string>{"second", "first", "zero", "another"}));
}

TEST(Dictionary, ReplacingAValueKeepsItsPlace) {
  Dictionary dictionary{{"a", 1}, {"b", 2}, {"c", 3}};
  dictionary.set("b", "two");
  EXPECT_EQ(keysOf(dictionary), (std::vector<std::string>{"a", "b", "c"}));
  EXPECT_EQ(dictionary.at("b"), Value("two"));
  EXPECT_EQ(dictionary.size(), 3u);
}

TEST(Dictionary, AKeyGivenTwiceKeepsItsFirstPlaceAndItsLastValue) {
  const Dictionary dictionary{{"a", 1}, {"b", 2}, {"a", 3}};
  EXPECT_EQ(keysOf(dictionary), (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(dictionary.at("a"), Value(3));
}

TEST(Dictionary, FindsByKeyAlone) {
  const Dictionary dictionary{{"latitude", 48.1372}, {"level", 2}};
  ASSERT_NE(dictionary.find("latitude"), nullptr);
  EXPECT_EQ(dictionary.find("latitude")->number()->doubleValue(), 48.1372);
  EXPECT_EQ(dictionary.find("Latitude"), nullptr);
  EXPECT_EQ(dictionary.find("lat"), nullptr);
  EXPECT_TRUE(dictionary.contains("level"));
}

TEST(Dictionary, CopiesAreIndependentAllTheWayDown) {
  Dictionary inner{{"heading", 90.0}};
  Dictionary outer{{"arrow", inner}};
  Dictionary copy = outer;
  inner.set("heading", 180.0);
  copy.set("arrow", Dictionary{});
  EXPECT_EQ(outer.at("arrow").dictionary()->at("heading"), Value(90.0));
  EXPECT_TRUE(copy.at("arrow").dictionary()->empty());
}

TEST(Dictionary, HoldsDictionariesInDictionaries) {
  const Dictionary nested{{"next", Dictionary{{"next", Dictionary{{"distance", 4.5f}}}}}};
  const Value& deep = nested.at("next").dictionary()->at("next").dictionary()->at("distance");
  EXPECT_EQ(deep, Value(4.5f));
}

TEST(Dictionary, EqualityAsksForTheSameEntriesInTheSameOrder) {
  const Dictionary one{{"a", 1}, {"b", 2}};
  EXPECT_EQ(one, (Dictionary{{"a", 1}, {"b", 2}}));
  EXPECT_NE(one, (Dictionary{{"b", 2}, {"a", 1}}));
  EXPECT_NE(one, (Dictionary{{"a", 1}}));
  EXPECT_NE(one, (Dictionary{{"a", 1}, {"b", 2.0}}));
}

TEST(DictionaryDeathTest, AskingForAMissingKeyIsAFatalErrorThatNamesIt) {
  const Dictionary dictionary{{"a", 1}};
  EXPECT_DEATH(dictionary.at("level"), "fatal error: .*no value for key \"level\" \\(.*Value.cpp:");
}

}  // namespace
}  // namespace KorvaniPlatform
