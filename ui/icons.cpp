#include "ui/icons.h"

#include <algorithm>
#include <array>
#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>
#include <utility>

#include "ui/text.h"

// Resources of a library are not found unless something asks for them.
static void LoadIcons() { Q_INIT_RESOURCE(icons); }

namespace brenvo::ui {
namespace {

constexpr std::pair<std::string_view, const char*> kPictures[] = {
    {"cmInsert", "insert"},
    {"cmUpdate", "update"},
    {"cmDelete", "delete"},
    {"cmFirst", "first"},
    {"cmPrevious", "previous"},
    {"cmNext", "next"},
    {"cmLast", "last"},
    {"cmSearch", "search"},
    {"cmClear", "new"},
    {"cmHelp", "help"},
    {"cmExit", "exit"},
    {"cmMappa", "map"},
    {"cmWorked", "worked"},
    {"cmVista", "grid"},
    {"cmExport", "export"},
    {"cmEsporta", "export"},
    {"cmPrint", "print"},
    {"cmStampa", "print"},
    {"cmQso", "qso"},
    {"cmStat", "check"},
    {"cmConnect", "connect"},
    {"cmDX", "dx"},
    {"cmQtr", "clock"},
    {"cmVerticale", "portrait"},
    {"cmOrizzontale", "landscape"},
    {"cmNew", "insert"},
    {"cmCambia", "check"},
    {"cmConverti", "clock"},
    {"cmPredefinito", "previous"},
    {"cmCorrente", "check"},
    {"cmRiprendi", "previous"},
    {"cmRiprendiQso", "previous"},
    {"cmStatistiche", "chart"},
    {"cmCheckCall", "worked"},
    {"cmAutoCall", "sound"},
    {"cmInvia", "send"},
    {"cmMappaMondo", "map"},
    {"cmGeneraHTML", "page"},
    {"cmByCountry", "page"},
    {"cmByDate", "page"},
    {"cmByProvince", "page"},
    {"cmBySquare", "page"},
};

// Draws one picture in whatever colour words have at that moment.
class Engine : public QIconEngine {
 public:
  explicit Engine(QByteArray drawing) : drawing_(std::move(drawing)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    const QColor colour = QApplication::palette().color(group, QPalette::ButtonText);
    QByteArray coloured = drawing_;
    coloured.replace("#000", colour.name().toUtf8());
    painter->setRenderHint(QPainter::Antialiasing);
    if (mode == QIcon::Disabled) painter->setOpacity(painter->opacity() * 0.6);
    QSvgRenderer(coloured).render(painter, rect);
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return picture;
  }

  QIconEngine* clone() const override { return new Engine(*this); }

 private:
  QByteArray drawing_;
};

}  // namespace

QIcon CommandIcon(std::string_view command) {
  LoadIcons();
  const auto* at = std::find_if(std::begin(kPictures), std::end(kPictures),
                                [&](const auto& each) { return each.first == command; });
  if (at == std::end(kPictures)) return {};
  QFile file(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(at->second)));
  if (!file.open(QIODevice::ReadOnly)) return {};
  return QIcon(new Engine(file.readAll()));
}

QIcon ProgramIcon() {
  LoadIcons();
  return QIcon(QStringLiteral(":/icons/brenvo.svg"));
}

}  // namespace brenvo::ui
