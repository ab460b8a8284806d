// Whatever a file holds, each of its records is imported, repeated or refused.
#include <random>
#include <set>

#include "tests/adif/adif_station.h"
#include "tests/adif/reader_support.h"
#include "tests/support/adif_samples.h"

namespace brenvo::adif {
namespace {

using testing::HasSubstr;

// A file of records that are sound, then damaged in a few places, the same for each seed.
class DamagedFile {
 public:
  explicit DamagedFile(unsigned seed) : chance_(seed) {
    for (int i = 0; i < 12; ++i) text_ += GeneratedRecord(static_cast<std::int64_t>(Below(9)));
  }
  void Add(std::string_view sample) { text_ += sample; }
  const std::string& Damaged() {
    for (std::size_t left = Below(6); left > 0; --left) Damage();
    return text_;
  }

 private:
  std::size_t Below(std::size_t count) { return chance_() % count; }
  void Damage() {
    constexpr std::string_view kStrangers[] = {
        "<EOR>",  "<eoh>",        "<",     ">",    "<CALL:0>",
        "\0\xFF", "<NAME:99999>", "<X:3>", "\r\n", "<CALL:4>IK3A"};
    if (text_.empty()) return;
    const std::size_t at = Below(text_.size());
    switch (Below(4)) {
      case 0:
        text_.erase(at, Below(60));
        break;
      case 1:
        text_[at] = static_cast<char>(Below(256));
        break;
      case 2:
        text_.insert(at, kStrangers[Below(std::size(kStrangers))]);
        break;
      default:
        text_.resize(text_.size() - Below(std::min<std::size_t>(text_.size(), 200)));
        break;
    }
  }

  std::mt19937 chance_;
  std::string text_;
};

std::int64_t Times(std::string_view text, std::string_view word) {
  std::int64_t times = 0;
  for (std::size_t at = text.find(word); at != text.npos; at = text.find(word, at + 1)) ++times;
  return times;
}

class AdifAccountingTest : public AdifStation {
 protected:
  void ExpectAccount(const std::string& text) {
    const auto file = Write("a.adi", text);
    const auto read = static_cast<std::int64_t>(ReadAll(text).size());
    const ImportCounts preview = Preview(file).counts;
    const ImportCounts counts = Import(file);
    EXPECT_EQ(counts.read, read);
    EXPECT_EQ(counts.fresh + counts.repeated + counts.refused, read);
    EXPECT_EQ(Told(counts), Told(preview)) << "the preview tells what the import does";
    EXPECT_EQ(counts.moved, preview.moved);
    EXPECT_EQ(counts.repairs, preview.repairs);
    EXPECT_EQ(Count("select Count(*) from Log"), counts.fresh);
    EXPECT_EQ(Times(Report, "\r\nRiga ") + (Report.starts_with("Riga ") ? 1 : 0), counts.refused);
    const ImportCounts again = Import(file);
    EXPECT_EQ(again.fresh, 0);
    EXPECT_EQ(again.refused, counts.refused);
    EmptyTheLog();
  }
};

TEST_F(AdifAccountingTest, OfDamagedFilesEachRecordIsImportedRepeatedOrRefused) {
  std::set<std::filesystem::path> files;  // in the same order everywhere
  for (const auto& entry : std::filesystem::directory_iterator(Sample(""))) {
    files.insert(entry.path());
  }
  std::vector<std::string> samples;
  for (const auto& file : files) samples.push_back(ReadBytes(file));
  const unsigned damaged = Thoroughly(30u, 2000u);
  for (unsigned seed = 0; seed < damaged; ++seed) {
    SCOPED_TRACE(seed);
    DamagedFile file(seed);
    file.Add(samples[seed % samples.size()]);
    ExpectAccount(file.Damaged());
    if (HasFailure()) return;
  }
}

// Records of a few stations, bands and minutes, so that many stand in the same second.
TEST_F(AdifAccountingTest, ContactsOfTheSameMinuteAreAccountedForAndFoundAgain) {
  constexpr const char* kTimes[] = {"1015",   "101500", "101501", "101530",
                                    "101559", "1016",   "",       "930"};
  constexpr const char* kModes[] = {"CW", "SSB", "USB", "LSB", "RTTY", "FT8", "", "DATA"};
  const unsigned files = Thoroughly(10u, 300u);
  for (unsigned seed = 0; seed < files; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 chance(seed);
    std::string texts[2];
    for (int i = 0; i < 40; ++i) {
      texts[i % 2] += Tagged("CALL", chance() % 2 == 0 ? "I1A" : "I1B") +
                      Tagged("QSO_DATE", "20010203") + Tagged("TIME_ON", kTimes[chance() % 8]) +
                      Tagged("BAND", chance() % 4 == 0 ? "2m" : "20m") +
                      Tagged("MODE", kModes[chance() % 8]) + "<EOR>\n";
    }
    ExpectAccount(texts[0] + texts[1]);
    // What the log has already counts likewise.
    const auto first = Write("a.adi", texts[0]), second = Write("b.adi", texts[1]);
    Import(first);
    const ImportCounts preview = Preview(second).counts;
    const ImportCounts counts = Import(second);
    EXPECT_EQ(Told(counts), Told(preview));
    EXPECT_EQ(counts.moved, preview.moved);
    EXPECT_EQ(Import(first).fresh, 0);
    EXPECT_EQ(Import(second).fresh, 0);
    EmptyTheLog();
    if (HasFailure()) return;
  }
}

// A file of garbage, as large as told, that begins like a log file.
void WriteGarbage(const std::filesystem::path& file, std::int64_t size, std::string_view head,
                  const std::function<void(std::string&)>& fill) {
  std::ofstream out(file, std::ios::binary);
  out << head;
  std::string block(1 << 20, '\0');
  for (std::int64_t written = 0; written < size;
       written += static_cast<std::int64_t>(block.size())) {
    fill(block);
    out << block;
  }
}

void Repeat(std::string& block, std::string_view word) {
  for (std::size_t at = 0; at < block.size(); ++at) block[at] = word[at % word.size()];
}

TEST_F(AdifAccountingTest, GarbageHoweverLargeStoresNothingAndEndsInAClearWord) {
  std::mt19937_64 chance(1);
  const auto random = [&](std::string& block) {
    for (char& c : block) c = static_cast<char>(chance());
  };
  struct Garbage {
    const char* what;
    std::string_view head;
    std::function<void(std::string&)> fill;
    std::int64_t refused;  // records; -1 when the whole file is no log file, -2 however many
  };
  const Garbage kKinds[] = {
      {"bytes", "", random, -1},
      {"bytes behind a header", "<EOH>", random, -2},
      {"angle brackets", "<EOH>", [](std::string& block) { Repeat(block, "<"); }, 0},
      {"words", "<EOH>", [](std::string& block) { Repeat(block, "caro diario\r\n"); }, 0},
      {"one endless field", "<EOH><CALL:999999999>", [](std::string& block) { Repeat(block, "x"); },
       1},
      {"enormous lengths", "<EOH>", [](std::string& block) { Repeat(block, "<CALL:99999999>x "); },
       1},
      {"one endless record", "<EOH>", [](std::string& block) { Repeat(block, "<CALL:5>IK3AB "); },
       1},
      {"an endless tag", "<EOH><", [](std::string& block) { Repeat(block, "CALL"); }, 0}};
  const std::int64_t size = Thoroughly(std::int64_t{2} << 20, std::int64_t{1} << 30);
  const auto file = directory.Path() / "garbage.adi";
  for (const Garbage& kind : kKinds) {
    SCOPED_TRACE(kind.what);
    WriteGarbage(file, size, kind.head, kind.fill);
    try {
      const ImportPreview preview = Preview(file);
      EXPECT_NE(kind.refused, -1) << "it is no log file";
      if (kind.refused >= 0) {
        EXPECT_EQ(preview.counts.refused, kind.refused);
      }
      EXPECT_EQ(preview.counts.read, preview.counts.refused);
      EXPECT_EQ(preview.damaged, preview.counts.refused);
      EXPECT_EQ(Told(Import(file)), Told(preview.counts));
    } catch (const std::runtime_error& failure) {
      EXPECT_EQ(kind.refused, -1) << failure.what();
      EXPECT_THAT(failure.what(), HasSubstr("garbage.adi non è un file ADIF"));
    }
  }
  EXPECT_EQ(Count("select Count(*) from Log"), 0);
}

}  // namespace
}  // namespace brenvo::adif
