#include <ctime>
#include <iostream>
#include <memory>
#include <optional>

#include <larkmoor/date.h>

#include "commands/commands.h"
#include "company_files.h"
#include "failure.h"
#include "reports/reports.h"
#include "text_tools.h"

namespace larkmoor::cli {
namespace {

struct Arguments {
  std::string folder;
  std::string format = "table";
  RegisterRange range;
  std::string number;  ///< of the invoice
  std::string asOf;
};

Date Today() {
  const std::time_t now = std::time(nullptr);
  std::tm day{};
  localtime_r(&now, &day);
  return Date::FromYmd(day.tm_year + 1900, day.tm_mon + 1, day.tm_mday);
}

Date DateOrToday(const std::string& text) {
  if (text.empty()) return Today();
  const std::optional<Date> date = Date::FromText(text);
  if (!date) throw UsageError("--as-of: " + Quoted(text) + " is no date such as 2024-02-29");
  return *date;
}

/// Adds one report as a command behind FOLDER. `write` is called with the company connected.
template <typename Write>
CLI::App& AddReport(CLI::App& report, const std::shared_ptr<Arguments>& arguments,
                    const std::string& name, const std::string& help, Write write) {
  CLI::App* command = report.add_subcommand(name, help);
  AddTableFormatOption(*command, arguments->format);
  command->callback([arguments, write] {
    Connect(arguments->folder);
    write(*arguments);
  });
  return *command;
}

void AddRegister(CLI::App& report, const std::shared_ptr<Arguments>& arguments) {
  CLI::App& command =
      AddReport(report, arguments, "register", "The sales invoices by date, with a running total",
                [](const Arguments& a) { WriteRegister(a.range, a.format, std::cout); });
  command.add_option("--period", arguments->range.period, "Only this accounting period")
      ->type_name("NUMBER");
  command.add_option("--year", arguments->range.year, "Only invoices that are dated in this year")
      ->type_name("YEAR");
}

void AddInvoice(CLI::App& report, const std::shared_ptr<Arguments>& arguments) {
  CLI::App& command =
      AddReport(report, arguments, "invoice", "One sales invoice with all its rows",
                [](const Arguments& a) { WriteInvoice(a.number, a.format, std::cout); });
  AddArgument(command, "NUMBER", arguments->number, "The invoice's number");
  command.footer(
      "Amounts of rows have the sign that the customer sees, opposite to that of DetailAmount.");
}

void AddTrialBalance(CLI::App& report, const std::shared_ptr<Arguments>& arguments) {
  CLI::App& command = AddReport(report, arguments, "trial-balance",
                                "The balance of every account that is posted to",
                                [](const Arguments& a) { WriteTrialBalance(a.format, std::cout); });
  command.footer(
      "All transactions count but orders and quotes, whether they are marked as posted or not.");
}

void AddAgedReceivables(CLI::App& report, const std::shared_ptr<Arguments>& arguments) {
  CLI::App& command = AddReport(
      report, arguments, "aged-receivables", "What each customer owes, by how long it has been due",
      [](const Arguments& a) { WriteAgedReceivables(DateOrToday(a.asOf), a.format, std::cout); });
  command.add_option("--as-of", arguments->asOf, "The day that it is told for; otherwise today")
      ->type_name("DATE");
  command.footer(
      "Of each invoice up to that day counts what has not been received of it: ARAmount less\n"
      "AmountReceived. An invoice is due from the day after DateDue on, one without a DateDue "
      "from\n"
      "the day after its own.");
}

}  // namespace

void AddReportCommand(CLI::App& app) {
  auto arguments = std::make_shared<Arguments>();
  CLI::App* command = app.add_subcommand("report", "Tell what the transactions add up to");
  AddArgument(*command, "FOLDER", arguments->folder, "The company's folder");
  command->require_subcommand(1);
  command->get_formatter()->label("SUBCOMMAND", "REPORT");
  for (const auto add : {AddRegister, AddInvoice, AddTrialBalance, AddAgedReceivables}) {
    add(*command, arguments);
  }
  for (CLI::App* report : command->get_subcommands({})) report->group("Reports");
  command->footer(
      "Each report has options of its own: larkmoor report REPORT --help.\n"
      "Amounts are exact to the cent. Sums stand below tables only.");
}

}  // namespace larkmoor::cli
