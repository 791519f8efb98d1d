#include "connection/status_messages.h"
#include "crossref/ticket_parts.h"

namespace larkmoor {
namespace {

// What `CompletedForID` refers to, by `CustJobAdmin`.
constexpr std::int16_t ForCustomer = 1;
constexpr std::int16_t ForJob = 2;

constexpr std::int16_t ByTicketNumber = 5;

// What a reference raises. The words name other properties than the one that asks, and differ in
// case.

constexpr std::string_view CompletedForOpen = "Ticket.CompletedForId";
constexpr std::string_view CompletedFor = "Ticket.CompletedForID";
constexpr std::string_view RecordedByOpen = "Ticket.RecordedById";
constexpr std::string_view RecordedBy = "Ticket.RecordedByID";

constexpr ReferenceErrors CustomerErrors{{ErrorOpen, CompletedForOpen, "->Customer.Open"},
                                         {ErrorOpen, CompletedForOpen, "->Customer.Open"},
                                         {ErrorRead, CompletedFor, "->Customer.GetForIndex("},
                                         {ErrorRead, CompletedFor, "->Customer.GetEqual("}};
constexpr ReferenceErrors JobErrors{{ErrorOpen, CompletedForOpen, "->Job.Open"},
                                    {ErrorOpen, CompletedForOpen, "->Job.Open"},
                                    {ErrorRead, CompletedFor, "->Job.GetForIndex("},
                                    {ErrorRead, CompletedFor, "->Job.GetEqual("}};
constexpr ReferenceErrors CostErrors{{ErrorOpen, CompletedForOpen, "->Cost.Open"},
                                     {ErrorOpen, CompletedForOpen, "->Cost.Open"},
                                     {ErrorRead, CompletedFor, "->Cost.GetForIndex("},
                                     {ErrorRead, CompletedFor, "->Cost.GetEqual("}};
constexpr ReferenceErrors PhaseErrors{{ErrorOpen, CompletedForOpen, "->Phase.Open"},
                                      {ErrorOpen, CompletedForOpen, "->Phase.Open"},
                                      {ErrorRead, CompletedFor, "->Phase.GetForIndex("},
                                      {ErrorRead, CompletedFor, "->Phase.GetEqual("}};
constexpr ReferenceErrors EmployeeErrors{{ErrorOpen, RecordedBy, "->Employee.Open"},
                                         {ErrorOpen, RecordedByOpen, "->Employee.Open"},
                                         {ErrorRead, RecordedBy, "->Employee.GetForIndex("},
                                         {ErrorRead, RecordedBy, "->Employee.GetEqual("}};
constexpr ReferenceErrors VendorErrors{{ErrorOpen, RecordedByOpen, "->Vendor.Open"},
                                       {ErrorOpen, RecordedByOpen, "->Vendor.Open"},
                                       {ErrorRead, RecordedBy, "->Vendor.GetForIndex("},
                                       {ErrorRead, RecordedBy, "->Vendor.GetEqual("}};

/// The indexes of people and jobs go through 16 bits: one that does not fit raises error 6.
std::int16_t Narrow(std::int32_t index) { return Variant(index).ToInteger(); }

}  // namespace

// --- Operations ---

Status Ticket::OpenFile() {
  const Status status = parts_->table.OpenFile();
  if (status != StatusSuccess) return status;
  for (MasterLookUp* each : parts_->LookUps()) each->Mark(false);
  return status;
}

Status Ticket::CloseFile() {
  const Status status = parts_->table.CloseFile();
  for (MasterLookUp* each : parts_->LookUps()) {
    if (each->IsOpen()) each->Close();
  }
  return status;
}

// --- Properties ---

std::string Ticket::CompletedForID() {
  const Tovrin2Record& ticket = parts_->table.Record();
  switch (CustJobAdmin()) {
    case ForCustomer:
      return parts_->customers.ReferenceID(Narrow(ticket.GetLong(TicketRecord::CustomerIndex)),
                                           CustomerErrors);
    case ForJob:
      return parts_->jobs.ReferenceID(Narrow(ticket.GetLong(TicketRecord::JobIndex)), JobErrors);
    default:
      return {};
  }
}

// The empty text takes the customer away, whoever the ticket is for; so does a file of customers
// that cannot be opened.
void Ticket::CompletedForID(std::string_view value) {
  Tovrin2Record& ticket = parts_->table.Record();
  if (value.empty()) return ticket.SetLong(TicketRecord::CustomerIndex, 0);
  switch (CustJobAdmin()) {
    case ForCustomer:
      if (!parts_->customers.IsOpen()) {
        const Status status = parts_->customers.Open();
        if (status != StatusSuccess) {
          CompletedForID("");
          Raise(CustomerErrors.openByID, "", status);
        }
      }
      return ticket.SetLong(TicketRecord::CustomerIndex,
                            parts_->customers.ReferenceIndex(value, CustomerErrors));
    case ForJob:
      return ticket.SetLong(TicketRecord::JobIndex, parts_->jobs.ReferenceIndex(value, JobErrors));
    default:
      return;
  }
}

std::string Ticket::CostID() {
  return parts_->costs.ReferenceID(parts_->table.Record().GetLong(TicketRecord::CostIndex),
                                   CostErrors);
}

void Ticket::CostID(std::string_view value) {
  parts_->table.Record().SetLong(TicketRecord::CostIndex,
                                 parts_->costs.ReferenceIndex(value, CostErrors));
}

std::string Ticket::PhaseID() {
  return parts_->phases.ReferenceID(parts_->table.Record().GetLong(TicketRecord::PhaseIndex),
                                    PhaseErrors);
}

void Ticket::PhaseID(std::string_view value) {
  parts_->table.Record().SetLong(TicketRecord::PhaseIndex,
                                 parts_->phases.ReferenceIndex(value, PhaseErrors));
}

std::string Ticket::RecordedByID() {
  const std::int16_t index = Narrow(parts_->table.Record().GetLong(TicketRecord::RecordedByIndex));
  return VendorFlag() ? parts_->vendors.ReferenceID(index, VendorErrors)
                      : parts_->employees.ReferenceID(index, EmployeeErrors);
}

// The empty text takes the customer away, and leaves who recorded the ticket.
void Ticket::RecordedByID(std::string_view value) {
  Tovrin2Record& ticket = parts_->table.Record();
  if (value.empty()) return ticket.SetLong(TicketRecord::CustomerIndex, 0);
  ticket.SetLong(TicketRecord::RecordedByIndex,
                 VendorFlag() ? Narrow(parts_->vendors.ReferenceIndex(value, VendorErrors))
                              : parts_->employees.ReferenceIndex(value, EmployeeErrors));
}

// On a file object of its own, so that nobody's walk is disturbed.
std::string Ticket::LastTicketNumber() {
  std::string last = "000000";
  RecordFile tickets(TicketRecord::Describe(), TovrinFileNames::TicketFile());
  if (tickets.Open() != StatusSuccess) return last;
  if (tickets.File().btGetLast(ByTicketNumber) == StatusSuccess) {
    last = tickets.Record().GetText(TicketRecord::TicketNumber);
  }
  tickets.Close();
  return last;
}

}  // namespace larkmoor
