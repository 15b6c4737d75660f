// Making the messages of a customer exactly as they go out.

#pragma once

#include <QDate>
#include <QString>

#include "merge/compiled_template.h"

namespace qbx {

/// The three templates of a mailshot, from the templates page or the campaign.
struct MailshotTemplates {
  QString sms;
  QString emailSubject;
  QString emailBody;
};

/// Merges the templates of a campaign with one customer after the other. Runs and previews use the same messages.
class MessageMaker {
 public:
  explicit MessageMaker(const MailshotTemplates& templates);

  /// Line breaks are CR LF; at most 918 characters.
  [[nodiscard]] QString Sms(const MergeValues& values, QDate today);
  /// On one line, because a line break would begin another header.
  [[nodiscard]] QString Subject(const MergeValues& values, QDate today);
  [[nodiscard]] QString Body(const MergeValues& values, QDate today);

 private:
  CompiledTemplate sms_;
  CompiledTemplate subject_;
  CompiledTemplate body_;
};

/// A text with blanks in place of its line breaks.
[[nodiscard]] QString OneLine(QString text);

}  // namespace qbx
