#include "connection/shared_routines.h"

#include <algorithm>

#include <larkmoor/error.h>
#include <larkmoor/variant.h>

#include "connection/message_boxes.h"
#include "connection/shared_state.h"
#include "connection/status_messages.h"
#include "engine/records/default_customer_data.h"
#include "engine/records/default_vendor_data.h"
#include "engine/records/employee.h"
#include "engine/records/general_data.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/tovrin_file.h"
#include "engine/tovrin_file_names.h"
#include "engine/tovrin_record.h"

namespace larkmoor {
namespace {

/// What the largest numbers answer where the header file does not open.
constexpr std::int32_t NotOpened = -1;

/// A company file with its record, on objects of the call's own. The end releases the file.
struct OwnFile {
  OwnFile(std::string_view name, std::int16_t mode, const RecordDescription& description)
      : record(description),
        openStatus(file.btOpen(Shared().gCompanyPath + std::string(name), mode)) {
    if (IsOpen()) record.AttachBuffer(file.RecordBuffer());
  }
  [[nodiscard]] bool IsOpen() const { return openStatus == StatusSuccess; }

  TovrinFile file;
  Tovrin2Record record;
  Status openStatus;
};

/// The same, closed at the end.
struct BriefFile : OwnFile {
  using OwnFile::OwnFile;
  ~BriefFile() { file.btClose(); }
};

/// The general file. Its rows are told apart by a number, and each kind has a record of its own.
struct GeneralFile : BriefFile {
  explicit GeneralFile(const RecordDescription& description)
      : BriefFile(TovrinFileNames::GeneralFile(), TovrinFile::NormalMode, description) {}
  Status GetRow(std::int16_t number) {
    file.KeyWord(number, 0);
    return file.btGetEqual(0);
  }
};

/// Where the general file keeps one of the document numbers.
struct DocumentNumber {
  std::int16_t row;
  const RecordDescription& (*describe)();
  const Field& field;
};

constexpr DocumentNumber LastPONumber{2, DefaultVendorDataRecord::Describe,
                                      DefaultVendorDataRecord::LastPONumber};
constexpr DocumentNumber NextInvoiceNumber{1, DefaultCustomerDataRecord::Describe,
                                           DefaultCustomerDataRecord::NextInvoiceNumber};
constexpr DocumentNumber NextQuoteNumber{1, DefaultCustomerDataRecord::Describe,
                                         DefaultCustomerDataRecord::NextQuoteNumber};
constexpr DocumentNumber NextSONumber{1, DefaultCustomerDataRecord::Describe,
                                      DefaultCustomerDataRecord::NextSONumber};

std::string ReadNumber(const DocumentNumber& number) {
  GeneralFile general(number.describe());
  if (!general.IsOpen() || general.GetRow(number.row) != StatusSuccess) return {};
  return general.record.GetText(number.field);
}

Status WriteNumber(const DocumentNumber& number, std::string_view value) {
  GeneralFile general(number.describe());
  if (!general.IsOpen()) return StatusFileNotOpen;
  if (general.GetRow(number.row) != StatusSuccess) return StatusKeyNotFound;
  general.record.SetText(number.field, value);
  return general.file.btUpdate(0);
}

std::int32_t FindEmployeeIndex(std::string_view id) {
  BriefFile employees("Employee.dat", TovrinFile::ReadOnlyMode, EmployeeRecord::Describe());
  if (!employees.IsOpen()) {
    RaiseBtrieveError(ErrorOpen, "Employee.OpenFile failed", employees.openStatus);
  }
  employees.file.KeyTerminated(id, 0);
  const Status status = employees.file.btGetEqual(0);
  if (status != StatusSuccess) {
    RaiseBtrieveError(ErrorRead, "Employee.GetEqual(" + std::string(id) + ") failed", status);
  }
  return employees.record.GetLong(EmployeeRecord::Index);
}

/// Key 0 of the journal's first transaction in the period.
void WriteTransactionKey(TovrinFile& headers, std::int16_t period, std::int16_t journal) {
  headers.KeyByte(0, 0);
  headers.KeyLong(1, 1);
  headers.KeyWord(period, 5);
  headers.KeyWord(journal, 7);
  headers.KeyByte(0, 9);
}

}  // namespace

std::int32_t EmployeeIndexFromID(std::string_view id) {
  if (id.empty()) return 0;
  try {
    return FindEmployeeIndex(id);
  } catch (const Error& error) {
    ShowMessageBox("Error getting SalesRep index:\r\n" + std::to_string(error.Number()) + ":" +
                   error.Description());
    return 0;
  }
}

// Neither the read nor the update is looked at: where the counters cannot be kept, the caller's own
// work goes on.
bool IncrementBatchEntry(std::int16_t index) {
  constexpr std::int16_t BatchCounters = 4;
  constexpr std::uint8_t True = 0xFF;  // -1 in a byte
  GeneralFile general(GeneralDataRecord::Describe());
  if (!general.IsOpen()) return false;
  general.GetRow(BatchCounters);
  general.record.SetByte(GeneralDataRecord::BatchFlag, True, index);
  // A full counter overflows as an Integer does, and nothing is written.
  const Variant count(general.record.GetInteger(GeneralDataRecord::BatchEntryCount, index) + 1);
  general.record.SetInteger(GeneralDataRecord::BatchEntryCount, count.ToInteger(), index);
  general.file.btUpdate(0);
  return true;
}

std::int32_t MaxNRecord() {
  BriefFile headers(TovrinFileNames::JrnlHdrFile(), TovrinFile::ReadOnlyMode,
                    JrnlHdrRecord::Describe());
  if (!headers.IsOpen()) return NotOpened;
  const bool isFound = headers.file.btGetLast(1) == StatusSuccess;
  return isFound ? headers.record.GetLong(JrnlHdrRecord::NRecord) : 1;
}

std::int32_t MaxTrxNumber(std::int16_t period, std::int16_t journal) {
  // Released and not closed: a close would wait for the disk.
  OwnFile headers(TovrinFileNames::JrnlHdrFile(), TovrinFile::ReadOnlyMode,
                  JrnlHdrRecord::Describe());
  if (!headers.IsOpen()) return NotOpened;
  WriteTransactionKey(headers.file, period, journal);
  const Tovrin2Record& header = headers.record;
  std::int32_t maximum = 0;
  for (Status status = headers.file.btGetGreaterOrEqual(0);
       status == StatusSuccess && header.GetInteger(JrnlHdrRecord::Period) == period &&
       header.GetInteger(JrnlHdrRecord::JournalID) == journal;
       status = headers.file.btGetNext(0)) {
    maximum = std::max(maximum, header.GetLong(JrnlHdrRecord::TrxNumberL));
  }
  return maximum;
}

std::string ReadLastPONumber() { return ReadNumber(LastPONumber); }
Status WriteLastPONumber(std::string_view value) { return WriteNumber(LastPONumber, value); }
std::string ReadNextInvoiceNumber() { return ReadNumber(NextInvoiceNumber); }
Status WriteNextInvoiceNumber(std::string_view value) {
  return WriteNumber(NextInvoiceNumber, value);
}
std::string ReadNextQuoteNumber() { return ReadNumber(NextQuoteNumber); }
Status WriteNextQuoteNumber(std::string_view value) { return WriteNumber(NextQuoteNumber, value); }
std::string ReadNextSONumber() { return ReadNumber(NextSONumber); }
Status WriteNextSONumber(std::string_view value) { return WriteNumber(NextSONumber, value); }

}  // namespace larkmoor
