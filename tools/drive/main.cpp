// drive DIR < script: runs the station of an application directory from a script.
#include <iostream>

#include "core/files.h"
#include "drive/driver.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "drive DIR < script\n";
    return 2;
  }
  if (const std::string why = brenvo::core::WhyNotEntered(argv[1]); !why.empty()) {
    std::cerr << "drive: " << why << '\n';
    return 2;
  }
  try {
    brenvo::drive::Driver driver(argv[1],
                                 [](const std::string& line) { std::cout << line << '\n'; });
    const auto failure = driver.Run(std::cin);
    std::cout.flush();
    if (!failure) return 0;
    std::cerr << "drive: ";
    if (failure->line > 0) std::cerr << "line " << failure->line << ": ";
    std::cerr << failure->reason << '\n';
  } catch (const std::exception& failure) {
    std::cout.flush();
    std::cerr << "drive: " << brenvo::core::FailureText(failure) << '\n';
  }
  return 1;
}
