// The terminal that standard output shows on.

#pragma once

// The window size in characters (each pointer may be null); 80 columns and 24 rows where it is unknown.
// Returns 0 when a terminal answered, 1 otherwise.
int garnel_getwinsize(unsigned* columns, unsigned* rows);
