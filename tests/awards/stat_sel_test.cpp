#include "awards/stat_sel.h"

#include <functional>

#include "awards/award_grid.h"
#include "core/lists.h"
#include "tests/support/station.h"

namespace brenvo::awards {
namespace {

using Texts = std::vector<std::string>;

void Unselect(forms::ListField& list) {
  for (std::size_t i = 0; i < list.Items().size(); ++i) {
    list.SetSelected(static_cast<int>(i), false);
  }
}

void ClearAll(StatSel& dialog) {
  dialog.Banda.SetListIndex(-1);
  Unselect(dialog.Modo);
  Unselect(dialog.Propagazione);
}

Texts SelectedOf(const forms::ListField& list) {
  Texts selected;
  for (std::size_t i = 0; i < list.Items().size(); ++i) {
    if (list.Selected(static_cast<int>(i))) selected.push_back(list.Items()[i]);
  }
  return selected;
}

class StatSelTest : public StationTest {
 protected:
  StatSelTest() { Know<StatSel>("StatSel"); }

  // The dialog under a mode word, as a caller shows it; the operator does `fill`, and presses
  // `end` last. Returns the tag.
  std::string Ask(std::string_view word, const std::function<void(StatSel&)>& fill,
                  std::string_view end = "cmStat") {
    auto& dialog = static_cast<StatSel&>(*session.Windows.LoadSingle("StatSel"));
    dialog.Tag = word;
    InDialogs([&](forms::Window& modal) {
      if (&modal != &dialog) return;
      if (fill) fill(dialog);
      if (dialog.Visible()) dialog.FindCommand(end)->Press();
    });
    session.Windows.ShowModal(dialog);
    const std::string tag = dialog.Tag;
    session.Windows.Unload(dialog);
    return tag;
  }
};

TEST_F(StatSelTest, AKeyEmptiesTheBandAndSelectsAllBands) {
  EXPECT_EQ(Ask("FIELD",
                [](StatSel& dialog) {
                  ClearAll(dialog);
                  core::SelectListEntry(dialog.Banda, " 20 m", 5);
                  dialog.cmTutteLeBande.Press();
                  EXPECT_EQ(dialog.Banda.Text(), "");
                }),
            "");
}

TEST_F(StatSelTest, ANewSelectionStartsOnTwoMetresSsbWithAllPropagations) {
  Ask("FIELD", [](StatSel& dialog) {
    EXPECT_EQ(dialog.Banda.Text(), "  2 m");
    EXPECT_EQ(SelectedOf(dialog.Modo), Texts{"SSB"});
    EXPECT_EQ(SelectedOf(dialog.Propagazione), dialog.Propagazione.Items());
    EXPECT_EQ(dialog.DataQsoI.Text(), "__/__/____");
    EXPECT_EQ(dialog.DataQsoF.Text(), "__/__/____");
    EXPECT_GT(dialog.Country.Items().size(), 300u);
  });
}

TEST_F(StatSelTest, ThePlainLogReportStartsWithoutTheDefaults) {
  Ask("PLOG", [](StatSel& dialog) {
    EXPECT_EQ(dialog.Banda.Text(), "");
    EXPECT_TRUE(SelectedOf(dialog.Modo).empty());
    EXPECT_TRUE(SelectedOf(dialog.Propagazione).empty());
    EXPECT_GT(dialog.Country.Items().size(), 300u);
  });
}

TEST_F(StatSelTest, AllFiltersClearedYieldAnEmptyTag) { EXPECT_EQ(Ask("FIELD", ClearAll), ""); }

TEST_F(StatSelTest, ElencaIsOfferedForPrefissoCountryAndProvincieOnly) {
  const std::pair<const char*, bool> words[] = {
      {"PREFISSI", false},   {"PREFISSO", true}, {"COUNTRY", true}, {"PROVINCIE", true},
      {"FIELD", false},      {"SQUARE", false},  {"ZONE", false},   {"CONTINENTI", false},
      {"CONTINENTE", false}, {"NOTE", false},    {"PLOG", false}};
  for (const auto& [word, offered] : words) {
    Ask(
        word,
        [&](StatSel& dialog) {
          EXPECT_EQ(dialog.Elenca.Visible(), offered) << word;
          EXPECT_EQ(dialog.Elenca.Enabled(), offered) << word;
        },
        "cmExit");
  }
}

TEST_F(StatSelTest, CountryCannotBeChosenForCountryAndPrefisso) {
  for (const char* word : {"COUNTRY", "PREFISSO", "PROVINCIE", "FIELD"}) {
    const bool offered = std::string_view(word) == "PROVINCIE" || std::string_view(word) == "FIELD";
    Ask(
        word,
        [&](StatSel& dialog) {
          EXPECT_EQ(dialog.Country.Enabled(), offered) << word;
          EXPECT_EQ(dialog.Country.Items().empty(), !offered) << word;
        },
        "cmExit");
  }
}

TEST_F(StatSelTest, ItalyBringsSardiniaAndSardiniaStandsAlone) {
  const auto choose = [this](std::string_view country) {
    return Ask("FIELD", [country](StatSel& dialog) {
      ClearAll(dialog);
      dialog.Country.SetText(country);
    });
  };
  EXPECT_EQ(choose("I    Italia"), "WHERE (Country='I' OR Country='IS0')");
  EXPECT_EQ(choose("IS0  Sardegna"), "WHERE Country='IS0'");
}

TEST_F(StatSelTest, OneBandAndOneModeJoinWithAnd) {
  EXPECT_EQ(Ask("FIELD", [](StatSel& dialog) { Unselect(dialog.Propagazione); }),
            "WHERE Banda='  2 m' AND Modo in ('SSB')");
}

TEST_F(StatSelTest, NoModeSelectedMeansNoCondition) {
  EXPECT_EQ(Ask("FIELD",
                [](StatSel& dialog) {
                  Unselect(dialog.Modo);
                  Unselect(dialog.Propagazione);
                }),
            "WHERE Banda='  2 m'");
}

TEST_F(StatSelTest, EveryFilterAppendsInItsOrder) {
  const std::string where = Ask("NOTE", [](StatSel& dialog) {
    ClearAll(dialog);
    dialog.Note.SetText(" DCI ");
    for (forms::CheckBox* box : {&dialog.QslRicevuta, &dialog.QslInviata, &dialog.QslDaInviare}) {
      box->SetOn(true);
    }
    dialog.Propagazione.SetSelected(0, true);
    dialog.Propagazione.SetSelected(1, true);
    core::SelectListEntry(dialog.Modo, "CW", 5);
    core::SelectListEntry(dialog.Modo, "SSB", 5);
    dialog.Banda.SetText(" 70cm");
    dialog.Country.SetText("DL   Germania");
    dialog.DataQsoF.SetText("31/12/2000");
    dialog.DataQsoI.SetText("01/01/2000");
  });
  EXPECT_EQ(where,
            "WHERE DateValue(DataQso)>=DateValue('01/01/2000') AND "
            "DateValue(DataQso)<=DateValue('31/12/2000') AND Country='DL' AND Banda=' 70cm' AND "
            "QsldaInviare=True AND QslRicevuta=True AND QslInviata=True AND Modo in ('SSB','CW') "
            "AND Propagazione in ('','Tropo') AND Note LIKE '*DCI*'");
}

TEST_F(StatSelTest, ADateThatIsNoneIsNotCheckedHere) {
  EXPECT_EQ(Ask("FIELD",
                [](StatSel& dialog) {
                  ClearAll(dialog);
                  dialog.DataQsoI.SetText("99/99/____");
                }),
            "WHERE DateValue(DataQso)>=DateValue('99/99/____')");
  EXPECT_TRUE(Lines().empty());
}

TEST_F(StatSelTest, ProvincesWantACountry) {
  Ask("PROVINCIE", [this](StatSel& dialog) {
    dialog.cmStat.Press();
    EXPECT_TRUE(dialog.Visible());
    EXPECT_EQ(dialog.Tag, "PROVINCIE");
    EXPECT_EQ(Lines(), Texts{"message critical \"\" \"Country obbligatorio\""});
    dialog.Country.SetText("I    Italia");
  });
  EXPECT_TRUE(Lines().empty());
}

TEST_F(StatSelTest, NotesWantANote) {
  Ask("NOTE", [this](StatSel& dialog) {
    dialog.Note.SetText("   ");
    dialog.cmStat.Press();
    EXPECT_TRUE(dialog.Visible());
    EXPECT_EQ(Lines(), Texts{"message critical \"\" \"Note obbligatorio\""});
    dialog.Note.SetText("DCI");
  });
  EXPECT_TRUE(Lines().empty());
}

TEST_F(StatSelTest, ExitAndTheFrameAnswerCancel) {
  EXPECT_EQ(Ask("FIELD", nullptr, "cmExit"), "Cancel");
  EXPECT_EQ(Ask("FIELD", [](StatSel& dialog) { dialog.Close(); }), "Cancel");
  EXPECT_EQ(session.Windows.Find("StatSel"), nullptr);
}

TEST_F(StatSelTest, HelpDoesNothing) {
  Ask("FIELD", [this](StatSel& dialog) {
    dialog.cmHelp.Press();
    EXPECT_TRUE(dialog.Visible());
    EXPECT_TRUE(Lines().empty());
  });
}

TEST_F(StatSelTest, BackspaceEmptiesTheCountry) {
  Ask("FIELD", [](StatSel& dialog) {
    dialog.Country.SetText("DL   Germania");
    dialog.Country.TypeKey(forms::kBackspace);
    EXPECT_EQ(dialog.Country.Text(), "");
  });
}

TEST_F(StatSelTest, LeavingTheCountryCompletesOrEmptiesIt) {
  Ask("FIELD", [](StatSel& dialog) {
    dialog.Country.SetText("dl");
    dialog.Country.Leave();
    EXPECT_EQ(dialog.Country.Text(), "DL   Germania");
    dialog.Country.SetText("QQQ");
    dialog.Country.Leave();
    EXPECT_EQ(dialog.Country.Text(), "");
  });
}

TEST_F(StatSelTest, ThePopupWorksOnTheListOfTheRightButton) {
  Ask("FIELD", [](StatSel& dialog) {
    EXPECT_EQ(dialog.Modo.ContextMenu, &dialog.popup);
    dialog.Modo.OnContextMenu();
    dialog.cmSelezionaTutto.Press();
    EXPECT_EQ(SelectedOf(dialog.Modo), dialog.Modo.Items());
    dialog.cmDeselezionaTutto.Press();
    EXPECT_TRUE(SelectedOf(dialog.Modo).empty());
    EXPECT_EQ(SelectedOf(dialog.Propagazione), dialog.Propagazione.Items());
    dialog.Propagazione.OnContextMenu();
    dialog.cmDeselezionaTutto.Press();
    EXPECT_TRUE(SelectedOf(dialog.Propagazione).empty());
  });
}

TEST_F(StatSelTest, APopupOfNoListMeansPropagations) {
  Ask("FIELD", [](StatSel& dialog) {
    dialog.PopupTarget.SetText("");
    dialog.cmDeselezionaTutto.Press();
    EXPECT_TRUE(SelectedOf(dialog.Propagazione).empty());
    EXPECT_EQ(SelectedOf(dialog.Modo), Texts{"SSB"});
  });
}

TEST_F(StatSelTest, HintsFollowThePointer) {
  Ask("FIELD", [](StatSel& dialog) {
    dialog.Modo.Hover();
    EXPECT_EQ(dialog.StatusBar1.Panel(1), "Bottone destro per attivare il popup menu");
    dialog.Note.Hover();
    EXPECT_EQ(dialog.StatusBar1.Panel(1), "Doppio Click per l' help note");
    dialog.Panel3D1.Hover();
    EXPECT_EQ(dialog.StatusBar1.Panel(1), "");
  });
}

// Stands for the notes help, and chooses.
class Chooser : public core::NotePicker {
 public:
  explicit Chooser(core::Session& session)
      : core::NotePicker(session.Host(), "Help", "NoteHelp", base::Twips(100), base::Twips(100)) {}
  void Activate() override {
    NoteChoice = "[DCI]";
    Close();
  }
};

TEST_F(StatSelTest, TheNotesHelpAppendsItsChoice) {
  Know<Chooser>("Help");
  Ask("NOTE", [](StatSel& dialog) {
    dialog.Note.SetText("x ");
    dialog.Note.DoubleClick();
    EXPECT_EQ(dialog.Note.Text(), "x [DCI]");
  });
}

TEST_F(StatSelTest, OneOfTheTwoLayoutsIsDown) {
  Ask("PLOG", [](StatSel& dialog) {
    EXPECT_FALSE(dialog.cmVerticale.Visible());
    EXPECT_FALSE(dialog.cmOrizzontale.Visible());
    EXPECT_TRUE(dialog.cmOrizzontale.Down());
    for (int press = 0; press < 2; ++press) {
      dialog.cmVerticale.Press();
      EXPECT_TRUE(dialog.cmVerticale.Down());
      EXPECT_FALSE(dialog.cmOrizzontale.Down());
    }
    dialog.cmOrizzontale.Press();
    EXPECT_FALSE(dialog.cmVerticale.Down());
  });
}

TEST_F(StatSelTest, ThePlaceOfTheDialogIsKept) {
  Ask("FIELD", [](StatSel& dialog) {
    dialog.Move({base::Twips(150), base::Twips(300), base::Twips(9000), base::Twips(6000)});
  });
  EXPECT_EQ(session.GetSetting("StatSel", "X", ""), "150");
  Ask("FIELD", [](StatSel& dialog) { EXPECT_EQ(dialog.Width(), base::Twips(9000)); });
}

// The conversation as the main frame leads it.
class SelectionFirstTest : public StatSelTest {
 protected:
  SelectionFirstTest() {
    for (const AwardMember& member : AwardMembers()) {
      session.Windows.Register(std::string(member.window), [this, &member] {
        return std::make_unique<AwardGrid>(session, member);
      });
    }
  }
  void Choose(std::string_view command, const std::function<void(StatSel&)>& act) {
    InDialogs([act](forms::Window& window) { act(static_cast<StatSel&>(window)); });
    Event([&] { frame->FindCommand(command)->Press(); });
  }
};

TEST_F(SelectionFirstTest, EachCommandOpensItsWindowOnTheSelection) {
  const std::pair<const char*, const char*> commands[] = {
      {"cmSField", "SField"},          {"cmSQuare", "SSQuare"}, {"cmSPrefissi", "SPrefissi"},
      {"cmContinenti", "SContinenti"}, {"cmZone", "SZone"},     {"cmSCountry", "SCountry"},
      {"cmSProvincie", "SProvincie"},  {"cmSNote", "SNote"}};
  for (const auto& [command, window] : commands) {
    Choose(command, [](StatSel& dialog) {
      ClearAll(dialog);
      dialog.Country.SetText("I    Italia");
      dialog.Note.SetText("DCI");
      dialog.cmStat.Press();
    });
    EXPECT_NE(session.Windows.Find(window), nullptr) << window;
    EXPECT_EQ(session.Windows.Find("StatSel"), nullptr);
  }
  EXPECT_EQ(session.Handed.QueryText, "WHERE (Country='I' OR Country='IS0') AND Note LIKE '*DCI*'");
}

TEST_F(SelectionFirstTest, ACancelledDialogLeavesTheSelectionAndOpensNothing) {
  session.Handed.QueryText = "WHERE Banda=' 20 m'";
  session.Handed.ElencaTutto = 1;
  Choose("cmSCountry", [](StatSel& dialog) { dialog.cmExit.Press(); });
  EXPECT_EQ(session.Handed.QueryText, "WHERE Banda=' 20 m'");
  EXPECT_EQ(session.Handed.ElencaTutto, 1);
  EXPECT_EQ(session.Windows.Find("SCountry"), nullptr);
  EXPECT_EQ(session.Windows.Find("StatSel"), nullptr);
}

TEST_F(SelectionFirstTest, OnlyCountriesAndProvincesWriteElencaTutto) {
  Choose("cmSCountry", [](StatSel& dialog) {
    dialog.Elenca.SetOn(true);
    dialog.cmStat.Press();
  });
  EXPECT_EQ(session.Handed.ElencaTutto, 1);
  Choose("cmSField", [](StatSel& dialog) { dialog.cmStat.Press(); });
  EXPECT_EQ(session.Handed.ElencaTutto, 1);
  Choose("cmSProvincie", [](StatSel& dialog) {
    dialog.Country.SetText("I    Italia");
    dialog.cmStat.Press();
  });
  EXPECT_EQ(session.Handed.ElencaTutto, 0);
}

TEST_F(SelectionFirstTest, SeveralWindowsOfOneAwardMayBeOpen) {
  for (int i = 0; i < 2; ++i) {
    Choose("cmSPrefissi", [](StatSel& dialog) { dialog.cmStat.Press(); });
  }
  EXPECT_NE(session.Windows.FindInstance("SPrefissi#2"), nullptr);
}

}  // namespace
}  // namespace brenvo::awards
