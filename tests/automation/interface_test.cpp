// The member table against the interface that clients were promised. The promise is kept apart from
// the dictionary, in interface.tsv, so that a slip there is seen here before it reaches a client.
#include <algorithm>
#include <cstdint>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "automation/automation.h"

namespace larkmoor::automation {
namespace {

using Names = std::vector<std::string>;

struct PromisedMember {
  std::string name;
  std::string signature;
};

struct PromisedClass {
  std::string name;
  std::vector<PromisedMember> members;
};

/// All that was promised of a member but its name, as in "prop Double (Integer Index) rw".
std::string Signature(std::string_view kind, std::string_view type, std::string_view arguments,
                      std::string_view access) {
  std::ostringstream text;
  text << kind << ' ' << type << " (" << arguments << ") " << access;
  return text.str();
}

std::string SignatureOf(const Member& member) {
  std::string arguments;
  for (const Argument& argument : member.arguments) {
    if (!arguments.empty()) arguments += ';';
    if (argument.byref) arguments += "byref ";
    arguments.append(NameOf(argument.type)).append(" ").append(argument.name);
  }
  return Signature(member.isOperation ? "op" : "prop", NameOf(member.type), arguments,
                   member.Access());
}

std::vector<std::string> Columns(const std::string& line) {
  std::vector<std::string> columns;
  std::istringstream in(line);
  for (std::string column; std::getline(in, column, '\t');) columns.push_back(column);
  return columns;
}

/// The file's classes and members in its order.
std::vector<PromisedClass> ReadPromise() {
  std::vector<PromisedClass> classes;
  std::ifstream file(LARKMOOR_SOURCE_DIR "/tests/automation/interface.tsv");
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with('#')) continue;
    const std::vector<std::string> columns = Columns(line);
    if (columns.size() != 1 && columns.size() != 6) {
      ADD_FAILURE() << "not a line of 1 or 6 columns: " << line;
      continue;
    }
    if (classes.empty() || classes.back().name != columns[0]) classes.push_back({columns[0], {}});
    if (columns.size() == 1) continue;
    classes.back().members.push_back(
        {columns[2], Signature(columns[1], columns[3], columns[4], columns[5])});
  }
  EXPECT_FALSE(classes.empty()) << "interface.tsv promises nothing";
  return classes;
}

const std::vector<PromisedClass>& Promise() {
  static const std::vector<PromisedClass> classes = ReadPromise();
  return classes;
}

std::string FullName(std::string_view className, std::string_view memberName) {
  return std::string(className).append(".").append(memberName);
}

/// Members are named with their class.
Names NamesOf(const std::vector<PromisedClass>& classes) {
  Names names;
  for (const PromisedClass& promised : classes) names.push_back(promised.name);
  return names;
}

Names NamesOf(const PromisedClass& promised) {
  Names names;
  for (const PromisedMember& member : promised.members) {
    names.push_back(FullName(promised.name, member.name));
  }
  return names;
}

Names NamesOf(const Class& type) {
  Names names;
  for (const Member& member : type.members) names.push_back(FullName(type.name, member.name));
  return names;
}

bool Contains(const Names& names, const std::string& name) {
  return std::ranges::find(names, name) != names.end();
}

/// Tells each name that only one side has, and where the two orders part.
void ExpectSameNames(const Names& given, const Names& promised) {
  for (const std::string& name : promised) {
    EXPECT_TRUE(Contains(given, name)) << name << " was promised and is not there";
  }
  for (const std::string& name : given) {
    EXPECT_TRUE(Contains(promised, name)) << name << " is there and was not promised";
  }
  const auto [found, expected] = std::ranges::mismatch(given, promised);
  EXPECT_EQ(found == given.end() ? "nothing" : *found,
            expected == promised.end() ? "nothing" : *expected)
      << "where the two orders part";
}

TEST(PromisedInterface, HasExactlyTheClassesPromisedAndInTheirOrder) {
  Names given;
  for (const Class* type : Classes()) given.emplace_back(type->name);
  ExpectSameNames(given, NamesOf(Promise()));
}

TEST(PromisedInterface, EveryClassHasExactlyItsMembersAndInTheirOrder) {
  for (const PromisedClass& promised : Promise()) {
    const Class* type = FindClass(promised.name);
    EXPECT_NE(type, nullptr) << promised.name;
    if (type != nullptr) ExpectSameNames(NamesOf(*type), NamesOf(promised));
  }
}

TEST(PromisedInterface, EveryMemberHasItsKindTypeArgumentsAndAccess) {
  for (const PromisedClass& promised : Promise()) {
    for (const PromisedMember& expected : promised.members) {
      const Class* type = FindClass(promised.name);
      const Member* member = type == nullptr ? nullptr : FindMember(*type, expected.name);
      EXPECT_EQ(member == nullptr ? "missing" : SignatureOf(*member), expected.signature)
          << FullName(promised.name, expected.name);
    }
  }
}

TEST(PromisedInterface, EveryClassIsMadeAndDestroyedByItsName) {
  for (const PromisedClass& promised : Promise()) {
    EXPECT_NO_THROW({
      const Object object(promised.name);
      EXPECT_EQ(object.Type().name, promised.name);
    }) << promised.name;
  }
}

TEST(MemberTable, TellsWhatEveryClassAndMemberIsFor) {
  for (const Class* type : Classes()) {
    EXPECT_FALSE(type->doc.empty()) << type->name;
    for (const Member& member : type->members) {
      EXPECT_FALSE(member.doc.empty()) << FullName(type->name, member.name);
    }
  }
}

TEST(MemberTable, GivesTheMembersOfAClassNumbersFrom1OnThatDoNotRepeat) {
  for (const Class* type : Classes()) {
    std::map<std::int32_t, std::string_view> owners;
    for (const Member& member : type->members) {
      EXPECT_GE(member.number, 1) << FullName(type->name, member.name);
      const auto [owner, isNew] = owners.emplace(member.number, member.name);
      EXPECT_TRUE(isNew) << FullName(type->name, member.name) << " has the number " << member.number
                         << " of " << owner->second;
    }
  }
}

}  // namespace
}  // namespace larkmoor::automation
