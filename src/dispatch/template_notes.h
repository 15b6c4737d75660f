// What is said quietly beside a template: what a user would want to know of it before it goes out.

#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "dispatch/row_survey.h"
#include "merge/template_fields.h"
#include "settings/options.h"

namespace qbx {

/// What the notes are made from beside the template.
struct NoteFacts {
  const Options& options;
  KnownData data = {};                 ///< what the campaign's query gives
  std::optional<RowSurvey> rows = {};  ///< nothing where the rows were not looked at: then nothing is said of them
};

/// The notes of each channel, a sentence each, the most serious first. A template that is blank has none. The same sentences stand in the window and
/// come from `marketingctl preview`.
[[nodiscard]] QStringList SmsNotes(const QString& sms, const NoteFacts& facts);
[[nodiscard]] QStringList EmailNotes(const QString& subject, const QString& body, const NoteFacts& facts);
[[nodiscard]] QStringList LetterNotes(const QString& letter, KnownData data);

/// "{contakt} is no merge field and goes out as it stands.", for one or more of them; empty for none.
[[nodiscard]] QString UnknownFieldsText(const QStringList& fields);

/// The company's own sentence about stopping texts, made of what the options know: the number to reply to, the telephone, the address.
[[nodiscard]] QString StopTextsSentence(const Options& options);
/// The same for e-mails, to which everybody can reply.
[[nodiscard]] QString StopEmailsSentence(const Options& options);

}  // namespace qbx
