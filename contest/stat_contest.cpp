#include "contest/stat_contest.h"

#include <cmath>

#include "base/number.h"
#include "contact.h"
#include "score.h"
#include "staging.h"
#include "core/transaction.h"

namespace brenvo {

StatContest::StatContest(Session& session)
    : Window(session.Host(), "StatContest", "Statistiche Contest", Twips(4800), Twips(3900)),
      session_(session) {
  for (TextField* field : {&TotaleQso, &QrbTotale, &NrSquare, &NrCountry, &NrExch, &PunteggioTotale,
                           &MediaPunti, &QrbMax, &QsoMaxQrb}) {
    field->ReadOnly = true;
  }
  DefaultCommand = CancelCommand = &cmExit;
}

void StatContest::Load() {
  const ContestContext contest = session_.CurrentContest;
  const BusyPointer busy(Host());
  const std::vector<ScoredContact> contacts =
      ReadScoredContacts(session_.Db, contest.DataContest, contest.Banda);
  // Around the counting as well: each look into the prefix table would lock the file for itself.
  Transaction transaction(session_.Db);
  if (contacts.empty()) {
    Close();
    StageMultipliers(session_.Db, {}, {}, {});
    transaction.Commit();
    throw DatabaseError(DatabaseError::kNoCurrentRecord, "Il contest non ha qso");
  }
  const Tally tally = TallyOf(contacts, CountriesOf(session_));
  StageMultipliers(session_.Db, tally.Squares.Texts(), tally.Countries.Texts(),
                   tally.Exchanges.Texts());
  transaction.Commit();

  TotaleQso.SetText(std::to_string(tally.TotaleQso));
  QrbTotale.SetText(PlainNumber(tally.TotaleQrb));
  const auto show = [](bool counts, TextField& field, const DistinctTexts& texts) {
    if (counts) field.SetText(std::to_string(texts.Count()));
  };
  show(contest.MoltSquare, NrSquare, tally.Squares);
  show(contest.MoltCountry, NrCountry, tally.Countries);
  show(contest.MoltExch, NrExch, tally.Exchanges);
  const double score = ScoreOf(tally, {contest.MoltSquare, contest.MoltCountry, contest.MoltExch});
  PunteggioTotale.SetText(PlainNumber(score));
  MediaPunti.SetText(PlainNumber(std::floor(score / static_cast<double>(tally.TotaleQso))));
  QrbMax.SetText(PlainNumber(tally.MaxQrb));
  QsoMaxQrb.SetText(std::to_string(tally.ProgrMaxQrb));
}

}  // namespace brenvo
