#include "links/menu_file.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "base/encoding.h"
#include "base/text.h"

namespace brenvo::links {
namespace {

constexpr std::string_view kSeparators = ",\r\n";

}  // namespace

bool ListInput::AtEnd() const { return text_.find_first_not_of(" \r\n", at_) == text_.npos; }

std::string ListInput::Next() {
  if (at_ >= text_.size()) throw std::runtime_error("Il file del menu finisce prima del comando");
  SkipBlanks();
  std::size_t end = 0;
  std::string value;
  if (at_ < text_.size() && text_[at_] == '"') {
    end = std::min(text_.find('"', at_ + 1), text_.size());
    value = text_.substr(at_ + 1, end - at_ - 1);
    at_ = std::min(end + 1, text_.size());
    SkipBlanks();
  } else {
    end = std::min(text_.find_first_of(kSeparators, at_), text_.size());
    value = text_.substr(at_, end - at_);
    at_ = end;
  }
  PassSeparator();
  return value;
}

void ListInput::SkipBlanks() { at_ = std::min(text_.find_first_not_of(' ', at_), text_.size()); }

void ListInput::PassSeparator() {
  if (at_ >= text_.size()) return;
  if (text_.substr(at_).starts_with("\r\n")) {
    at_ += 2;
  } else if (kSeparators.find(text_[at_]) != kSeparators.npos) {
    ++at_;
  }
}

void FillMenu(std::string_view text, forms::EntryArray& CMI, MenuCommands& Comandi) {
  ListInput input(text);
  for (int number = 0; number < kMenuFileEntries && !input.AtEnd(); ++number) {
    const std::string caption = input.Next();
    Comandi[static_cast<std::size_t>(number)] = input.Next();
    if (number > 0) CMI.Add("");
    CMI.SetEntryCaption(number, caption);
  }
}

void FillMenuFromFile(const std::filesystem::path& file, forms::EntryArray& CMI,
                      MenuCommands& Comandi) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw std::runtime_error("Manca il file del menu");
  const std::string content{std::istreambuf_iterator<char>(stream), {}};
  const std::string_view bytes = base::WithoutByteOrderMark(content);
  FillMenu(base::ValidUtf8(bytes) == bytes ? std::string(bytes) : base::FromWindows1252(bytes), CMI,
           Comandi);
}

}  // namespace brenvo::links
