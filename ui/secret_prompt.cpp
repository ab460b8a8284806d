#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "qt_web_client.h"
#include "ui/text.h"

namespace brenvo::ui {

std::optional<TypedSecret> AskSecret(const std::string& name, const std::string& why) {
  QDialog box(QApplication::activeWindow());
  box.setWindowTitle(ToQt(name));
  auto* const column = new QVBoxLayout(&box);
  column->addWidget(
      new QLabel(QStringLiteral("Parola d'ordine o chiave di accesso di %1:").arg(ToQt(name))));
  auto* const line = new QLineEdit;
  line->setEchoMode(QLineEdit::Password);
  column->addWidget(line);
  auto* const keep = new QCheckBox(QStringLiteral("&Tienila nel portachiavi"));
  keep->setChecked(why.empty());
  keep->setEnabled(why.empty());
  column->addWidget(keep);
  if (!why.empty()) {
    auto* const note =
        new QLabel(QStringLiteral("Il portachiavi del desktop non c'è (%1): si chiede ogni volta.")
                       .arg(InOneLine(ToQt(why))));
    note->setTextFormat(Qt::PlainText);
    note->setWordWrap(true);
    column->addWidget(note);
  }
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &box, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &box, &QDialog::reject);
  column->addWidget(buttons);
  if (box.exec() != QDialog::Accepted || line->text().isEmpty()) return std::nullopt;
  return TypedSecret{FromQt(line->text()), keep->isChecked()};
}

}  // namespace brenvo::ui
