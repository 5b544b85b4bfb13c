#pragma once

// The version of the toolbox, as "--version" prints it.
extern const char garnel_version[6];
