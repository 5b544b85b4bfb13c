#include "common/start.h"

#include "common/cli.h"

int cannot_start(const char* name, const e_program& program, const e_failure& failure, const char* user) {
    const char* what = program.file != nullptr ? program.file : program.arguments[0];
    int status = exit_not_started;
    switch (failure.step) {
    case e_step_root: what = program.root; break;
    case e_step_identity: what = user; break;
    case e_step_directory: what = program.directory; break;
    case e_step_program: status = e_failure_status(failure.error); break;
    default: break;
    }
    cli::error("%s: %s: %s\n", name, what, gn_strerror(failure.error));
    return status;
}
