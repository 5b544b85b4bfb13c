// Any expression: that it is read to its end and no further. What its result is to be, tests/models/test_model.py
// knows.

#include "app/tools.h"
#include "commands/test_expression.h"
#include "tests/fuzz/words.h"

namespace {

// The result of the words, all of which are consumed when it is a clean one.
int evaluate(const fuzz::Words& words) {
    fuzz::Arguments arguments(words);
    int left = arguments.argc;
    char** position = arguments.argv;
    const int result = gn_test_eval(&left, &position);
    fuzz::require(result >= -8 && result <= 3, "no such result");
    fuzz::require(left >= 0 && position + left == arguments.argv + arguments.argc, "words out of step");
    fuzz::require(result < 0 || left == 0, "words left over");
    return result;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static constexpr const char* known[] = {
        "!",   "(",   ")",   "-a",  "-o",  "-l",  "=",   "==",  "!=",        "-eq",
        "-ne", "-lt", "-le", "-gt", "-ge", "-ef", "-nt", "-ot", "-n",        "-z",
        "-d",  "-e",  "-s",  "-r",  "-q",  "-",   "",    "/",   "/dev/null",
    };
    // Bytes below ' ' stand for words that mean something.
    fuzz::Words words;
    for (std::string& word : fuzz::split(data, size)) {
        const auto code = static_cast<unsigned char>(word[0]);
        words.push_back(code > 0 && code <= std::size(known) ? known[code - 1] : word);
    }
    const int result = evaluate(words);
    fuzz::Words negated = words;
    negated.insert(negated.begin(), 2, "!");
    fuzz::require(evaluate(negated) == (result < 0 ? result : static_cast<int>(result != 0)), "not not");

    // No command reads what stands behind an operand in this way.
    for (const bool closed : {false, true}) {
        fuzz::Words more = words;
        more.insert(more.begin(), {")", "-a"});
        fuzz::Arguments arguments(more);
        int left = arguments.argc - !closed;
        char** position = arguments.argv + !closed;
        fuzz::require(gn_test_eval_rest(&left, &position, closed, test_before) == (result | test_before),
                      "the rest");
    }

    if (words[0] == "--help") return 0;
    fuzz::require(fuzz::run(gn_test, words).status == result, "the status of test");
    words.emplace_back("]");
    fuzz::require(fuzz::run(gn_brace, words).status == result, "the status of [");
    return 0;
}
