// drive DIR < script: runs the station of an application directory from a script.
#include <iostream>

#include "tools/drive/driver.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "drive DIR < script\n";
    return 2;
  }
  brenvo::Driver driver(argv[1], [](const std::string& line) { std::cout << line << '\n'; });
  const auto failure = driver.Run(std::cin);
  std::cout.flush();
  if (!failure) return 0;
  std::cerr << "drive: ";
  if (failure->line > 0) std::cerr << "line " << failure->line << ": ";
  std::cerr << failure->reason << '\n';
  return 1;
}
