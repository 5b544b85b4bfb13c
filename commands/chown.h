#pragma once

// What chown and chgrp share: chgrp is chown without an owner, down to the "chown" in its messages.
int garnel_chown_chgrp_main(int argc, char** argv, bool is_chown);
