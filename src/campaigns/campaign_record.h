// The saved state of the wizard, and the one campaign that is current.

#pragma once

#include <QDateTime>
#include <QString>

namespace qbx {

/// A campaign as it is stored. The field names are the column names of the stored campaign and, with "@" in front, the
/// parameters of the storing procedures (`ID` alone is the parameter "@CampaignID"). Fields named after a list hold the
/// position in that list, -1 for none. The initial values are those of a new campaign where they do not depend on the
/// time.
struct CampaignRecord {
  int Version = 1;         ///< record format; written as held, not otherwise used
  int CampaignTypeID = 1;  ///< query number, the index of the node in the query tree; 0 or less: none
  bool Step1 = false;      ///< wizard step completed
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
  QDateTime Date1;  ///< date range of the query, wall-clock times; invalid when the stored value is NULL
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

/// The campaign that the wizard works on. One, owned by the Application.
struct CurrentCampaign {
  CampaignRecord record;
  /// The wizard differs from what was last saved or loaded. Set by what the user does; cleared by saving and by setting
  /// up the wizard.
  bool CampaignChanged = false;
};

}  // namespace qbx
