#include "maps/mappa_square.h"

#include <algorithm>
#include <exception>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>

#include "base/image_size.h"
#include "core/entry_key.h"
#include "core/texts.h"
#include "heading_overlay.h"

namespace brenvo::maps {
namespace {

constexpr base::Twips kRadius = base::Twips::FromPixels(7),
                      kBeamRadius = base::Twips::FromPixels(2);

base::Twips FromPixelColumn(const engine::Value& value) {
  const std::int64_t pixels = value.Integer();
  if (pixels < std::numeric_limits<std::int16_t>::min() ||
      pixels > std::numeric_limits<std::int16_t>::max()) {
    throw std::overflow_error("La posizione di uno square è fuori dalla mappa");
  }
  return base::Twips::FromPixels(static_cast<int>(pixels));
}

}  // namespace

MappaSquare::MappaSquare(core::Session& session)
    : forms::Window(session.Host(), "MappaSquare", "Mappa Square", base::Twips::FromPixels(1184),
                    base::Twips::FromPixels(720)),
      session_(session) {
  VScroll.OnChange = [this] { PicBuf1.SetTop(base::Twips(-VScroll.Value())); };
}

void MappaSquare::Load() {
  try {
    const std::string selection = session_.Handed.QueryText + " AND Locator<>''";
    squares_ = session_.Db.OpenSnapshot(
        "SELECT Left(Locator,4) as Square,QslRicevuta FROM Log " + selection +
        " GROUP BY Left(Locator,4),QslRicevuta ORDER BY Left(Locator,4),QslRicevuta");
    const std::filesystem::path file = session_.File("\\Square.jpg");
    const auto size = base::ReadImageSize(file);
    if (!size) throw std::runtime_error("La mappa degli square non si legge");
    PicBuf1.SetPicture(file);
    pictureHeight_ = base::Twips::FromPixels(size->height);
    DrawSquares();
  } catch (const std::exception&) {
  }
  Resize();
}

void MappaSquare::Unload() { squares_.reset(); }

void MappaSquare::Resize() {
  try {
    VScroll.SetValue(0);
    // A picture that is lower than the window has nothing to scroll.
    VScroll.SetMaximum(std::max(0, (pictureHeight_ - ScaleHeight()).Value()));
    PicBuf1.SetTop(base::Twips(0));
  } catch (const std::exception&) {
  }
}

void MappaSquare::Print() {
  const forms::BusyPointer busy(Host());
  platform::Printer& printer = session_.Machine.GetPrinter();
  printer.Text(base::Mm(0), base::Mm(0), "");
  session_.Machine.PrintWindow(*this, base::Mm(0), base::Mm(0));
  printer.EndDocument();
}

void MappaSquare::DropMap() {
  const forms::BusyPointer busy(Host());
  PicBuf1.SetPicture({});
  DrawSquares();
}

// Where the antenna looks, as far as the map goes.
void MappaSquare::DrawBeam() {
  const std::string& own = session_.Station.MyLocator;
  if (!session_.Map.Heading || !geo::IsValidLocator(own)) return;
  engine::Table& places = *session_.Tables.TbSquare;
  for (const std::string& square :
       SquaresOf(BeamPath(geo::LocatorToRadians(own), *session_.Map.Heading))) {
    places.Seek("=", {square});
    if (places.NoMatch()) continue;
    PicBuf1.Draw({FromPixelColumn(places.Field("X")), FromPixelColumn(places.Field("Y")),
                  kBeamRadius, kBeamColour});
  }
}

void MappaSquare::DrawSquares() {
  DrawBeam();
  if (!squares_ || squares_->RecordCount() == 0) return;
  squares_->MoveFirst();
  std::optional<std::string> square;
  bool confirmed = false;
  for (; !squares_->EOF_(); squares_->MoveNext()) {
    const std::string key = core::FieldText(*squares_, "Square");
    const bool qsl = squares_->Field("QslRicevuta").Bool();
    if (square && core::SameEntry(*square, key)) {
      confirmed = confirmed || qsl;
      continue;
    }
    if (square) DrawSquare(*square, confirmed);
    square = key;
    confirmed = qsl;
  }
  DrawSquare(*square, confirmed);
}

void MappaSquare::DrawSquare(std::string_view square, bool confirmed) {
  engine::Table& places = *session_.Tables.TbSquare;
  places.Seek("=", {square});
  if (places.NoMatch()) return;
  PicBuf1.Draw({FromPixelColumn(places.Field("X")), FromPixelColumn(places.Field("Y")), kRadius,
                confirmed ? base::kDarkGreen : base::kDarkRed, !confirmed});
}

}  // namespace brenvo::maps
