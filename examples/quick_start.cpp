#include <filesystem>
#include <iostream>

#include <larkmoor/larkmoor.h>

int main() {
  using larkmoor::StatusSuccess;
  if (!std::filesystem::exists("fjord")) larkmoor::CreateCompany("fjord", {.Name = "Fjord Tools"});
  larkmoor::Btrieve connection;
  if (connection.Connect("fjord") != StatusSuccess) return 1;

  larkmoor::Address address;
  if (address.OpenFile() != StatusSuccess) return 1;
  address.CustomerRecordNumber(7);
  address.Name("Åse Lindqvist");
  address.City("Tromsø");
  if (address.Insert() != StatusSuccess) return 1;

  auto status = address.GetFirstForCustomer(7);
  for (; status == StatusSuccess && address.CustomerRecordNumber() == 7;
       status = address.GetNextByCustomer())
    std::cout << address.Name() << " lives in " << address.City() << '\n';
}
