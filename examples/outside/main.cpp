// Makes a company in the folder named on the command line and counts its addresses.
#include <exception>
#include <iostream>

#include <larkmoor/larkmoor.h>

int main(int argc, char** argv) try {
  if (argc != 2) {
    std::cerr << "usage: outside FOLDER\n";
    return 2;
  }
  larkmoor::CreateCompany(argv[1]);

  larkmoor::Btrieve connection;
  if (connection.Connect(argv[1]) != larkmoor::StatusSuccess) return 1;
  larkmoor::Address address;
  if (address.OpenFile() != larkmoor::StatusSuccess) return 1;
  std::cout << "A new company with " << address.RecordCount() << " addresses.\n";
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
