// What the load does to the records of three tables, in the words of each class.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include <larkmoor/masters/chart.h>
#include <larkmoor/masters/customer.h>
#include <larkmoor/status.h>
#include <larkmoor/tables/address.h>

#include "concurrency/load_ledger.h"

namespace larkmoor::test {

/// For each table: its name, the read of a record by its number, the number, a text that follows
/// `LastUpdateCounter`, and what a new record has that asks for the next number.
template <typename Table>
struct Traits;

template <>
struct Traits<Address> {
  static constexpr const char* Name = "Address";
  static constexpr Counted Place = Counted::Address;
  static Status Get(Address& table, std::int32_t number) { return table.GetEqual(number); }
  static std::int32_t Number(Address& table) { return table.AddressRecordNumber(); }
  static std::string Mark(Address& table) { return table.City(); }
  static void SetMark(Address& table, std::string_view mark) {
    table.City(mark);
    // A key of the record that changes with it.
    table.VendorRecordNumber(table.LastUpdateCounter());
  }
  static void SetNew(Address& table, std::int32_t worker, std::int32_t serial) {
    table.AddressRecordNumber(0);
    table.CustomerRecordNumber(worker);
    table.AddressTypeNumber(serial);
  }
  static GivenNumbers& Given(LoadLedger& ledger) { return ledger.addresses; }
};

template <>
struct Traits<Customer> {
  static constexpr const char* Name = "Customer";
  static constexpr Counted Place = Counted::Customer;
  static Status Get(Customer& table, std::int32_t number) { return table.GetForIndex(number); }
  static std::int32_t Number(Customer& table) { return table.Index(); }
  static std::string Mark(Customer& table) { return table.Contact(); }
  static void SetMark(Customer& table, std::string_view mark) { table.Contact(mark); }
  static void SetNew(Customer& table, std::int32_t worker, std::int32_t serial) {
    table.Index(0);
    table.CustomerID("C" + std::to_string(worker) + "." + std::to_string(serial));
  }
  static GivenNumbers& Given(LoadLedger& ledger) { return ledger.customers; }
};

template <>
struct Traits<Chart> {
  static constexpr const char* Name = "Chart";
  static constexpr Counted Place = Counted::Chart;
  static Status Get(Chart& table, std::int32_t number) { return table.GetEqual(number); }
  static std::int32_t Number(Chart& table) { return table.Index(); }
  static std::string Mark(Chart& table) { return table.AccountDescription(); }
  static void SetMark(Chart& table, std::string_view mark) { table.AccountDescription(mark); }
  static void SetNew(Chart& table, std::int32_t worker, std::int32_t serial) {
    table.Index(0);
    table.AccountID("A" + std::to_string(worker) + "." + std::to_string(serial));
  }
  static GivenNumbers& Given(LoadLedger& ledger) { return ledger.accounts; }
};

}  // namespace larkmoor::test
