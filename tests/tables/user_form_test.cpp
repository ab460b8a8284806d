#include "tables/user_form.h"

#include "geo/locator.h"
#include "tests/tables/tables_station.h"

namespace brenvo::tables {
namespace {

constexpr char kLocator[] = "message exclamation \"\" \"Locator non valido\"";
constexpr char kMandatory[] = "message exclamation \"\" \"I campi sono tutti obbligatori\"";
constexpr char kBand[] = "message exclamation \"\" \"Banda duplicata o mancante\"";
enum : int { kBanda, kFrequenza, kPotenza = 4, kModo, kAnnunceDX = 9, kFilenameDX };

class UserFormTest : public TablesStation {
 protected:
  UserFormTest() {
    Know<UserForm>("User");
    for (const char* name : {"cq.wav", "2m.WAV", "20m.wav", "map.jpg"}) WriteFile(name);
    Exec("update UserRTX set AnnunceDX=false,FilenameDX=''");
  }
  UserForm& OpenUser() { return Open<UserForm>("User"); }
  // The row of a band in the grid.
  static std::int64_t RowOf(UserForm& user, std::string_view band) {
    for (std::int64_t row = 1; row < user.DataGrid1.Rows(); ++row) {
      if (user.DataGrid1.Cell(row, kBanda) == band) return row;
    }
    ADD_FAILURE() << band;
    return 0;
  }
  void Edit(UserForm& user, std::int64_t row, int column, std::string_view text) {
    Event([&] { user.DataGrid1.EditCell(row, column, text); });
  }
  void KeyOn(UserForm& user, std::int64_t row, int column, char32_t key, bool taken = true) {
    Event([&] { user.DataGrid1.SetCurrent(row, column); });
    Event([&] { EXPECT_EQ(user.DataGrid1.TypeKey(key), taken); });
  }
  Texts Band(std::string_view band, std::string_view columns) {
    return Rows("select " + std::string(columns) + " from UserRTX where Banda='" +
                std::string(band) + "'");
  }
};

TEST_F(UserFormTest, ItOpensOnTheProfileAndItsFirstTab) {
  Exec(
      "update [User] set Call='I0ABC',Qra='Anna',ClusterNode='IK0CLU',TelnetCluster='host:8000',"
      "TelnetWWConv='chat',CallFile='cq.wav',TNCEcho=true,TNCBaud=1200,TNCPort='COM2'");
  session.SaveSetting("Log", "ManagerZX9TOK", "C:\\qmgr");
  UserForm& user = OpenUser();
  EXPECT_EQ(user.Caption(), "Tabella Utente");
  const std::pair<forms::TextField*, std::string> texts[] = {{&user.CallQso, "I0ABC"},
                                                             {&user.Qra, "Anna"},
                                                             {&user.Qth, "Roma"},
                                                             {&user.Indirizzo, "Via e numero"},
                                                             {&user.Provincia, "RM"},
                                                             {&user.Locator, "JN65AA"},
                                                             {&user.ZX9TOK, "C:\\qmgr"},
                                                             {&user.ClusterNode, "IK0CLU"},
                                                             {&user.TelnetCluster, "host:8000"},
                                                             {&user.TelnetWWConv, "chat"},
                                                             {&user.CallFile, "cq.wav"},
                                                             {&user.CallInterval, "10"},
                                                             {&user.TNCBaud, "1200"},
                                                             {&user.TNCPort, "COM2"}};
  for (const auto& [field, text] : texts) EXPECT_EQ(field->Text(), text) << field->Name();
  EXPECT_TRUE(user.TNCEcho.IsOn());
  EXPECT_EQ(user.File1.Items(), (Texts{"20m.wav", "2m.WAV", "cq.wav"}));
  EXPECT_EQ(user.File2.Items(), user.File1.Items());
  EXPECT_FALSE(user.Modo.Visible());
  EXPECT_FALSE(user.File2.Visible());
  EXPECT_EQ(user.Tab1.Index(), 0);
  EXPECT_TRUE(user.PanelRTX.Visible());
  EXPECT_FALSE(user.PanelMultimedia.Visible());
}

TEST_F(UserFormTest, ATabShowsItsPanelAndHidesTheOther) {
  UserForm& user = OpenUser();
  EXPECT_EQ(user.Tab1.Captions(), (Texts{"RTX", "Multimedia"}));
  Event([&] { user.Tab1.Press(1); });
  EXPECT_FALSE(user.PanelRTX.Visible());
  EXPECT_TRUE(user.PanelMultimedia.Visible());
  Event([&] { user.Tab1.Press(1); });
  EXPECT_TRUE(user.PanelMultimedia.Visible());
  Event([&] { user.Tab1.Press(0); });
  EXPECT_TRUE(user.PanelRTX.Visible());
}

TEST_F(UserFormTest, EveryFieldStandsOnOneTabOrAboveThem) {
  UserForm& user = OpenUser();
  std::size_t onTabs = 0;
  for (const forms::TabStrip::Page& page : user.Tab1.Pages()) onTabs += page.fields.size();
  EXPECT_EQ(onTabs, 14u);
  EXPECT_EQ(user.Tab1.Pages()[0].fields.front(), &user.DataGrid1);
}

TEST_F(UserFormTest, UpdateWritesEveryColumnAndStaysOpen) {
  UserForm& user = OpenUser();
  Type(user.CallQso, "ik0xyz");
  Type(user.Qra, "Mario");
  Type(user.Qth, "Ostia");
  Type(user.Indirizzo, "Via Mare 1");
  Type(user.Provincia, "rm");
  Type(user.Locator, "jn61fr");
  Event([&] { user.TNCBaud.Pick(5); });
  Event([&] { user.TNCPort.Pick(2); });
  Event([&] { user.TNCEcho.Press(); });
  Event([&] { user.CallFile.Drop("cq.wav"); });
  Type(user.CallInterval, "15");
  Type(user.ClusterNode, "IK0CLU");
  Type(user.TelnetCluster, "host:8000");
  Type(user.TelnetWWConv, "chat");
  Press(user, "cmUpdate");
  EXPECT_TRUE(Lines().empty());
  EXPECT_TRUE(user.Visible());
  EXPECT_EQ(Rows("select Call,Qra,Qth,Indirizzo,Provincia,Locator,TNCBaud,TNCPort,TNCEcho,CallFile,"
                 "CallInterval,ClusterNode,TelnetCluster,TelnetWWConv from [User]"),
            Texts{"IK0XYZ|Mario|Ostia|Via Mare 1|RM|JN61FR|19200|COM3|-1|cq.wav|15|IK0CLU|"
                  "host:8000|chat"});
}

TEST_F(UserFormTest, ExitClosesWithoutWriting) {
  UserForm& user = OpenUser();
  Type(user.CallQso, "IK0XYZ");
  Press(user, "cmExit");
  EXPECT_EQ(session.Windows.Find("User"), nullptr);
  EXPECT_EQ(Rows("select Call from [User]"), Texts{"I0XXX"});
}

TEST_F(UserFormTest, AnEmptyMandatoryFieldBringsOneMessage) {
  UserForm& user = OpenUser();
  for (forms::TextField* field : {&user.CallQso, &user.Qra, &user.Qth, &user.Indirizzo,
                                  &user.Provincia, static_cast<forms::TextField*>(&user.TNCBaud),
                                  static_cast<forms::TextField*>(&user.TNCPort)}) {
    const std::string before = field->Text();
    field->SetText(field == &user.Qra ? "   " : "");
    Press(user, "cmUpdate");
    EXPECT_EQ(Lines(), Texts{kMandatory}) << field->Name();
    field->SetText(before);
  }
  Press(user, "cmUpdate");
  EXPECT_TRUE(Lines().empty());
}

TEST_F(UserFormTest, ALocatorOfFiveCharactersBringsTwoMessages) {
  UserForm& user = OpenUser();
  Type(user.Locator, "JN61F");
  Press(user, "cmUpdate");
  EXPECT_EQ(Lines(), (Texts{kLocator, kMandatory}));
  EXPECT_EQ(Rows("select Locator from [User]"), Texts{"JN65AA"});
  EXPECT_EQ(session.Station.MyLocator, "JN65AA");
}

TEST_F(UserFormTest, TheFieldsOfLinksAndCallMayStayBlank) {
  UserForm& user = OpenUser();
  for (forms::TextField* field : {&user.CallFile, &user.CallInterval, &user.ClusterNode,
                                  &user.TelnetCluster, &user.TelnetWWConv}) {
    field->SetText("");
  }
  Press(user, "cmUpdate");
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(Rows("select CallFile,CallInterval,ClusterNode from [User]"), Texts{"|0|"});
}

TEST_F(UserFormTest, AnIntervalIsWhateverNumberItsTextGives) {
  UserForm& user = OpenUser();
  user.CallInterval.SetText("12 secondi");
  Press(user, "cmUpdate");
  EXPECT_EQ(Rows("select CallInterval from [User]"), Texts{"12"});
}

TEST_F(UserFormTest, ANewLocatorCountsAtOnceForDistances) {
  UserForm& user = OpenUser();
  Type(user.Locator, "JN61FR");
  Press(user, "cmUpdate");
  EXPECT_EQ(session.Station.MyLocator, "JN61FR");
  EXPECT_EQ(geo::QrbKm(session.Station.MyLocator, "JN65AA"), geo::QrbKm("JN61FR", "JN65AA"));
}

TEST_F(UserFormTest, TheManagerPathIsStoredTrimmedAndABlankOneAsEmpty) {
  UserForm& user = OpenUser();
  Type(user.ZX9TOK, " C:\\qmgr ");
  Press(user, "cmUpdate");
  EXPECT_EQ(session.Station.ManagerPath, "C:\\qmgr");
  EXPECT_EQ(session.GetSetting("Log", "ManagerZX9TOK", "none"), "C:\\qmgr");
  user.ZX9TOK.SetText("   ");
  Press(user, "cmUpdate");
  EXPECT_EQ(session.Station.ManagerPath, "");
  EXPECT_EQ(session.GetSetting("Log", "ManagerZX9TOK", "none"), "");
}

TEST_F(UserFormTest, TheGridShowsTheBandsByFrequency) {
  UserForm& user = OpenUser();
  ASSERT_EQ(user.DataGrid1.Columns(), 11);
  EXPECT_EQ(user.DataGrid1.Cell(1, kBanda), "160 m");
  const std::int64_t row = RowOf(user, "  2 m");
  Texts cells;
  for (int column = 0; column < 11; ++column) cells.push_back(user.DataGrid1.Cell(row, column));
  EXPECT_EQ(cells,
            (Texts{"  2 m", "144.3", "", "", "50", "SSB", "59", "144000", "146000", "No", ""}));
}

TEST_F(UserFormTest, ACellGoesStraightToTheTable) {
  UserForm& user = OpenUser();
  Edit(user, RowOf(user, "  2 m"), kPotenza, "300");
  EXPECT_EQ(Band("  2 m", "Potenza"), Texts{"300"});
  Edit(user, RowOf(user, "  2 m"), kPotenza, "");
  EXPECT_EQ(Band("  2 m", "Potenza"), Texts{""});
  Edit(user, RowOf(user, "  2 m"), kPotenza, "molta");
  EXPECT_THAT(Lines(), testing::ElementsAre(testing::StartsWith("error \"3421")));
  EXPECT_EQ(user.DataGrid1.Cell(RowOf(user, "  2 m"), kPotenza), "");
}

TEST_F(UserFormTest, TheModeIsPickedFromItsList) {
  UserForm& user = OpenUser();
  const std::int64_t row = RowOf(user, "  2 m");
  KeyOn(user, row, kModo, 'x');
  EXPECT_TRUE(user.Modo.Visible());
  EXPECT_EQ(Band("  2 m", "Modo"), Texts{"SSB"});
  Click(user.Modo, "CW");
  EXPECT_FALSE(user.Modo.Visible());
  EXPECT_EQ(Band("  2 m", "Modo"), Texts{"CW"});
  EXPECT_EQ(user.DataGrid1.Cell(row, kModo), "CW");
  KeyOn(user, row, kModo, forms::kBackspace);
  EXPECT_FALSE(user.Modo.Visible());
  EXPECT_EQ(Band("  2 m", "Modo"), Texts{""});
}

TEST_F(UserFormTest, AModeTypedWholeIsTakenAndAnythingElseShowsTheList) {
  UserForm& user = OpenUser();
  const std::int64_t row = RowOf(user, "  2 m");
  Edit(user, row, kModo, "cw");
  EXPECT_EQ(Band("  2 m", "Modo"), Texts{"CW"});
  EXPECT_FALSE(user.Modo.Visible());
  Edit(user, row, kModo, "MORSE");
  EXPECT_EQ(Band("  2 m", "Modo"), Texts{"CW"});
  EXPECT_TRUE(user.Modo.Visible());
  Event([&] { user.Modo.Leave(); });
  EXPECT_FALSE(user.Modo.Visible());
}

TEST_F(UserFormTest, ABandWithAWaveFileIsAnnouncedAndOneWithoutIsNot) {
  UserForm& user = OpenUser();
  const std::int64_t row = RowOf(user, "  2 m");
  KeyOn(user, row, kFilenameDX, '2');
  EXPECT_TRUE(user.File2.Visible());
  Click(user.File2, "2m.WAV");
  EXPECT_FALSE(user.File2.Visible());
  EXPECT_EQ(Band("  2 m", "AnnunceDX,FilenameDX"), Texts{"-1|2m.WAV"});
  EXPECT_EQ(user.DataGrid1.Cell(row, kAnnunceDX), "Sì");
  KeyOn(user, row, kFilenameDX, forms::kBackspace);
  EXPECT_EQ(Band("  2 m", "AnnunceDX,FilenameDX"), Texts{"0|"});
}

TEST_F(UserFormTest, AnAnnouncementSetByHandFollowsTheFileAllTheSame) {
  UserForm& user = OpenUser();
  Edit(user, RowOf(user, "  2 m"), kAnnunceDX, "-1");
  EXPECT_EQ(Band("  2 m", "AnnunceDX"), Texts{"0"});
}

TEST_F(UserFormTest, OtherColumnsTakeTheirKeysThemselves) {
  UserForm& user = OpenUser();
  KeyOn(user, RowOf(user, "  2 m"), kPotenza, '5', false);
  KeyOn(user, 0, kModo, '5', false);
}

TEST_F(UserFormTest, ABandIsAddedBehindTheLastRow) {
  UserForm& user = OpenUser();
  const std::int64_t row = user.DataGrid1.Rows();
  Edit(user, row, kBanda, "  4 m");
  Edit(user, row, kFrequenza, "70.2");
  Edit(user, row, kFilenameDX, "2m.wav");
  EXPECT_EQ(user.DataGrid1.Rows(), row + 1);
  EXPECT_EQ(Band("  4 m", "Frequenza,AnnunceDX,FilenameDX"), Texts{"70.2|-1|2m.WAV"});
  EXPECT_LT(RowOf(OpenUser(), "  4 m"), row);
}

TEST_F(UserFormTest, TwoRowsOfOneBandAreRefused) {
  UserForm& user = OpenUser();
  const std::int64_t rows = user.DataGrid1.Rows();
  Edit(user, rows, kBanda, "  2 m");
  EXPECT_EQ(Lines(), Texts{kBand});
  Edit(user, RowOf(user, " 70cm"), kBanda, "  2 M");
  EXPECT_EQ(Lines(), Texts{kBand});
  EXPECT_EQ(user.DataGrid1.Rows(), rows);
  EXPECT_EQ(Band("  2 m", "Frequenza"), Texts{"144.3"});
  EXPECT_EQ(Band(" 70cm", "Frequenza"), Texts{"432.2"});
}

TEST_F(UserFormTest, ARowWithoutABandIsRefused) {
  UserForm& user = OpenUser();
  const std::int64_t rows = user.DataGrid1.Rows();
  Edit(user, rows, kFrequenza, "70.2");
  EXPECT_EQ(Lines(), Texts{kBand});
  Edit(user, RowOf(user, "  2 m"), kBanda, "  ");
  EXPECT_EQ(Lines(), Texts{kBand});
  EXPECT_EQ(user.DataGrid1.Rows(), rows);
  EXPECT_EQ(Band("  2 m", "Frequenza"), Texts{"144.3"});
}

TEST_F(UserFormTest, DeletingABandAsksFirst) {
  UserForm& user = OpenUser();
  const std::int64_t row = RowOf(user, "  2 m");
  machine.Messages().QueueAnswer(false);
  Event([&] { user.DataGrid1.RemoveRow(row); });
  EXPECT_EQ(Lines(), Texts{"question \"Cancellazione banda\" \"Confermi l'operazione ?\" no"});
  EXPECT_EQ(Band("  2 m", "Frequenza").size(), 1u);
  machine.Messages().QueueAnswer(true);
  Event([&] { user.DataGrid1.RemoveRow(row); });
  EXPECT_TRUE(Band("  2 m", "Frequenza").empty());
  EXPECT_EQ(user.DataGrid1.Cell(row, kBanda), " 70cm");
}

TEST_F(UserFormTest, TheCallingFileComesByDragDoubleClickOrButton) {
  UserForm& user = OpenUser();
  Event([&] { user.CallFile.Drop("20m.wav"); });
  EXPECT_EQ(user.CallFile.Text(), "20m.wav");
  DoubleClick(user.File1, "cq.wav");
  EXPECT_EQ(user.CallFile.Text(), "cq.wav");
  Click(user.File1, "2m.WAV");
  EXPECT_EQ(user.CallFile.Text(), "cq.wav");
  Press(user, "cmCallFile");
  EXPECT_EQ(user.CallFile.Text(), "2m.WAV");
  Backspace(user.CallFile);
  EXPECT_EQ(user.CallFile.Text(), "");
}

TEST_F(UserFormTest, AButtonWithoutAFileChosenChangesNothing) {
  UserForm& user = OpenUser();
  user.CallFile.SetText("cq.wav");
  Press(user, "cmCallFile");
  EXPECT_EQ(user.CallFile.Text(), "cq.wav");
}

TEST_F(UserFormTest, CaptionsAndHintsLeadANewOperator) {
  UserForm& user = OpenUser();
  const std::pair<forms::Field*, std::string> captions[] = {
      {&user.CallQso, "Call"},
      {&user.ZX9TOK, "Path manager ZX9TOK"},
      {&user.TNCEcho, "Local echo"},
      {&user.ClusterNode, "Radio cluster"},
      {&user.TelnetCluster, "Telnet cluster"},
      {&user.TelnetWWConv, "Telnet WWConv"},
      {&user.FrameChiamata, "Chiamata automatica"},
      {&user.CallFile, "File wav"},
      {&user.CallInterval, "Intervallo tra le chiamate"}};
  for (const auto& [field, caption] : captions) EXPECT_EQ(field->Caption(), caption);
  Hover(user.TelnetCluster);
  EXPECT_EQ(user.StatusBar1.Panel(1), "Host, oppure host:porta");
  Hover(user.DataGrid1);
  EXPECT_THAT(user.StatusBar1.Panel(1), testing::HasSubstr("kHz"));
}

TEST_F(UserFormTest, ANumberThatAColumnCannotHoldIsRefusedInWordsAndTheProfileStays) {
  const std::string digits(19, '9');
  UserForm& user = OpenUser();
  Type(user.Qth, "Altrove");
  Type(user.CallInterval, digits);
  Press(user, "cmUpdate");
  EXPECT_EQ(Lines(), Texts{"message exclamation \"\" \"Il valore '" + digits +
                           "' non è adatto alla colonna 'CallInterval'\""});
  EXPECT_EQ(user.CallInterval.Text(), digits);
  EXPECT_EQ(user.Qth.Text(), "Altrove");
  // What other windows read of the profile is what is stored.
  EXPECT_EQ(session.Tables.TbUser->Field("Qth").Text(), "Roma");
  Edit(user, RowOf(user, "  2 m"), kPotenza, digits + "9");
  EXPECT_THAT(Lines(), testing::ElementsAre(testing::HasSubstr("colonna 'Potenza'")));
}

TEST_F(UserFormTest, AQuoteInAnyFieldIsStoredAsItStands) {
  UserForm& user = OpenUser();
  Type(user.Qth, "L'Aquila");
  Press(user, "cmUpdate");
  EXPECT_EQ(Rows("select Qth from [User]"), Texts{"L'Aquila"});
  Edit(user, RowOf(user, "  2 m"), 3, "9 el. dell'amico *");
  EXPECT_EQ(Band("  2 m", "Antenna"), Texts{"9 el. dell'amico *"});
  EXPECT_TRUE(Lines().empty());
}

}  // namespace
}  // namespace brenvo::tables
