#include "lib/option/option.h"

#include <cstdlib>
#include <cstring>

#include "lib/option/size_suffix.h"

namespace {

// Hands the operands over, once.
int finish(e_option* state) {
    if (state->argc_ref == nullptr) return e_end;
    if (state->collect) {
        state->operands[state->noperands] = nullptr;
        *state->argc_ref = state->noperands;
        *state->argv_ref = state->operands;
    } else {
        *state->argc_ref = state->argc - state->index;
        *state->argv_ref = state->argv + state->index;
    }
    state->argc_ref = nullptr;
    state->index = state->argc;
    state->pos = 1;
    state->len = 0;
    return e_end;
}

// The option at state->pos of the argument under scan.
int short_option(e_option* state, const char* argument) {
    auto option = static_cast<signed char>(argument[state->pos]);
    state->pos++;
    return option == e_end ? finish(state) : option;
}

int long_option(e_option* state, char* argument) {
    if (strcmp(argument, "--help") == 0) {
        state->pos = state->len + 1;
        return e_help;
    }
    size_t name_size = strcspn(argument, "=");
    const e_longoption* row = state->longopts;
    while (row != nullptr && row->name != nullptr) {
        if (strlen(row->name) == name_size && memcmp(row->name, argument, name_size) == 0) {
            if (argument[name_size] == '=') {
                // The value takes the argument's place. Should the command never fetch it, the scan goes on
                // at the '=' in front of it, which no command knows as an option.
                state->argv[state->index] = argument + name_size + 1;
                state->len = static_cast<int>(strlen(argument + name_size + 1));
                state->pos = -1;
            } else {
                state->pos = state->len + 1;
            }
            return row->code;
        }
        row++;
    }
    state->pos = 1;
    return short_option(state, argument);
}

int convert_range(const char* text, int64_t* value, int64_t min, int64_t max) {
    int64_t number = strtoll(text, nullptr, 0);
    if (number < min || number > max) return e_opt_out_of_range;
    *value = number;
    return e_opt_ok;
}

// The common part of the getters: e_opt_ok with the operand, e_opt_missing or e_opt_past_end.
int take_operand(e_option* state, char** operand) {
    if (state->index >= state->argc) return e_opt_past_end;
    if (state->pos > 0) {
        state->index++;
        if (state->index >= state->argc) return e_opt_missing;
    }
    *operand = state->argv[state->index];
    state->pos = 1;
    state->len = 0;
    return e_opt_ok;
}

}  // namespace

void e_initoption(e_option* state, int* argc, char*** argv, bool collect) {
    *state = {
        .argv_ref = argv,
        .argc_ref = argc,
        .operands = *argv,
        .noperands = 0,
        .argv = *argv,
        .argc = *argc,
        .index = -1,
        .pos = 1,
        .len = 0,
        .collect = collect,
        .longopts = nullptr,
    };
}

void e_setlongoption(e_option* state, const e_longoption* table) {
    state->longopts = table;
}

int e_getoption(e_option* state) {
    if (state->index >= state->argc) return finish(state);
    if (state->pos < state->len) return short_option(state, state->argv[state->index]);

    for (state->index++; state->index < state->argc; state->index++) {
        char* argument = state->argv[state->index];
        state->len = static_cast<int>(strlen(argument));
        if (argument[0] == '-' && (state->len > 1 || !state->collect)) {
            if (argument[1] == '-') return long_option(state, argument);
            state->pos = 1;
            return short_option(state, argument);
        }
        if (!state->collect) break;
        state->operands[state->noperands++] = argument;
    }
    return finish(state);
}

char* e_opt_getstr(e_option* state) {
    char* operand = nullptr;
    return take_operand(state, &operand) == e_opt_ok ? operand : nullptr;
}

int e_opt_getint(e_option* state, int64_t* value) {
    return e_opt_getrangeint(state, value, INT64_MIN, INT64_MAX);
}

int e_opt_getrangeint(e_option* state, int64_t* value, int64_t min, int64_t max) {
    char* operand = nullptr;
    int result = take_operand(state, &operand);
    return result == e_opt_ok ? convert_range(operand, value, min, max) : result;
}

int e_opt_getsize(e_option* state, int64_t* value) {
    char* operand = nullptr;
    int result = take_operand(state, &operand);
    if (result != e_opt_ok) return result;
    char* suffix = nullptr;
    auto number = static_cast<uint64_t>(strtoll(operand, &suffix, 0));
    if (!e_apply_size_suffix(suffix, &number)) return e_opt_bad_suffix;
    *value = static_cast<int64_t>(number);
    return e_opt_ok;
}
