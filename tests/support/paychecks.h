// Paychecks: pay rows, and labor rows that bear a job.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/journal_code.h>
#include <larkmoor/journals/payroll_journal.h>
#include <larkmoor/status.h>

#include "engine/records/jrnl_row.h"
#include "support/journal_fixture.h"
#include "support/journals.h"

namespace larkmoor::test {

/// Adds a labor row to the paycheck of that number. A pay row is one of `JournalFiles::AddRows`.
inline void AddLabor(const JournalFiles& files, std::int32_t nRecord, double amount,
                     std::int32_t job = 7) {
  files.AddRow(nRecord, [&](Tovrin2Record& row) {
    row.SetDouble(JrnlRowRecord::Amount, amount);
    row.SetLong(JrnlRowRecord::JobIndex, job);
  });
}

/// Adds a paycheck whose pay rows and labor rows of these amounts lie in turns, a pay row first.
inline void AddPaycheck(const JournalFiles& files, const HeaderSample& header,
                        const std::vector<double>& pay, const std::vector<double>& labor) {
  files.AddHeader(header);
  for (std::size_t i = 0; i < std::max(pay.size(), labor.size()); ++i) {
    if (i < pay.size()) files.AddRows(header.nRecord, {pay[i]});
    if (i < labor.size()) AddLabor(files, header.nRecord, labor[i]);
  }
}

/// The amounts of a paycheck's rows on file that bear a job, or of those that bear none.
inline std::vector<double> AmountsOnFile(const JournalFiles& files, std::int32_t nRecord,
                                         bool withJob) {
  const auto rows = files.OfRows(nRecord, [](Tovrin2Record& row) {
    return std::pair(row.GetLong(JrnlRowRecord::JobIndex), row.GetDouble(JrnlRowRecord::Amount));
  });
  std::vector<double> amounts;
  for (const auto& [job, amount] : rows) {
    if ((job != 0) == withJob) amounts.push_back(amount);
  }
  return amounts;
}
inline std::vector<double> PayOnFile(const JournalFiles& files, std::int32_t nRecord) {
  return AmountsOnFile(files, nRecord, /*withJob=*/false);
}
inline std::vector<double> LaborOnFile(const JournalFiles& files, std::int32_t nRecord) {
  return AmountsOnFile(files, nRecord, /*withJob=*/true);
}

/// A paycheck that is loaded, and another one that may lie behind it in the file.
class PaycheckFixture : public JournalFixture<PayrollJournal> {
 protected:
  using Amounts = std::vector<double>;

  static constexpr std::int32_t Ours = 1;
  static constexpr std::int32_t Theirs = 2;
  /// Amount of the first row of `Theirs`, which no row of `Ours` has.
  static constexpr double TheirAmount = 77;

  /// Lays our paycheck with rows of these amounts, and theirs behind it, and loads ours.
  void Load(const Amounts& pay, const Amounts& labor) {
    Lay(pay, labor);
    LayTheirs();
    LoadOurs();
  }
  /// The same with nothing behind it.
  void LoadAlone(const Amounts& pay, const Amounts& labor) {
    Lay(pay, labor);
    LoadOurs();
  }
  void Lay(const Amounts& pay, const Amounts& labor) {
    AddPaycheck(files_, {.nRecord = Ours, .journal = tovJournalCodePayroll}, pay, labor);
  }
  void LayTheirs() {
    AddPaycheck(files_, {.nRecord = Theirs, .journal = tovJournalCodePayroll}, {TheirAmount, 78},
                {});
  }
  void LoadOurs() { JournalFixture::Load(Ours); }

  // The amounts of the rows that the journal holds, read one after the other. The last one read
  // stays in hand.
  Amounts PayHeld() {
    Amounts amounts;
    for (std::int16_t i = 1; i <= journal_.NDistributions(); ++i) {
      amounts.push_back(journal_.PayAmount(i));
    }
    return amounts;
  }
  Amounts LaborHeld() {
    Amounts amounts;
    for (std::int16_t i = 1; i <= journal_.NLaborDistributions(); ++i) {
      amounts.push_back(journal_.JobAmount(i));
    }
    return amounts;
  }

  // The amounts of our rows on file.
  [[nodiscard]] Amounts PayOnFile() const { return test::PayOnFile(files_, Ours); }
  [[nodiscard]] Amounts LaborOnFile() const { return test::LaborOnFile(files_, Ours); }
  [[nodiscard]] Amounts AllOnFile() const { return files_.Amounts(Ours); }
};

}  // namespace larkmoor::test
