#include "journal_shape.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace larkmoor::cli {
namespace {

using automation::Class;
using automation::Member;
using automation::Storage;

constexpr std::array DetailLists = {
    DetailList{"", "NDistributions", "DetailAmount"},
    DetailList{"pay", "NDistributions", "PayAmount"},
    DetailList{"job", "NLaborDistributions", "JobAmount", "JobJobIndex"},
};

/// Properties that stand for a stored value although no field is known behind them. `JobEmployeeID`
/// is none of them: it reads another employee than it was given.
constexpr std::array StoredByHand = {
    "DetailGLAccount", "DetailQuantity", "EmployeeID", "JobAccount",    "JobHours",
    "JobLevel",        "MainAccount",    "PayAccount", "PayEmployeeID", "SalesRepID"};

/// All others without a known field show what further properties show, or belong to no transaction.
bool IsWorkedOut(const Member& member) {
  return member.storage == Storage::ByHand && member.field == nullptr &&
         std::ranges::find(StoredByHand, member.name) == StoredByHand.end();
}

/// A detail's number is no index of its columns: it is told by which detail is in hand.
void MakeDetail(Property& property) {
  property.takesDetail = property.indexCount > 0;
  property.indexCount = 0;
  property.ranges.clear();
}

/// Whether the member is but a further name of a field, which another one shows as it is: one ahead
/// of this, or where this one shows it by hand, any.
bool IsFurtherName(const Class& type, const Member& member) {
  if (member.field == nullptr) return false;
  const auto end = member.storage == Storage::ByHand
                       ? type.members.end()
                       : std::ranges::find(type.members, &member, [](auto& m) { return &m; });
  return std::any_of(type.members.begin(), end, [&](const Member& other) {
    return other.field == member.field && other.rowList == member.rowList &&
           other.storage != Storage::ByHand;
  });
}

}  // namespace

std::vector<DetailList> DetailListsOf(const Class& type) {
  std::vector<DetailList> lists;
  std::ranges::copy_if(DetailLists, std::back_inserter(lists), [&](const DetailList& list) {
    return std::ranges::any_of(type.members, [&](const Member& member) {
      return member.ofRow && member.rowList == list.name;
    });
  });
  return lists;
}

bool IsJournal(const Class& type) {
  return std::ranges::any_of(type.members, [](const Member& member) { return member.ofRow; });
}

std::vector<Property> JournalPropertiesOf(const Class& type) {
  const std::vector<DetailList> lists = DetailListsOf(type);
  std::vector<Property> properties = PropertiesOf(type);
  for (Property& property : properties) {
    if (property.ofDetail) MakeDetail(property);
    property.countsDetails = std::ranges::count(lists, property.name, &DetailList::count) > 0;
    const Member& member = *FindMember(type, property.name);
    if (IsWorkedOut(member)) property.writable = false;
    if (IsWorkedOut(member) || IsFurtherName(type, member)) property.listed = false;
  }
  return properties;
}

}  // namespace larkmoor::cli
