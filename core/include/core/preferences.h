// What the operator may choose beside the told windows' own settings: a table of data, and the door
// to what was chosen.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "forms/signal.h"
#include "platform/settings_store.h"

namespace brenvo::core {

class Session;

struct YesNoKind {
  bool standard = false;
};
struct NumberKind {
  int standard = 0, least = 0, most = 0;
};
struct TextKind {
  std::string_view standard{};
  // Why the text will not do, empty when it will; null where any text will.
  std::string (*fault)(Session& session, std::string_view text) = nullptr;
};
// The first word is the standard.
struct WordKind {
  std::span<const std::string_view> words;
};

struct Choice {
  std::string_view section, key;  // of the settings store
  std::string_view name;          // what it is about
  std::string_view what;          // what it does, in one line
  std::variant<YesNoKind, NumberKind, TextKind, WordKind> kind;
};

namespace choice {

std::string FaultOfZone(Session& session, std::string_view zone);

inline constexpr Choice kClocks{"Ora", "Orologi", "Orologi",
                                "Mostra l'ora UTC e l'ora locale nella finestra principale",
                                YesNoKind{true}};
inline constexpr Choice kSeconds{"Ora", "Secondi", "Secondi negli orologi",
                                 "Gli orologi mostrano i secondi", YesNoKind{true}};
inline constexpr Choice kZone{"Ora", "Zona", "Fuso orario",
                              "Fuso dell'ora locale, come Europe/Rome; vuoto è quello del computer",
                              TextKind{"", FaultOfZone}};

inline constexpr Choice kKeepsLink{
    "Log", "Tiene", "Nuovo Qso: tiene il collegamento",
    "Un nuovo Qso comincia con banda, modo, frequenza e potenza del precedente", YesNoKind{false}};
inline constexpr Choice kReportsByMode{
    "Log", "Rapporti", "Rapporti dal modo",
    "Un nuovo Qso e un altro modo mettono i due rapporti: 59, 599 o quello del profilo",
    YesNoKind{false}};
inline constexpr Choice kStatusByBand{"Log", "Esito", "Esito a ogni banda",
                                      "Cambiata la banda, nuovo, worked e confermato seguono",
                                      YesNoKind{false}};
inline constexpr Choice kTimesOfQso{
    "Log", "Ore", "Ora d'inizio e di fine",
    "L'inizio è quando si scrive il nominativo, la fine quando il Qso si registra",
    YesNoKind{false}};
inline constexpr Choice kEnterStores{
    "Log", "Invio", "Invio registra",
    "Invio va a quello che manca, poi registra il Qso e ne comincia un altro", YesNoKind{false}};
inline constexpr Choice kUtcInLog{"Log", "OraUTC", "Ora UTC proposta",
                                  "In un log in ora UTC la finestra del log propone l'ora UTC",
                                  YesNoKind{false}};

inline constexpr Choice kHistoryDays{
    "Storia", "Giorni", "Giorni tenuti",
    "La compattazione toglie dalla storia i lavori più vecchi di tanti giorni",
    NumberKind{365, 1, 36500}};
inline constexpr Choice kHistoryContacts{
    "Storia", "Contatti", "Contatti tenuti",
    "Oltre tanti contatti la compattazione toglie dalla storia i lavori più vecchi",
    NumberKind{2000000, 1000, 100000000}};

std::string FaultOfAddress(Session& session, std::string_view address);
std::string FaultOfGroup(Session& session, std::string_view group);
std::string FaultOfForwards(Session& session, std::string_view targets);

inline constexpr Choice kDigitalListens{
    "Digitale", "Ascolta", "Ascolta i programmi digitali",
    "Riceve decodifiche e Qso di WSJT-X e simili anche a finestra Digitale chiusa",
    YesNoKind{false}};
inline constexpr Choice kDigitalAddress{
    "Digitale", "Indirizzo", "Indirizzo da ascoltare",
    "127.0.0.1 sente solo questo computer, 0.0.0.0 tutta la rete",
    TextKind{"127.0.0.1", FaultOfAddress}};
inline constexpr Choice kDigitalPort{"Digitale", "Porta", "Porta dei programmi digitali",
                                     "La porta UDP scritta in WSJT-X (Settings, Reporting)",
                                     NumberKind{2237, 1, 65535}};
inline constexpr Choice kDigitalAdifPort{
    "Digitale", "PortaADIF", "Porta dei record ADIF",
    "La porta UDP dei programmi che mandano un record ADIF; 0 per nessuna",
    NumberKind{2333, 0, 65535}};
inline constexpr Choice kDigitalGroup{
    "Digitale", "Gruppo", "Gruppo multicast",
    "Il gruppo scritto in WSJT-X, come 239.255.0.1; vuoto per nessuno", TextKind{"", FaultOfGroup}};
inline constexpr Choice kDigitalInterfaces{
    "Digitale", "Interfacce", "Interfacce del gruppo",
    "Nomi delle interfacce di rete, come lo eth0; vuoto per tutte", TextKind{}};
inline constexpr Choice kDigitalForwards{
    "Digitale", "Inoltra", "Inoltra i datagrammi a",
    "Altri programmi, come 127.0.0.1:2238, con uno spazio tra uno e l'altro",
    TextKind{"", FaultOfForwards}};
std::string FaultOfNeeds(Session& session, std::string_view needs);
inline constexpr Choice kDigitalNeeds{
    "Digitale", "Bisogni", "Bisogni, dal primo all'ultimo",
    "Che cosa si cerca nelle decodifiche: di che cosa, banda, modo, conferma; con ! suona",
    TextKind{"Country!, Zona CQ!, Country banda!, Zona CQ banda, Country modo, Square banda, "
             "Country conferma",
             FaultOfNeeds}};
inline constexpr Choice kDigitalColours{
    "Digitale", "Colora", "Colora in WSJT-X",
    "I nominativi che servono si colorano anche nella finestra di WSJT-X", YesNoKind{true}};
inline constexpr Choice kDigitalSound{"Digitale", "Suona", "Suono per un bisogno",
                                      "Un bisogno segnato con ! si sente, una volta",
                                      YesNoKind{true}};
inline constexpr Choice kDigitalContest{
    "Digitale", "Contest", "Qso nel contest aperto",
    "Con il log di un contest aperto i Qso digitali della sua banda, con i progressivi, vanno lì",
    YesNoKind{false}};

inline constexpr Choice kLotwGivesBox{
    "Conferme", "LoTW", "Qsl ricevuta da LoTW",
    "Una conferma di LoTW segna anche Qsl ricevuta; con No toglie i segni che ha messo",
    YesNoKind{false}};
inline constexpr Choice kEqslGivesBox{
    "Conferme", "eQSL", "Qsl ricevuta da eQSL",
    "Una conferma di eQSL segna anche Qsl ricevuta; con No toglie i segni che ha messo",
    YesNoKind{false}};
inline constexpr Choice kQrzGivesBox{
    "Conferme", "QRZ", "Qsl ricevuta da QRZ",
    "Una conferma di QRZ segna anche Qsl ricevuta; con No toglie i segni che ha messo",
    YesNoKind{false}};
inline constexpr Choice kClubLogGivesBox{
    "Conferme", "ClubLog", "Qsl ricevuta da Club Log",
    "Un riscontro di Club Log segna anche Qsl ricevuta; con No toglie i segni che ha messo",
    YesNoKind{false}};

inline constexpr Choice kContestSends{
    "Contest", "Trasmette", "Trasmissione nei contest",
    "In GaraContest i tasti da F1 a F8 mandano CW o suonano; con Shift fanno quello che facevano",
    YesNoKind{false}};
inline constexpr Choice kCwAddress{"Contest", "CW", "Indirizzo di cwdaemon",
                                   "Il computer che manipola: 127.0.0.1 è questo",
                                   TextKind{"127.0.0.1", FaultOfAddress}};
inline constexpr Choice kCwPort{"Contest", "PortaCW", "Porta di cwdaemon",
                                "La porta UDP di cwdaemon", NumberKind{6789, 1, 65535}};
inline constexpr Choice kCwSpeed{"Contest", "Velocita", "Velocità del CW",
                                 "Parole al minuto dei tasti da F1 a F8", NumberKind{24, 5, 60}};
inline constexpr Choice kSendingLimit{"Contest", "Limite", "Limite di una trasmissione",
                                      "Dopo tanti secondi quello che un tasto manda è fermato",
                                      NumberKind{30, 2, 300}};
// What the keys send, F1 first: a text for CW, and behind a bar the wave file for other modes.
inline constexpr Choice kContestKeys[] = {
    {"Contest", "F1", "Tasto F1 nei contest", "Testo in CW, poi | e il file di suono",
     TextKind{"CQ TEST DE {MYCALL} {MYCALL} TEST | cq.wav"}},
    {"Contest", "F2", "Tasto F2 nei contest", "Anche {CALL}, {RST}, {NR}, {LOC}, {EXCH}",
     TextKind{"{CALL} {RST} {NR} {NR} {LOC} | rapporto.wav"}},
    {"Contest", "F3", "Tasto F3 nei contest", "Testo in CW, poi | e il file di suono",
     TextKind{"TU {MYCALL} TEST | grazie.wav"}},
    {"Contest", "F4", "Tasto F4 nei contest", "Testo in CW, poi | e il file di suono",
     TextKind{"{MYCALL} | nominativo.wav"}},
    {"Contest", "F5", "Tasto F5 nei contest", "Testo in CW, poi | e il file di suono",
     TextKind{"{CALL}"}},
    {"Contest", "F6", "Tasto F6 nei contest", "Testo in CW, poi | e il file di suono",
     TextKind{"NR? | numero.wav"}},
    {"Contest", "F7", "Tasto F7 nei contest", "Testo in CW, poi | e il file di suono",
     TextKind{"LOC? | locatore.wav"}},
    {"Contest", "F8", "Tasto F8 nei contest", "Testo in CW, poi | e il file di suono",
     TextKind{"{CALL} QSO B4 | doppio.wav"}}};
inline constexpr Choice kLotwUser{
    "Conferme", "UtenteLoTW", "Nome utente di LoTW",
    "Con che nome la stazione chiede i rapporti a LoTW; vuoto è il nominativo", TextKind{}};
inline constexpr Choice kEqslUser{"Conferme", "UtenteEQSL", "Nome utente di eQSL",
                                  "Con che nome la stazione parla a eQSL; vuoto è il nominativo",
                                  TextKind{}};
inline constexpr Choice kClubLogUser{"Conferme", "UtenteClubLog", "Posta elettronica di Club Log",
                                     "L'indirizzo di posta con cui Club Log conosce la stazione",
                                     TextKind{}};

inline constexpr Choice kRigConnects{"Rtx", "Collega", "Collega l'rtx",
                                     "L'rtx si collega all'avvio, anche a finestra Rtx chiusa",
                                     YesNoKind{false}};
inline constexpr Choice kRigInLog{
    "Rtx", "Log", "Nuovo Qso dall'rtx",
    "Un Qso nuovo non ancora toccato prende frequenza, banda e modo dell'rtx", YesNoKind{true}};
inline constexpr Choice kRigInContest{"Rtx", "Contest", "Modo del contest dall'rtx",
                                      "Un Qso nuovo del contest prende il modo dell'rtx",
                                      YesNoKind{false}};
inline constexpr Choice kRigServes{
    "Rtx", "Offre", "Offre l'rtx ad altri programmi",
    "WSJT-X e altri di questo computer usano l'rtx attraverso Brenvo (Hamlib NET rigctl)",
    YesNoKind{false}};
inline constexpr Choice kRigServesPort{"Rtx", "PortaOfferta", "Porta per gli altri programmi",
                                       "La porta TCP da scrivere in WSJT-X, come 127.0.0.1:4534",
                                       NumberKind{4534, 1024, 65535}};
inline constexpr Choice kRotorConnects{
    "Rotore", "Collega", "Collega il rotore",
    "Il rotore si collega all'avvio, anche a finestra Rtx chiusa", YesNoKind{false}};

}  // namespace choice

// In the order in which they are shown.
std::span<const Choice* const> AllChoices();

// The store keeps "Y" and "N", numbers, texts and words. What was never chosen, and what stands in
// the store and is none of the choice's values, is the standard.
class Preferences {
 public:
  explicit Preferences(Session& session) : session_(session) {}

  // The value as its kind has it: bool, int, or std::string for texts and words.
  template <const Choice& kChoice>
  auto Get() const {
    if constexpr (std::holds_alternative<YesNoKind>(kChoice.kind)) {
      return IsOn(kChoice);
    } else if constexpr (std::holds_alternative<NumberKind>(kChoice.kind)) {
      return NumberOf(kChoice);
    } else {
      return Text(kChoice);
    }
  }
  // The value and the standard as the operator reads and writes them: "Sì" and "No".
  std::string Text(const Choice& choice) const;
  static std::string StandardText(const Choice& choice);
  // What may be written: "Sì o No", "da 1 a 36500".
  static std::string Range(const Choice& choice);
  // Stores what the operator has written and reports it. Then "", else why it will not do.
  [[nodiscard]] std::string Set(const Choice& choice, std::string_view text);

  // Why needs cannot be read, in Italian, empty when they can; set by whoever reads them. Until it
  // is, any text will do.
  std::function<std::string(std::string_view needs)> FaultOfNeeds;

  // A choice has another value.
  forms::Signal<const Choice&> Changed;

 private:
  bool IsOn(const Choice& choice) const;
  int NumberOf(const Choice& choice) const;
  // As the store holds it; empty for what was never chosen.
  std::string Stored(const Choice& choice) const;

  Session& session_;
};

}  // namespace brenvo::core
