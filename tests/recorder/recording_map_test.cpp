#include "recorder/recording_map.h"

#include <gmock/gmock.h>

#include <fstream>
#include <vector>

#include "forms/window_list.h"
#include "recorder/recording_platform.h"

namespace brenvo::recorder {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string LittleEndian(std::uint32_t value) {
  std::string bytes;
  for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(value >> shift & 255);
  return bytes;
}

std::string BmpHeader(std::uint32_t width, std::uint32_t height) {
  return "BM" + std::string(12, '\0') + LittleEndian(40) + LittleEndian(width) +
         LittleEndian(height);
}

class Pictures : public testing::Test {
 protected:
  Pictures() {
    directory =
        std::filesystem::temp_directory_path() /
        (std::string("brenvo_") + testing::UnitTest::GetInstance()->current_test_info()->name());
    std::filesystem::create_directories(directory);
  }
  ~Pictures() override { std::filesystem::remove_all(directory); }

  std::filesystem::path File(const std::string& name, const std::string& bytes) {
    std::ofstream(directory / name, std::ios::binary) << bytes;
    return directory / name;
  }
  std::filesystem::path directory;
};

class Map : public Pictures {
 protected:
  Map() {
    names.SetDirectory(directory);
    map.FrameSize = [] { return base::ImageSize{400, 300}; };
  }
  void ShowPicture() {
    map.SetImage(File("wm.bmp", BmpHeader(1000, 500)));
    lines.clear();
  }
  std::vector<std::string> lines;
  FileNames names;
  RecordingMap map{[this](std::string line) { lines.push_back(line); }, names};
};

TEST_F(Map, AnImageIsKnownByItsSize) {
  EXPECT_EQ(map.ImageWidth(), 0);
  map.SetImage(File("wm.bmp", BmpHeader(1000, 500)));
  EXPECT_EQ(map.ImageWidth(), 1000);
  EXPECT_EQ(map.ImageHeight(), 500);
  EXPECT_THAT(lines, ElementsAre("map image \"wm.bmp\""));
}

TEST_F(Map, AFileThatIsNoPictureIsRefusedAndTheOldOneStays) {
  ShowPicture();
  EXPECT_THROW(map.SetImage(directory / "missing.jpg"), std::runtime_error);
  EXPECT_EQ(map.ImageWidth(), 1000);
  EXPECT_THAT(lines, IsEmpty());
}

TEST_F(Map, TheScrollStaysWithinThePicture) {
  ShowPicture();
  map.SetScroll(-5, 9999);
  EXPECT_EQ(map.ScrollX(), 0);
  EXPECT_EQ(map.ScrollY(), 200);
  map.SetScroll(600, 20);
  map.SetZoom(50);
  EXPECT_EQ(map.ScrollX(), 100);
  EXPECT_EQ(map.ScrollY(), 0);
  EXPECT_THAT(lines, ElementsAre("map scroll 0 200", "map scroll 600 20", "map zoom 50"));
}

TEST_F(Map, AnnotationsAreListed) {
  map.DrawRectangle(1, 2, 60, 28, base::kGreen);
  map.DrawStamp(directory / "Pointer.bmp", -3, 4);
  map.DrawLine(0, 0, 0, 0);
  map.DrawText(70, 80, "A");
  map.EndAnnotation();
  map.Refresh();
  map.Print();
  EXPECT_THAT(lines, ElementsAre("map rectangle 1 2 60 28 0 255 0",
                                 "map stamp \"Pointer.bmp\" -3 4", "map line 0 0 0 0",
                                 "map text 70 80 \"A\"", "map close", "map refresh", "map print"));
}

TEST_F(Map, ZoomingToARectangleFillsTheView) {
  ShowPicture();
  map.SetScroll(100, 50);
  lines.clear();
  map.ZoomToRectangle(20, 30, 100, 50);
  EXPECT_EQ(map.Zoom(), 400);
  EXPECT_THAT(lines, ElementsAre("map zoom 400", "map scroll 480 320"));
}

TEST_F(Map, AFailingPrinterIsPassedOver) {
  RecordingPlatform machine;
  machine.GetPrinter().FailNext();
  machine.Map().Print();
  EXPECT_THAT(machine.TakeLines(), IsEmpty());
  machine.Map().Print();
  EXPECT_THAT(machine.TakeLines(), ElementsAre("map print"));
}

TEST_F(Map, LiesInTheMainFrame) {
  RecordingPlatform machine;
  forms::WindowList windows(machine.Host());
  forms::Window& frame = windows.Adopt(
      std::make_unique<forms::Window>(machine.Host(), "Brenvo", "Brenvo",
                                      base::Twips::FromPixels(900), base::Twips::FromPixels(700)));
  EXPECT_EQ(machine.Map().ViewWidth(), 640);
  windows.Show(frame);
  EXPECT_EQ(machine.Map().ViewWidth(), 900);
  EXPECT_EQ(machine.Map().ViewHeight(), 700);
}

}  // namespace
}  // namespace brenvo::recorder
