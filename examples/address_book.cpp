// A small address book, to copy from: connect, open, write, walk, find, change, delete, close, with
// every status looked at.
//
//     address_book FOLDER
//
// The company in FOLDER is made where there is none.
#include <cstdint>
#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string_view>

#include <larkmoor/larkmoor.h>

#include "check.h"

namespace {

using example::Check;
using larkmoor::Status;
using larkmoor::StatusEndOfFile;
using larkmoor::StatusKeyNotFound;
using larkmoor::StatusSuccess;

constexpr std::int32_t Harbourmaster = 12;
constexpr std::int32_t Bakery = 7;

void Show(larkmoor::Address& address) {
  std::cout << "  " << address.AddressRecordNumber() << ": " << address.Name() << ", "
            << address.AddressLine1() << ", " << address.Zipcode() << ' ' << address.City() << '\n';
}

// Sets the fields of the record in hand and adds it. A new record gets its number from the file,
// since its AddressRecordNumber is 0.
void Add(larkmoor::Address& address, std::int32_t customer, std::int32_t type,
         std::string_view name, std::string_view street, std::string_view postcode,
         std::string_view town) {
  address.AddressRecordNumber(0);
  address.CustomerRecordNumber(customer);
  address.AddressTypeNumber(type);
  address.Name(name);
  address.AddressLine1(street);
  address.Zipcode(postcode);
  address.City(town);
  Check(address.Insert(), "Adding an address");
}

// Many records cost little when one commit takes them all: either all are in the file afterwards,
// or none is.
void AddAll(larkmoor::Address& address) {
  larkmoor::BulkWrite bulk;
  Add(address, Harbourmaster, 0, "Havnekontoret", "Strandgata 4", "9008", "Tromsø");
  Add(address, Bakery, 0, "Boulangerie Lefèvre", "3 rue des Échevins", "14000", "Caen");
  Add(address, Bakery, 1, "Boulangerie Lefèvre, dépôt", "18 quai Vendeuvre", "14000", "Caen");
  Add(address, Harbourmaster, 1, "Havnekontoret, Lager", "Skippergata 21", "9008", "Tromsø");
  Check(bulk.Commit(), "Writing the addresses");
}

// A keyed walk goes on to the next customer's addresses when one customer's are done, so the walk
// compares; behind the last address of all it meets the end of the file.
void WalkCustomer(larkmoor::Address& address, std::int32_t customer) {
  std::cout << "Addresses of customer " << customer << ":\n";
  Status status = address.GetFirstForCustomer(customer);
  while (status == StatusSuccess && address.CustomerRecordNumber() == customer) {
    Show(address);
    status = address.GetNextByCustomer();
  }
  if (status != StatusEndOfFile) Check(status, "Walking the customer's addresses");
}

// Physical order is the order in which the records were added.
void WalkAll(larkmoor::Address& address) {
  std::cout << "All " << address.RecordCount() << " addresses as they were added:\n";
  Status status = address.StepFirst();
  while (status == StatusSuccess) {
    Show(address);
    status = address.StepNext();
  }
  if (status != StatusEndOfFile) Check(status, "Walking the addresses");
}

// An update rewrites the record that was last read. It answers 80 where someone else changed that
// record in the meantime: read it again, and decide again.
void MoveAcrossTheStreet(larkmoor::Address& address, std::int32_t number) {
  Check(address.GetEqual(number), "Finding the address");
  address.AddressLine1("Strandgata 5");
  Check(address.Update(), "Changing the address");
  std::cout << "Moved across the street:\n";
  Show(address);
}

void Remove(larkmoor::Address& address, std::int32_t number) {
  Check(address.GetEqual(number), "Finding the address");
  Check(address.Delete(), "Deleting the address");
  if (const Status status = address.GetEqual(number); status != StatusKeyNotFound)
    throw std::logic_error("The deleted address is still there.");
  std::cout << "Address " << number << " is gone.\n";
}

void KeepAddressBook(const std::filesystem::path& folder) {
  if (!std::filesystem::exists(folder)) larkmoor::CreateCompany(folder, {.Name = "Nordlys"});

  larkmoor::Btrieve connection;
  Check(connection.Connect(folder.string()).ToInteger(), "Connecting");

  // A table knows the company from the connection. It keeps its own place in the file: two objects
  // on one file are two readers.
  larkmoor::Address address;
  Check(address.OpenFile(), "Opening the addresses");
  AddAll(address);
  WalkCustomer(address, Bakery);
  MoveAcrossTheStreet(address, 1);
  Remove(address, 3);
  WalkAll(address);

  Check(address.CloseFile(), "Closing the addresses");
  Check(connection.Disconnect().ToInteger(), "Disconnecting");
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc != 2) {
    std::cerr << "usage: address_book FOLDER\n";
    return 2;
  }
  KeepAddressBook(argv[1]);
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
