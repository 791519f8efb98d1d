// Rows through a public class.
#pragma once

#include <string_view>

#include "automation/automation.h"
#include "row_source.h"

namespace larkmoor::cli {

class ClassRows : public RowSource {
 public:
  /// Makes an object of the class and opens it. Raises a `Failure` where it does not open.
  explicit ClassRows(const automation::Class& type);

  [[nodiscard]] std::string_view Name() const override { return object_.Type().name; }
  [[nodiscard]] const RowShape& Shape() const override { return shape_; }
  TovrinFile& File() override { return *object_.File(); }
  [[nodiscard]] bool IsRow() const override;
  void StartRow() override;
  Variant Get(const Column& column) override;
  void Set(const Column& column, const Variant& value) override;
  Status Insert() override;
  Status Update() override;
  Status Delete() override;

 private:
  void Open();
  [[nodiscard]] bool Offers(std::string_view operation) const;

  automation::Object object_;
  RowShape shape_;
  bool holdsMoreThanItsRecord_;
};

}  // namespace larkmoor::cli
