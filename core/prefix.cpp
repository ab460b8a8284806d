#include "core/prefix.h"

#include "base/text.h"
#include "core/session.h"

namespace brenvo::core {
namespace {

bool IsDigit(char32_t c) { return c >= '0' && c <= '9'; }

// Puts the table on the first row of exactly this prefix; false when there is none.
bool SeekPrefix(engine::Table& prefissi, std::string_view prefix) {
  // The prefix alone is one look into the index where the whole key takes four, and leads to the
  // same row unless that has no zone.
  prefissi.Seek(engine::SeekComparison::kGreaterOrEqual, {prefix});
  if (prefissi.NoMatch()) return false;
  if (prefissi.Field("Zona CQ").Number() <= 0) {
    prefissi.Seek(engine::SeekComparison::kGreaterOrEqual, {prefix, 0, 0, ""});
  }
  return !prefissi.NoMatch() && prefissi.Field("Prefisso").Text() == prefix;
}

}  // namespace

std::string PrefixCandidate(std::string_view call) {
  const std::u32string c = base::Characters(call);
  std::size_t i = 1;
  while (i < c.size() && !IsDigit(c[i])) ++i;
  if (i + 1 >= c.size()) return {};
  while (i + 1 < c.size() && IsDigit(c[i + 1])) ++i;
  if (i + 1 >= c.size()) return {};
  return base::FromCharacters(std::u32string_view(c).substr(0, i + 1));
}

ResolvedPrefix ResolvePrefix(engine::Table& prefissi, std::string_view call) {
  const std::string candidate = PrefixCandidate(call);
  if (candidate.empty() || !SeekPrefix(prefissi, candidate)) return {};
  return {candidate, prefissi.Field("Country").Text(), prefissi.Field("Zona CQ"),
          prefissi.Field("Zona ITU"), prefissi.Field("Continente")};
}

ResolvedPrefix ResolvePrefix(Session& session, std::string_view call) {
  return ResolvePrefix(*session.Tables.TbPrefissi, call);
}

}  // namespace brenvo::core
