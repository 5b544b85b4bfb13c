// The expressions of test and [.
//
//     expression:  ! expression
//                  operand
//                  operand -a expression
//                  operand -o expression
//     operand:     integer (-eq | -ne | -lt | -le | -gt | -ge) integer
//                  string (= | == | !=) string
//                  file (-ef | -nt | -ot) file
//                  -letter word
//     integer:     word | -l word
//
// Everything groups to the right and "-a" binds no tighter than "-o"; "!" negates all that follows it, and a
// lone word is an error, not a test. The parenthesis exists, and always ends in an error: a ")" behind an
// operand is one already.
//
// The words are consumed from the front of a count and a vector, both of which move on.

#pragma once

// Results: 0 for true, 1 to 3 for false (more than 1 only where -ef found the first file before the second,
// and -a added to that), and below 0 for an error, to which -a may have added, too.
inline constexpr int test_true = 0;
inline constexpr int test_false = 1;
inline constexpr int test_before = 2;
inline constexpr int test_missing_operand = -1;  // also a parenthesis, or a lone word that begins with '-'
inline constexpr int test_excess = -2;           // a word where -a or -o should be; an operator like -abc
inline constexpr int test_empty = -3;
inline constexpr int test_unknown_operator = -4;  // a '-' and an unknown letter
inline constexpr int test_no_operator = -5;       // a word without '-' where an operator should be
inline constexpr int test_closed_operand = -8;    // a ")" behind an operand

// Evaluates a whole expression.
[[nodiscard]] int gn_test_eval(int* argc, char*** argv);

// Goes on behind an operand whose result was value (0 to 3). With skip_one, the first word is the ")" that
// ended the operand.
[[nodiscard]] int gn_test_eval_rest(int* argc, char*** argv, bool skip_one, int value);

// What an operator word compares, or -1 for any other word and -2 for none (null). Integers and strings: a
// mask of the orders that are true.
inline constexpr int test_less = 1;
inline constexpr int test_equal = 2;
inline constexpr int test_greater = 4;
[[nodiscard]] int gn_readintcmp(const char* word);
[[nodiscard]] int gn_readstrcmp(const char* word);

// Files: one of these.
inline constexpr int test_same_file = 1;
inline constexpr int test_not_older = 2;
inline constexpr int test_not_newer = 3;
[[nodiscard]] int gn_readfilecmp(const char* word);
