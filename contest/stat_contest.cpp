#include "contest/stat_contest.h"

#include <cmath>

#include "base/number.h"
#include "contact.h"
#include "core/transaction.h"
#include "score.h"
#include "staging.h"

namespace brenvo::contest {

StatContest::StatContest(core::Session& session)
    : forms::Window(session.Host(), "StatContest", "Statistiche Contest", base::Twips(4800),
                    base::Twips(3900)),
      session_(session) {
  for (forms::TextField* field : {&TotaleQso, &QrbTotale, &NrSquare, &NrCountry, &NrExch,
                                  &PunteggioTotale, &MediaPunti, &QrbMax, &QsoMaxQrb}) {
    field->ReadOnly = true;
  }
  DefaultCommand = CancelCommand = &cmExit;
}

void StatContest::Load() {
  const core::ContestContext contest = session_.Handed.CurrentContest;
  const forms::BusyPointer busy(Host());
  const std::vector<ScoredContact> contacts =
      ReadScoredContacts(session_.Db, contest.DataContest, contest.Banda);
  // Around the counting as well: each look into the prefix table would lock the file for itself.
  core::Transaction transaction(session_.Db);
  if (contacts.empty()) {
    Close();
    StageMultipliers(session_.Db, {}, {}, {});
    transaction.Commit();
    throw engine::DatabaseError(engine::DatabaseError::kNoCurrentRecord, "Il contest non ha qso");
  }
  const Tally tally = TallyOf(contacts, CountriesOf(session_));
  StageMultipliers(session_.Db, tally.Squares.Texts(), tally.Countries.Texts(),
                   tally.Exchanges.Texts());
  transaction.Commit();

  TotaleQso.SetText(std::to_string(tally.TotaleQso));
  QrbTotale.SetText(base::PlainNumber(tally.TotaleQrb));
  const auto show = [](bool counts, forms::TextField& field, const DistinctTexts& texts) {
    if (counts) field.SetText(std::to_string(texts.Count()));
  };
  show(contest.MoltSquare, NrSquare, tally.Squares);
  show(contest.MoltCountry, NrCountry, tally.Countries);
  show(contest.MoltExch, NrExch, tally.Exchanges);
  const double score = ScoreOf(tally, {contest.MoltSquare, contest.MoltCountry, contest.MoltExch});
  PunteggioTotale.SetText(base::PlainNumber(score));
  MediaPunti.SetText(base::PlainNumber(std::floor(score / static_cast<double>(tally.TotaleQso))));
  QrbMax.SetText(base::PlainNumber(tally.MaxQrb));
  QsoMaxQrb.SetText(std::to_string(tally.ProgrMaxQrb));
}

}  // namespace brenvo::contest
