// The saved state of the wizard, and the current campaign.

#pragma once

#include <QDateTime>
#include <QString>

namespace qbx {

/// A campaign as it is stored. The field names are the columns of the stored campaign and, with "@" in front, the
/// parameters of the storing procedures (`ID` is the parameter "@CampaignID"). A field named after a list holds the
/// position in that list, -1 for none. Initial values are those of a new campaign, except for values that depend on the
/// time.
struct CampaignRecord {
  int Version = 1;         ///< record format; stored unchanged, not used otherwise
  int CampaignTypeID = 1;  ///< query number: the index of the node in the query tree; 0 or less for none
  bool Step1 = false;      ///< whether the wizard step is completed
  bool Step2 = false;
  bool Step3 = false;
  int ID = 0;  ///< below 1: not yet saved; below 0: the temporary ID of an unsaved campaign
  QString Campaign_Name;
  QString Campaign_Description;
  QString Letter;         ///< letter template, RTF
  QString Email_Subject;  ///< templates, plain text
  QString Email_Body;
  QString SMS;
  QString Makes;    ///< makes as typed or chosen, separated by commas
  QDateTime Date1;  ///< date range of the query, wall-clock times; invalid for NULL
  QDateTime Date2;
  int Records = 100;
  int RecordsStart = 1;
  int ReminderID = -1;  ///< list position
  bool Marketing = false;
  bool UseCustType = false;
  bool UseEnquirySource = false;
  bool UseLastKnownMileage = false;
  bool UseYearOfManufacture = false;
  int WhenCustType = -1;  ///< list positions of the filter conditions
  int WhenEnquirySource = -1;
  int WhenLastKnownMileage = -1;
  int WhenYearOfManufacture = -1;
  QString ValueCustType;
  QString ValueEnquirySource;
  QString ValueLastKnownMileage1;
  QString ValueLastKnownMileage2;
  QString ValueYearOfManufacture1;
  QString ValueYearOfManufacture2;

  bool operator==(const CampaignRecord&) const = default;
};

/// The campaign in the wizard. There is one, owned by the Application.
struct CurrentCampaign {
  CampaignRecord record;
  /// Whether the wizard differs from what was last saved or loaded. Set by the user's edits; cleared by saving and by
  /// setting up the wizard.
  bool CampaignChanged = false;
};

}  // namespace qbx
