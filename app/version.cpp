#include "app/version.h"

const char garnel_version[] = "0.2.3";
