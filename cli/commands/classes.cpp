#include <algorithm>
#include <iostream>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "automation/automation.h"
#include "commands/commands.h"
#include "failure.h"
#include "text_tools.h"

namespace larkmoor::cli {
namespace {

using automation::Argument;
using automation::Class;
using automation::Member;

struct Arguments {
  std::string name;
  bool tsv = false;
};

/// "Long Index", "byref String Text"; several with `separator` between them.
std::string TextOfArguments(std::span<const Argument> arguments, std::string_view separator) {
  std::string text;
  for (const Argument& argument : arguments) {
    if (!text.empty()) text += separator;
    if (argument.byref) text += "byref ";
    text += NameOf(argument.type);
    text += ' ';
    text += argument.name;
  }
  return text;
}

void WriteTsv(const Class& type) {
  for (const Member& member : type.members) {
    std::cout << type.name << '\t' << (member.isOperation ? "op" : "prop") << '\t' << member.name
              << '\t' << NameOf(member.type) << '\t' << TextOfArguments(member.arguments, ";")
              << '\t' << member.Access() << '\n';
  }
}

void WriteMember(const Member& member) {
  std::cout << "  " << member.name;
  if (member.isOperation || !member.arguments.empty()) {
    std::cout << '(' << TextOfArguments(member.arguments, ", ") << ')';
  }
  std::cout << " -> " << NameOf(member.type);
  if (!member.isOperation) std::cout << ", " << member.Access();
  std::cout << '\n';
  if (!member.doc.empty()) std::cout << "      " << member.doc << '\n';
}

void WriteMembers(const Class& type, std::string_view title, bool operations) {
  const auto isWanted = [&](const Member& member) { return member.isOperation == operations; };
  if (std::ranges::none_of(type.members, isWanted)) return;
  std::cout << '\n' << title << '\n';
  for (const Member& member : type.members) {
    if (isWanted(member)) WriteMember(member);
  }
}

void WriteListing(const Class& type) {
  std::cout << type.name << " (" << type.subsystem << ")\n" << type.doc << '\n';
  WriteMembers(type, "Operations", true);
  WriteMembers(type, "Properties", false);
}

void WriteOverview(std::span<const Class* const> types) {
  std::size_t width = 0;
  for (const Class* type : types) width = std::max(width, type->name.size());
  for (const Class* type : types) {
    std::cout << type->name << std::string(width - type->name.size() + 2, ' ') << type->doc << '\n';
  }
}

const Class& Find(const std::string& name) {
  const Class* type = automation::FindClass(name);
  if (type == nullptr) throw UsageError("there is no class " + Quoted(name));
  return *type;
}

void Show(const Arguments& arguments) {
  if (!arguments.name.empty()) {
    const Class& type = Find(arguments.name);
    return arguments.tsv ? WriteTsv(type) : WriteListing(type);
  }
  if (!arguments.tsv) return WriteOverview(automation::Classes());
  for (const Class* type : automation::Classes()) WriteTsv(*type);
}

}  // namespace

void AddClassesCommand(CLI::App& app) {
  auto arguments = std::make_shared<Arguments>();
  CLI::App* command = app.add_subcommand("classes", "Tell the public classes and their members");
  AddArgument(*command, "CLASS", arguments->name, "Only this class, with all its members")
      ->required(false);
  command->add_flag("--tsv", arguments->tsv,
                    "A line for each member, with tabs between its columns");
  command->footer(
      "Columns of --tsv: class; op or prop; name; type; arguments with semicolons between them;\n"
      "access, which is rw, r or w, and - for operations.");
  command->callback([arguments] { Show(*arguments); });
}

}  // namespace larkmoor::cli
