#include "marketing/ui/template_pane.h"

#include <QLabel>
#include <QScopedValueRollback>
#include <QString>
#include <QStringList>

namespace qbx {

void TemplatePane::Work(const PageParts& parts, std::shared_ptr<Spelling> spelling) {
  parts_.emplace(parts);
  spelling_ = std::move(spelling);
  Connect();
}

void TemplatePane::ShowState() {
  const QScopedValueRollback<bool> showing(showing_, true);
  CopyState();
}

void TemplatePane::Store(QString& value, const QString& text) {
  if (showing_) return;
  value = text;
  parts_->desk.selection.Changed();
  Q_EMIT Edited();
}

MessageMaker TemplatePane::Messages() const {
  return MessageMaker({State().txtSMS, State().txtEmailSubject, State().txtEmailBody});
}

void TemplatePane::ShowSentences(QLabel& label, const QStringList& sentences) {
  label.setText(sentences.join(QStringLiteral(" ")));
  label.setVisible(!sentences.isEmpty());
}

}  // namespace qbx
