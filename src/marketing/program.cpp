#include "marketing/program.h"
