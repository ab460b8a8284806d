#include "measure_prefixes/call_list.h"

#include <fstream>
#include <stdexcept>

namespace brenvo::measure_prefixes {

std::vector<std::string> ReadCalls(const std::filesystem::path& file) {
  std::ifstream in(file);
  if (!in) throw std::runtime_error(file.string() + ": cannot be read");
  std::vector<std::string> calls;
  for (std::string line; std::getline(in, line);) {
    while (!line.empty() && (line.back() == '\r' || line.back() == ' ')) line.pop_back();
    if (!line.empty() && line.front() != '#') calls.push_back(line);
  }
  return calls;
}

}  // namespace brenvo::measure_prefixes
