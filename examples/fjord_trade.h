// The parts of fjord_trade, and how each of its journals is posted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "check.h"
#include "csv_reader.h"
#include "documents.h"
#include "posting.h"

namespace fjord {

using example::Check;
using example::CsvRow;
using example::Document;
using example::Posted;
using example::ReadCsv;
using example::ToCents;
using example::ToDollars;
using example::TransactionNumbers;
using Folder = std::filesystem::path;

// --- What trade is done with: how many were added (fjord_trade_masters.cpp) ----------------------

std::size_t AddVendors(const Folder& data);
/// Items come behind the vendors that they are bought from.
std::size_t AddItems(const Folder& data);
std::size_t AddComponents(const Folder& data);
std::size_t AddJobs(const Folder& data);
std::size_t AddEmployees(const Folder& data);

// --- What is posted ------------------------------------------------------------------------------

// fjord_trade_goods.cpp
Posted PostPurchases(const Folder& data, TransactionNumbers& numbers);
Posted PostAdjustments(const Folder& data, TransactionNumbers& numbers);
Posted PostAssemblies(const Folder& data, TransactionNumbers& numbers);
// fjord_trade_money.cpp: bills and invoices learn what was paid on them.
Posted PostPayments(const Folder& data, TransactionNumbers& numbers);
Posted PostReceipts(const Folder& data, TransactionNumbers& numbers);
// fjord_trade_pay.cpp
Posted PostPaychecks(const Folder& data, TransactionNumbers& numbers);
/// Invoices that are kept as patterns, and post nothing (fjord_trade_goods.cpp).
std::size_t Memorize(const Folder& data);

// --- What the parts share ------------------------------------------------------------------------

/// The number by which other records know the customer, vendor, item or job of that ID; 0 is none.
template <typename Master>
std::int32_t IndexOf(Master& master, std::string_view id) {
  if (id.empty()) return 0;
  Check(master.GetEqual(id), "Finding " + std::string(id));
  return master.Index();
}

/// What a header has to post, so that it and the rows are 0.00 together.
inline std::int64_t Counterpart(Document document) {
  std::int64_t cents = 0;
  for (const CsvRow& row : document) cents -= row.Cents("Amount");
  return cents;
}

/// Posting of each row: the number, the account and the amount. `fill(number, row)` adds the rest.
template <typename Journal, typename Fill>
void FillRows(Journal& journal, Document document, Fill&& fill) {
  journal.NDistributions(static_cast<std::int16_t>(document.size()));
  std::int16_t number = 0;
  for (const CsvRow& row : document) {
    ++number;
    journal.DetailLineNo(number, number);
    journal.DetailGLAccount(number, row.Text("AccountID"));
    journal.DetailAmount(number, ToDollars(row.Cents("Amount")));
    fill(number, row);
  }
}

/// A file of documents of one journal: its name, and the column that tells them apart.
struct DocumentFile {
  Folder path;
  std::string_view numberColumn;
  std::int16_t journal;  ///< a tovJournalCode
};

/// Posts each document of a file; `fill(journal, document)` says what is in it, but for its day and
/// its numbers.
template <typename Journal, typename Fill>
Posted PostDocuments(const DocumentFile& file, TransactionNumbers& numbers, Fill&& fill) {
  const std::vector<CsvRow> rows = ReadCsv(file.path);
  const std::vector<Document> documents = example::GroupBy(rows, file.numberColumn);
  Posted posted = {.documents = std::ssize(documents), .rows = std::ssize(rows)};
  Journal journal;
  Check(journal.OpenFile(), "Opening a journal");
  for (const Document document : documents) {
    const CsvRow& first = document.front();
    StartTransaction(journal, numbers, file.journal, first.Integer("Period"), first.Day("Date"));
    journal.Posted(true);
    fill(journal, document);
    Check(journal.Insert(), "Posting " + first.Text(file.numberColumn));
    posted.cents += std::abs(Counterpart(document));
  }
  Check(journal.CloseFile(), "Closing a journal");
  return posted;
}

}  // namespace fjord
