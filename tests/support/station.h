// A station for tests: a scratch application directory with the delivered database, a recorded
// machine, and a session on both.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/session.h"
#include "file/database_file.h"
#include "frame/main_frame.h"
#include "recorder/recording_platform.h"
#include "tests/support/places.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/unsynced_files.h"

namespace brenvo {

// A scratch application directory with the delivered database and rules.
class ScratchStationDirectory : public ScratchDirectory {
 public:
  ScratchStationDirectory() {
    LeaveFilesUnsynced();
    std::filesystem::copy_file(BuildDir() / "delivered" / "Brenvo.mdb", Path() / "Brenvo.mdb");
    for (const char* rules :
         {"Lavorati.csv", "Estensioni.csv", "QslDaInviare.csv", "Entita.csv", "ModiRtx.csv",
          "ModiConferme.csv"}) {
      std::filesystem::copy_file(SourceDir() / "data/rules" / rules, Path() / rules);
    }
  }
};

// The clock stands at 03/02/2001 04:05:06, the own locator is JN65AA, the log is empty. The main
// frame is open; windows that a test needs are registered by the test. A question that no answer
// was queued for, and an answer or a picked file that nothing asked for, fail the test; so does a
// dialog that nobody foresaw, and one that was foreseen and does not come.
class StationTest : public testing::Test {
 protected:
  explicit StationTest(bool openFrame = true) {
    machine.SetNow(base::DateTime::Of(2001, 2, 3, 4, 5, 6));
    machine.SetApplicationDirectory(directory.Path());
    {
      engine::Database db = file::OpenDatabaseFile(directory.Path() / "Brenvo.mdb");
      db.Execute("UPDATE [User] SET Locator='JN65AA'");
    }
    if (openFrame) {
      frame = &static_cast<frame::MainFrame&>(
          session.Windows.Adopt(std::make_unique<frame::MainFrame>(session)));
      session.Windows.Show(*frame);
      machine.TakeLines();
    }
  }
  ~StationTest() override = default;

  void TearDown() override {
    EXPECT_FALSE(machine.HasUnusedAnswers()) << "an answer that nothing asked for";
    // A window that handles every failure has handled this one too.
    EXPECT_EQ(machine.Messages().Unanswered().value_or("none"), "none");
    ExpectDialogsCame();
  }

  template <class Form>
  void Know(const char* name) {
    session.Windows.Register(name, [this] { return std::make_unique<Form>(session); });
  }
  // Loads and shows a window of a registered name.
  template <class Form>
  Form& Open(std::string_view name) {
    Form& window = static_cast<Form&>(*session.Windows.LoadNew(name));
    session.Windows.Show(window);
    return window;
  }
  // One event of the operator.
  void Event(const std::function<void()>& event) { session.Windows.RunEvent(event); }
  void Press(forms::Window& window, std::string_view command) {
    forms::Command* const found = window.FindCommand(command);
    ASSERT_NE(found, nullptr) << window.Name() << '.' << command;
    Event([&] { found->Press(); });
  }
  // Comes to a field and replaces its content key by key.
  void Type(forms::TextField& field, std::string_view text) {
    Event([&] { field.Focus(); });
    for (const char c : text) {
      Event([&] { field.TypeKey(static_cast<unsigned char>(c)); });
    }
  }
  void Hover(forms::Field& field) {
    Event([&] { field.Hover(); });
  }
  // What the operator does in each dialog from now on; at least one has to come.
  void InDialogs(std::function<void(forms::Window&)> work) {
    ExpectDialogsCame();
    dialogForeseen_ = true;
    machine.Host().InModal = [this, work = std::move(work)](forms::Window& dialog) {
      dialogForeseen_ = false;
      work(dialog);
    };
  }
  void Exec(std::string_view statement) { session.Db.Execute(statement); }
  // So many doublings of one contact, each under another call; twelve make a statement long.
  void FillLog(int doublings) {
    Exec("insert into Log (DataQso,Call) values ('01/01/2001 10:00','A')");
    for (int i = 0; i < doublings; ++i) {
      Exec("insert into Log (DataQso,Call) select DataQso,Call+'" + std::to_string(i) +
           "' from Log");
    }
  }
  // The rows of a SELECT, the columns of each joined by "|".
  std::vector<std::string> Rows(std::string_view select) {
    std::vector<std::string> rows;
    const auto snapshot = session.Db.OpenSnapshot(select);
    for (; !snapshot->EOF_(); snapshot->MoveNext()) {
      std::string row;
      for (std::size_t i = 0; i < snapshot->Columns().size(); ++i) {
        if (i > 0) row += "|";
        row += snapshot->Field(i).Text();
      }
      rows.push_back(row);
    }
    return rows;
  }
  std::vector<std::string> Lines() { return machine.TakeLines(); }

  ScratchStationDirectory directory;
  recorder::RecordingPlatform machine;
  core::Session session{machine, directory.Path()};
  frame::MainFrame* frame = nullptr;

 private:
  void ExpectDialogsCame() const {
    EXPECT_FALSE(dialogForeseen_) << "the dialog that was foreseen did not come";
  }

  bool dialogForeseen_ = false;
};

}  // namespace brenvo
