#pragma once

#include "lib/spawn/spawn.h"

// The next place to try without looking at it, null at the end. Two bytes in front of it are free.
char* next_candidate(e_search* search);
