#include "conferme/mode_table.h"

#include <gtest/gtest.h>

#include "tests/support/error_of.h"
#include "tests/support/places.h"

namespace brenvo::conferme {
namespace {

ModeTable Delivered() { return ModeTable::Read(SourceDir() / "data/rules" / kModeRules); }

TEST(AModeOfTheServices, IsFoundByTheWordsOfLogFilesAndOfTheLog) {
  const ModeTable table = Delivered();
  EXPECT_EQ(table.Of("MFSK", "FT4"), (ServiceMode{"FT4", ModeGroup::kData}));
  EXPECT_EQ(table.Of("FT4", ""), (ServiceMode{"FT4", ModeGroup::kData}));
  EXPECT_EQ(table.Of("usb", ""), (ServiceMode{"SSB", ModeGroup::kPhone}));
  EXPECT_EQ(table.Of("Hellschreiber", "").group, ModeGroup::kData);
  EXPECT_EQ(table.Of("PSK31", "").mode, "PSK31");
  EXPECT_EQ(table.Of("DATA", ""), (ServiceMode{"DATA", ModeGroup::kData}));
  EXPECT_EQ(table.Of("SSTV", "").group, ModeGroup::kImage);
  EXPECT_EQ(table.Of("Parola", ""), ServiceMode());
}

TEST(AModeOfTheServices, ThatTheTableLacksIsInTheGroupThatItCountsIn) {
  const worked::Rules rules = worked::ReadRules(SourceDir() / "data/rules/Lavorati.csv", {});
  EXPECT_EQ(Delivered().Of("FT2", "", rules), (ServiceMode{"", ModeGroup::kData}));
  EXPECT_EQ(Delivered().Of("DMR", "", rules), (ServiceMode{"", ModeGroup::kPhone}));
  EXPECT_EQ(Delivered().Of("Parola", "", rules), ServiceMode());
}

TEST(AModeTable, ThatIsWrongIsToldWithTheLine) {
  const std::string heading = "Regola,Modo,Sottomodo,Vale,Gruppo\n";
  const auto fault = [&](const std::string& text) {
    try {
      ModeTable::Parse(text);
    } catch (const std::runtime_error& error) {
      return std::string(error.what());
    }
    return std::string();
  };
  EXPECT_EQ(fault("Modo,Vale\nCW,CW\n"),
            "ModiConferme.csv, riga 1: le colonne sono Regola,Modo,Sottomodo,Vale,Gruppo");
  EXPECT_EQ(fault(heading + "Modo,CW,,CW,Telegrafia\n"),
            "ModiConferme.csv, riga 2: il gruppo è CW, PHONE, DATA o IMAGE");
  EXPECT_EQ(fault(heading + "Modo,CW,,CW,CW\nModo,CW,,CW,CW\n"),
            "ModiConferme.csv, riga 3: il modo CW  è già scritto");
  EXPECT_EQ(fault(heading + "Modo,CW,,CW,CW\nEsempio,CW,,CW,DATA\n"),
            "ModiConferme.csv, riga 3: l'esempio dice \"CW DATA\", le regole danno \"CW CW\"");
  EXPECT_EQ(fault(heading + "Modo,CW\n"),
            "ModiConferme.csv, riga 2: non sono cinque celle, con una virgola tra l'una e l'altra");
}

}  // namespace
}  // namespace brenvo::conferme
