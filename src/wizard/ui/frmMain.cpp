#include "wizard/ui/frmMain.h"
