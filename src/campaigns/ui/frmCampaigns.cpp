#include "campaigns/ui/frmCampaigns.h"
