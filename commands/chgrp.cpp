// chgrp: changes the group of files (see chown.cpp).

#include "app/tools.h"
#include "commands/chown.h"

int gn_chgrp(int argc, char** argv) {
    return garnel_chown_chgrp_main(argc, argv, false);
}
