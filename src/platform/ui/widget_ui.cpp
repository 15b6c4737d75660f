#include "platform/ui/widget_ui.h"
