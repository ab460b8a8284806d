#include "rig/mode_table.h"

#include <fstream>

#include "tests/rig/rig_station.h"
#include "tests/support/error_of.h"
#include "tests/support/golden.h"

namespace brenvo::rig {
namespace {

using testing::Contains;
using testing::HasSubstr;

constexpr std::string_view kHead = "Regola,Modo,Diventa,Da kHz,A kHz\n";

class ModeTableTest : public RigStation {
 protected:
  void Own(std::string_view rows) {
    std::ofstream(directory.Path() / std::string(kOwnModes), std::ios::binary) << kHead << rows;
  }
  std::string Refusal(std::string_view rows) {
    Own(rows);
    std::string why;
    LoadModes(session, [&](const std::string& failure) { why = failure; });
    return why;
  }
  ModeTable Load() {
    return LoadModes(session, [](const std::string& failure) { ADD_FAILURE() << failure; });
  }
};

TEST_F(ModeTableTest, ThePacketModesOfATransceiverSayNothingOfTheDigitalMode) {
  const ModeTable modes = Load();
  EXPECT_EQ(modes.ToLog("USB", base::Hz(14250000)), "SSB");
  EXPECT_EQ(modes.ToLog("CWR", base::Hz(7010000)), "CW");
  EXPECT_EQ(modes.ToLog("PKTUSB", base::Hz(14074000)), "");
  EXPECT_EQ(modes.ToLog("NEW MODE", base::Hz(14074000)), "");
}

TEST_F(ModeTableTest, TheSidebandFollowsTheFrequency) {
  const ModeTable modes = Load();
  EXPECT_EQ(modes.ToRig("SSB", base::Hz(3700000)), "LSB");
  EXPECT_EQ(modes.ToRig("ssb ", base::Hz(5354000)), "USB");
  EXPECT_EQ(modes.ToRig("SSB", base::Hz(14250000)), "USB");
  EXPECT_EQ(modes.ToRig("Olivia", base::Hz(14250000)), "");
}

TEST_F(ModeTableTest, ARowOfTheOperatorsOwnTakesThePlaceOfOneOfOurs) {
  Own("Dal rtx,PKTUSB,FT8,,\nDal rtx,USB,USB,,\nAl rtx,Olivia,PKTUSB,,\n");
  const ModeTable modes = Load();
  EXPECT_EQ(modes.ToLog("PKTUSB", base::Hz(14074000)), "FT8");
  EXPECT_EQ(modes.ToLog("USB", base::Hz(14250000)), "USB");
  EXPECT_EQ(modes.ToLog("LSB", base::Hz(3700000)), "SSB");
  EXPECT_EQ(modes.ToRig("Olivia", base::Hz(14250000)), "PKTUSB");
}

TEST_F(ModeTableTest, WhatCannotBeUnderstoodIsToldWithItsLineAndOursStands) {
  EXPECT_EQ(Refusal("Dal rtx,USB,SSB,x,\n"),
            "ModiRtx propri.csv, riga 2: \"x\" non è una frequenza in kHz");
  EXPECT_EQ(Refusal("Verso,USB,SSB,,\n"),
            "ModiRtx propri.csv, riga 2: la regola \"Verso\" non esiste");
  EXPECT_EQ(Refusal("Dal rtx,,SSB,,\n"), "ModiRtx propri.csv, riga 2: manca il modo");
  EXPECT_EQ(Refusal("Dal rtx,USB,SSB,,\nDal rtx,usb,CW,,\n"),
            "ModiRtx propri.csv, riga 3: Dal rtx usb è già scritto");
  EXPECT_EQ(
      Refusal("Dal rtx,USB\n"),
      "ModiRtx propri.csv, riga 2: non sono cinque celle, con una virgola tra l'una e l'altra");
  EXPECT_EQ(Refusal("Esempio,USB,SSB,,\n"),
            "ModiRtx propri.csv, riga 2: un esempio comincia con Dal rtx o Al rtx");
  EXPECT_EQ(Refusal("Esempio,Dal rtx USB,FT8,14074,\n"),
            "ModiRtx propri.csv, riga 2: l'esempio dice \"FT8\", le regole danno \"SSB\"");
  std::string ignored;
  EXPECT_EQ(LoadModes(session, [&](const std::string& why) { ignored = why; })
                .ToLog("USB", base::Hz(14250000)),
            "SSB");
}

TEST_F(ModeTableTest, ARowIsKeptInHisOwnFileBesideWhatStandsThere) {
  Own("Nota,la mia,,,\nDal rtx,USB,USB,,\n");
  StoreOwnMode(session, {false, "PKTUSB", "FT8", {}, {}});
  StoreOwnMode(session, {false, "USB", "SSB", {}, {}});
  EXPECT_EQ(ReadBytes(directory.Path() / std::string(kOwnModes)),
            "Regola,Modo,Diventa,Da kHz,A kHz\r\nNota,la mia,,,\r\nDal rtx,USB,SSB,,\r\n"
            "Dal rtx,PKTUSB,FT8,,\r\n");
  EXPECT_EQ(Load().ToLog("PKTUSB", base::Hz(14074000)), "FT8");
}

TEST_F(ModeTableTest, AFileOfHisThatCannotBeUnderstoodIsNotWrittenOver) {
  Own("Verso,USB,SSB,,\n");
  const std::string before = ReadBytes(directory.Path() / std::string(kOwnModes));
  EXPECT_THROW(StoreOwnMode(session, {false, "PKTUSB", "FT8", {}, {}}), std::runtime_error);
  EXPECT_EQ(ReadBytes(directory.Path() / std::string(kOwnModes)), before);
}

class BandsTest : public RigStation {
 protected:
  Bands bands = Bands::Read(session);
  std::string Read(std::string_view text) {
    const auto frequency = ReadFrequency(text, bands);
    return frequency ? FrequencyText(*frequency) : "nothing";
  }
};

TEST_F(BandsTest, AFrequencyIsReadInTheUnitThatMakesItOneOfABand) {
  EXPECT_EQ(Read("14.250"), "14.250.000");
  EXPECT_EQ(Read("14250"), "14.250.000");
  EXPECT_EQ(Read("14250.5"), "14.250.500");
  EXPECT_EQ(Read("14,250"), "14.250.000");
  EXPECT_EQ(Read("14.250.500"), "14.250.500");
  EXPECT_EQ(Read("7100"), "7.100.000");
  EXPECT_EQ(Read("1296.2"), "1296.200.000");
  EXPECT_EQ(Read("144300"), "144.300.000");
  EXPECT_EQ(Read("145"), "145.000.000");
  EXPECT_EQ(Read("10120"), "10.120.000") << "30 m before 3 cm";
  EXPECT_EQ(Read("10368.1"), "10368.100.000");
  EXPECT_EQ(Read("9500"), "9.500.000");
  for (const char* none : {"", "abc", "-5", "14a", ".", "0", "9e9", "999999999999"}) {
    EXPECT_EQ(Read(none), "nothing") << none;
  }
}

TEST_F(BandsTest, TransvertersAreReadFromTheSettingsAndWrittenBack) {
  const auto read = ReadTransverters("23cm:1268:Y, bad, 13cm:x:N,:5:Y, 2 m:-0.5:Q");
  ASSERT_EQ(read.size(), 3U);
  EXPECT_EQ(TextOf(read), "23cm:1268:Y, 13cm:0:N, 2 m:-0.5:N");
}

}  // namespace
}  // namespace brenvo::rig
