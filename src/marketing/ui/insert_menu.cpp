#include "marketing/ui/insert_menu.h"

#include <QAction>
#include <QMenu>
#include <QObject>
#include <QToolButton>

#include "merge/template_fields.h"
#include "startup/application.h"

namespace qbx {

void FillInsertMenu(QToolButton& button, const Application& app, const std::vector<InsertEntry>& more,
                    const std::function<void(const QString&)>& insert) {
  auto* menu = new QMenu(&button);
  const auto add = [&](const QString& caption, const QString& text) {
    QObject::connect(menu->addAction(QString(caption).replace(QLatin1Char('&'), QStringLiteral("&&"))),
                     &QAction::triggered, &button, [insert, text] { insert(text); });
  };
  for (const FieldMeaning& field : FieldMeanings(app.clock.Today(), app.startup.edition.boat)) {
    const QString example = field.example.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(field.example);
    add(QStringLiteral("%1   %2%3").arg(field.field, field.meaning, example), field.field);
  }
  if (!more.empty()) menu->addSeparator();
  for (const InsertEntry& entry : more)
    add(entry.caption, entry.text);
  button.setMenu(menu);
  button.setPopupMode(QToolButton::InstantPopup);
}

}  // namespace qbx
