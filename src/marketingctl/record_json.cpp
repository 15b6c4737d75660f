#include "marketingctl/record_json.h"

#include "campaigns/stored_fields.h"
#include "marketingctl/output.h"

namespace qbx::ctl {

namespace {

constexpr int kNameWidth = 26;
constexpr int kLongestText = 70;

QJsonValue FieldToJson(const CampaignRecord& record, const StoredField& field) {
  return std::visit([&](auto member) { return ToJson(Value(record.*member)); }, field.member);
}

}  // namespace

QJsonObject RecordToJson(const CampaignRecord& record) {
  QJsonObject object{{QStringLiteral("ID"), record.ID}};
  for (const StoredField& field : StoredFields())
    object.insert(QLatin1String(field.name), FieldToJson(record, field));
  return object;
}

void PrintRecord(const CampaignRecord& record) {
  PrintLine(QStringLiteral("ID").leftJustified(kNameWidth) + QString::number(record.ID));
  for (const StoredField& field : StoredFields()) {
    QString text = FieldToJson(record, field).toVariant().toString().simplified();
    if (text.size() > kLongestText) text = text.left(kLongestText - 3) + QStringLiteral("...");
    PrintLine((QLatin1String(field.name) + QString()).leftJustified(kNameWidth) + text);
  }
}

}  // namespace qbx::ctl
