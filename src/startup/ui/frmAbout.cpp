#include "startup/ui/frmAbout.h"
