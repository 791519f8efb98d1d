#include "import_plan.h"

#include <algorithm>
#include <optional>

#include "engine/text.h"
#include "failure.h"
#include "text_tools.h"

namespace larkmoor::cli {
namespace {

/// Makes a plan step by step: first the maps, then the columns that bear a property's name.
class Planner {
 public:
  Planner(const std::vector<std::string>& header, const RowShape& shape) : shape_(shape) {
    for (const std::string& name : header) header_.emplace_back(TrimBlanks(name));
    plan_.fieldCount = header_.size();
    RequireDistinctNames();
  }

  void AddMap(const std::string& map) {
    // Names of properties hold no "=", foreign names of columns may.
    const std::size_t equals = map.rfind('=');
    if (equals == std::string::npos) {
      throw UsageError(Quoted(map) + " is not of the form COLUMN=PROPERTY");
    }
    const std::size_t field = FieldOf(map.substr(0, equals));
    const Column column = shape_.FindSettable(map.substr(equals + 1));
    if (IsTaken(column)) throw UsageError("two columns are mapped to " + column.Name());
    plan_.targets.push_back({field, header_[field], column});
  }

  void AddColumnsByName(bool foreignFile) {
    for (std::size_t field = 0; field < header_.size(); ++field) {
      if (!IsMapped(field)) AddByName(field, foreignFile);
    }
  }

  ImportPlan Finish() {
    if (plan_.targets.empty()) throw Failure("no column of the file belongs to a property");
    return std::move(plan_);
  }

 private:
  void RequireDistinctNames() const {
    std::vector<std::string> names = header_;
    std::ranges::sort(names);
    const auto twin = std::ranges::adjacent_find(names);
    if (twin != names.end()) throw Failure("two columns of the file are named " + Quoted(*twin));
  }

  std::size_t FieldOf(const std::string& name) const {
    const auto found = std::ranges::find(header_, TrimBlanks(name));
    if (found == header_.end()) throw UsageError("the file has no column " + Quoted(name));
    return static_cast<std::size_t>(found - header_.begin());
  }

  bool IsMapped(std::size_t field) const {
    return std::ranges::any_of(plan_.targets,
                               [&](const ImportTarget& target) { return target.field == field; });
  }

  bool IsTaken(const Column& column) const {
    return std::ranges::any_of(plan_.targets,
                               [&](const ImportTarget& target) { return target.column == column; });
  }

  void AddByName(std::size_t field, bool foreignFile) {
    const std::optional<Column> column = FindByName(field, foreignFile);
    if (column && column->property->CanSet() && !IsTaken(*column)) {
      plan_.targets.push_back({field, header_[field], *column});
    } else {
      plan_.passedOver.push_back(header_[field]);
    }
  }

  std::optional<Column> FindByName(std::size_t field, bool foreignFile) const {
    try {
      return shape_.FindColumn(header_[field]);
    } catch (const UsageError& error) {
      if (foreignFile) return std::nullopt;
      throw Failure("column " + Quoted(header_[field]) + ": " + error.what());
    }
  }

  const RowShape& shape_;
  std::vector<std::string> header_;
  ImportPlan plan_;
};

}  // namespace

bool ImportPlan::HasDetails() const {
  return std::ranges::any_of(
      targets, [](const ImportTarget& target) { return target.column.property->ofDetail; });
}

ImportPlan PlanImport(const std::vector<std::string>& header, const std::vector<std::string>& maps,
                      const RowShape& shape) {
  Planner planner(header, shape);
  for (const std::string& map : maps) planner.AddMap(map);
  planner.AddColumnsByName(!maps.empty());
  return planner.Finish();
}

}  // namespace larkmoor::cli
