// The messages of a customer, exactly as they go out.

#pragma once

#include <QDate>
#include <QString>

#include "merge/compiled_template.h"

namespace qbx {

/// The three templates of a mailshot, as they stand on the templates page or in the campaign.
struct MailshotTemplates {
  QString sms;
  QString emailSubject;
  QString emailBody;
};

/// Merges the templates of a campaign with one customer after the other. A run sends what this makes, and a preview shows it.
class MessageMaker {
 public:
  explicit MessageMaker(const MailshotTemplates& templates);

  /// Line breaks as CR LF, at most 918 characters.
  [[nodiscard]] QString Sms(const MergeValues& values, QDate today);
  /// In one line: a line break would become a header of its own.
  [[nodiscard]] QString Subject(const MergeValues& values, QDate today);
  [[nodiscard]] QString Body(const MergeValues& values, QDate today);

 private:
  CompiledTemplate sms_;
  CompiledTemplate subject_;
  CompiledTemplate body_;
};

/// A text with its line breaks as blanks.
[[nodiscard]] QString OneLine(QString text);

}  // namespace qbx
