#include "grids/ui/cDataGrid.h"
