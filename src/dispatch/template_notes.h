// Notes beside a template: what a user should know of it before it goes out.

#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "dispatch/row_survey.h"
#include "merge/template_fields.h"
#include "settings/options.h"

namespace qbx {

/// What the notes depend on beside the template.
struct NoteFacts {
  const Options& options;
  KnownData data = {};                 ///< the data that the campaign's query gives
  std::optional<RowSurvey> rows = {};  ///< nothing when the rows were not surveyed; there are no notes about them then
};

/// The notes of each channel, one sentence each, the most serious first. A blank template has none. The window and
/// `marketingctl preview` show the same sentences.
[[nodiscard]] QStringList SmsNotes(const QString& sms, const NoteFacts& facts);
[[nodiscard]] QStringList EmailNotes(const QString& subject, const QString& body, const NoteFacts& facts);
[[nodiscard]] QStringList LetterNotes(const QString& letter, KnownData data);

/// The sentence "{contakt} is no merge field and goes out as it stands.", for one or more fields; empty for none.
[[nodiscard]] QString UnknownFieldsText(const QStringList& fields);

/// The company's sentence about stopping texts, made from the options: the number to reply to, the telephone, the
/// address.
[[nodiscard]] QString StopTextsSentence(const Options& options);
/// The company's sentence about stopping e-mails, which everybody can reply to.
[[nodiscard]] QString StopEmailsSentence(const Options& options);

}  // namespace qbx
