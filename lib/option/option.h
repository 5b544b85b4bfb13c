// The option scanner of every command.
//
// It works on a command's own arguments (those after its name), hands out one option at a time and their
// operands on demand, and at the end rewrites the caller's count and vector so that they hold the operands.
//
//     e_option state;
//     e_initoption(&state, &argc, &argv, true);
//     for (int c; (c = e_getoption(&state)) != e_end;) ...
//
// Oddities that commands rely on: "-n5" never gives 5 to n, whose operand is always the next argument; what
// is left of a cluster after an option that took an operand is dropped; "--" is no end marker but the option
// '-'. Nothing is ever read outside an argument, and nothing is printed.

#pragma once

#include <cstdint>

// A long option: its name with the leading "--", and what e_getoption returns for it (the letter of the
// equivalent short option, or 1000 and above). A row whose name is null ends a table.
struct e_longoption {
    const char* name;
    int code;
};

// The state of a scan, a local variable of the command. Fields are for the scanner alone.
struct e_option {
    char*** argv_ref;  // the caller's vector and count, rewritten at the end of the scan;
    int* argc_ref;     // null once that has happened
    char** operands;   // where operands are collected: the caller's vector, from index 0
    int noperands;     // how many there are so far
    char** argv;       // the vector under scan and its length
    int argc;
    int index;                     // the argument under scan
    int pos;                       // its next character; -1 after a long option given as name=value
    int len;                       // its length
    bool collect;                  // operands may stand among the options
    const e_longoption* longopts;  // or null
};

inline constexpr int e_end = -1;   // e_getoption: the scan is over
inline constexpr int e_help = -2;  // e_getoption: "--help"

// What the numeric getters return.
inline constexpr int e_opt_ok = 0;
inline constexpr int e_opt_missing = 1;       // there is no next argument
inline constexpr int e_opt_past_end = 2;      // the scan was over already
inline constexpr int e_opt_bad_suffix = 2;    // e_opt_getsize alone
inline constexpr int e_opt_out_of_range = 3;  // e_opt_getrangeint alone

// Starts a scan of *argv. With collect, options and operands may be mixed; without, the first operand ends
// the scan and everything from there on is left to the command. Both variables must outlive the scan.
void e_initoption(e_option* state, int* argc, char*** argv, bool collect);

// Attaches a table of long options, replacing an earlier one. The table must outlive the scan.
void e_setlongoption(e_option* state, const e_longoption* table);

// The next option: its byte (sign-extended), the code of a long option, e_help, or e_end when the scan is
// over and the caller's variables hold the operands, as further calls keep saying. A long option that is not
// in the table comes out as '-'; one given as name=value whose value is never fetched is followed by the
// option '='. The option bytes 0xFF and 0xFE are these two results: 0xFF ends the scan where it stands, 0xFE
// asks for help.
[[nodiscard]] int e_getoption(e_option* state);

// The operand of the option just returned, a pointer into the vector, or null if there is none.
[[nodiscard]] char* e_opt_getstr(e_option* state);

// The operand as a number: decimal, "0x" hexadecimal or leading-0 octal; trailing text is ignored and a text
// without digits is 0. Saturates at the ends of the type. *value is written on success only.
[[nodiscard]] int e_opt_getint(e_option* state, int64_t* value);

// The same for a number from min to max.
[[nodiscard]] int e_opt_getrangeint(e_option* state, int64_t* value, int64_t min, int64_t max);

// The same for a number with a size suffix (see size_suffix.h). On e_opt_bad_suffix, *value may have changed.
[[nodiscard]] int e_opt_getsize(e_option* state, int64_t* value);
