// Runs a target without a fuzzer: every seed, then inputs made of them for some seconds.
// replay SEEDS SECONDS. The input that ends the target is left in the file "crash".
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr std::size_t kLongest = 4096;
std::string input;

void KeepInput(int) {
  if (std::FILE* file = std::fopen("crash", "wb")) {
    std::fwrite(input.data(), 1, input.size(), file);
    std::fclose(file);
  }
}

void Run() {
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

std::vector<std::string> ReadSeeds(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  std::vector<std::string> seeds{""};
  for (const auto& file : files) {
    std::ifstream stream(file, std::ios::binary);
    seeds.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
  }
  return seeds;
}

class Mutator {
 public:
  explicit Mutator(const std::vector<std::string>& seeds) : seeds_(seeds) {}

  std::string Next() {
    std::string text = Seed();
    for (std::size_t changes = 1 + Below(6); changes > 0; --changes) Change(text);
    text.resize(std::min(text.size(), kLongest));
    return text;
  }

 private:
  std::size_t Below(std::size_t bound) { return bound == 0 ? 0 : random_() % bound; }
  const std::string& Seed() { return seeds_[Below(seeds_.size())]; }
  // A piece of a seed.
  std::string Piece() {
    const std::string& seed = Seed();
    return seed.substr(Below(seed.size() + 1), Below(40));
  }
  void Change(std::string& text) {
    const std::size_t at = Below(text.size() + 1);
    switch (Below(6)) {
      case 0:
        text.insert(at, 1, static_cast<char>(Below(256)));
        break;
      case 1:
        text.erase(at, 1 + Below(20));
        break;
      case 2:
        text.insert(at, Piece());
        break;
      case 3:
        text.insert(at, 1 + Below(300), static_cast<char>(Below(256)));
        break;
      case 4:
        text = text.substr(0, at) + Piece();
        break;
      default:
        if (at < text.size()) text[at] = static_cast<char>(text[at] ^ (1 << Below(8)));
    }
  }

  const std::vector<std::string>& seeds_;
  std::mt19937_64 random_{20010203};
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  std::signal(SIGABRT, KeepInput);
  const std::vector<std::string> seeds = ReadSeeds(argv[1]);
  for (const std::string& seed : seeds) {
    input = seed;
    Run();
  }
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(std::atoi(argv[2]));
  Mutator mutator(seeds);
  long made = 0;
  for (; std::chrono::steady_clock::now() < end; ++made) {
    input = mutator.Next();
    Run();
  }
  std::printf("%zu seeds, %ld inputs made of them\n", seeds.size(), made);
  return 0;
}
