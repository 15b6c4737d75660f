#include "campaigns/stored_fields.h"

namespace qbx {

namespace {

constexpr StoredField kStoredFields[] = {
    {"Version", &CampaignRecord::Version},
    {"CampaignTypeID", &CampaignRecord::CampaignTypeID},
    {"Campaign_Name", &CampaignRecord::Campaign_Name},
    {"Campaign_Description", &CampaignRecord::Campaign_Description},
    {"Letter", &CampaignRecord::Letter},
    {"Email_Subject", &CampaignRecord::Email_Subject},
    {"Email_Body", &CampaignRecord::Email_Body},
    {"SMS", &CampaignRecord::SMS},
    {"Step1", &CampaignRecord::Step1},
    {"Step2", &CampaignRecord::Step2},
    {"Step3", &CampaignRecord::Step3},
    {"Makes", &CampaignRecord::Makes},
    {"Date1", &CampaignRecord::Date1},
    {"Date2", &CampaignRecord::Date2},
    {"Records", &CampaignRecord::Records},
    {"RecordsStart", &CampaignRecord::RecordsStart},
    {"ReminderID", &CampaignRecord::ReminderID},
    {"Marketing", &CampaignRecord::Marketing},
    {"UseCustType", &CampaignRecord::UseCustType},
    {"UseEnquirySource", &CampaignRecord::UseEnquirySource},
    {"UseLastKnownMileage", &CampaignRecord::UseLastKnownMileage},
    {"UseYearOfManufacture", &CampaignRecord::UseYearOfManufacture},
    {"WhenCustType", &CampaignRecord::WhenCustType},
    {"WhenEnquirySource", &CampaignRecord::WhenEnquirySource},
    {"WhenLastKnownMileage", &CampaignRecord::WhenLastKnownMileage},
    {"WhenYearOfManufacture", &CampaignRecord::WhenYearOfManufacture},
    {"ValueCustType", &CampaignRecord::ValueCustType},
    {"ValueEnquirySource", &CampaignRecord::ValueEnquirySource},
    {"ValueLastKnownMileage1", &CampaignRecord::ValueLastKnownMileage1},
    {"ValueLastKnownMileage2", &CampaignRecord::ValueLastKnownMileage2},
    {"ValueYearOfManufacture1", &CampaignRecord::ValueYearOfManufacture1},
    {"ValueYearOfManufacture2", &CampaignRecord::ValueYearOfManufacture2},
};

}  // namespace

std::span<const StoredField> StoredFields() {
  return kStoredFields;
}

}  // namespace qbx
