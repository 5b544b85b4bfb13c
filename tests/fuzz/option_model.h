#pragma once

// Any arguments and tables: the option scanner against one that keeps strings instead of positions.

#include <optional>

#include "lib/option/option.h"
#include "tests/fuzz/words.h"

namespace option_model {

struct Model {
    fuzz::Words words;
    bool collect;
    const e_longoption* table;
    fuzz::Words operands = {};
    size_t next = 0;           // the word behind the one under scan
    std::string cluster = {};  // what is left of the latter
    bool has_value = false;    // which is the value of a name=value
    bool is_over = false;

    int finish(size_t rest) {
        if (!collect) operands.assign(words.begin() + static_cast<long>(rest), words.end());
        is_over = true;
        return e_end;
    }

    int option() {
        if (is_over) return e_end;
        const bool was_name = has_value && cluster[0] == '=' && cluster.size() == words[next - 1].size() + 1;
        if (cluster.empty()) {
            has_value = false;
            for (;; operands.push_back(words[next++])) {
                if (next >= words.size()) return finish(words.size());
                if (words[next][0] == '-' && (words[next].size() > 1 || !collect)) break;
                if (!collect) return finish(next);
            }
            const std::string word = words[next++];
            if (word == "--help") return e_help;
            const size_t equals = word.find('=');
            for (auto row = table; word.starts_with("--") && row->name != nullptr; row++) {
                if (word.substr(0, equals) != row->name) continue;
                has_value = equals != word.npos;
                if (has_value) words[next - 1] = word.substr(equals + 1);
                if (has_value) cluster = '=' + words[next - 1];
                return row->code;
            }
            if (word.size() == 1) return 0;
            cluster = word.substr(1);
        }
        const auto letter = static_cast<signed char>(cluster[0]);
        cluster.erase(0, 1);
        has_value = was_name;
        return letter == e_end ? finish(next - 1) : letter;
    }

    // The operand of an option; none, with why, when there is none.
    std::optional<std::string> operand(int* why) {
        *why = e_opt_past_end;
        if (is_over || next > words.size()) return {};
        cluster.clear();
        *why = e_opt_missing;
        if (!has_value && next++ >= words.size()) return {};
        has_value = false;
        *why = e_opt_ok;
        return words[next - 1];
    }
};

// The first word is the script: the mode, the rows, and which options have an operand of which kind.
inline void compare(fuzz::Words words) {
    const std::string script = words[0] + "  ";
    words.erase(words.begin());
    constexpr e_longoption rows[] = {{"--a", 'a'}, {"--ab", 1000}, {"--a", 'x'}, {"--", 7}, {"--help", 'h'}};
    e_longoption table[std::size(rows) + 1] = {};
    size_t count = 0;
    for (size_t i = 0; i < std::size(rows); i++) {
        if ((static_cast<unsigned>(script[1]) >> i) % 2 != 0) table[count++] = rows[i];
    }

    Model model{.words = words, .collect = script[0] % 2 == 0, .table = table};
    fuzz::Arguments arguments(words);
    e_option state;
    e_initoption(&state, &arguments.argc, &arguments.argv, model.collect);
    if (count > 0) e_setlongoption(&state, table);
    for (size_t step = 2;; step++) {
        const int option = e_getoption(&state);
        fuzz::require(option == model.option(), "another option");
        if (option == e_end) break;
        const char getter = script[step % script.size()];
        if (getter % 4 == 0) continue;
        int why;
        const auto operand = model.operand(&why);
        if (getter % 4 == 1) {
            const char* text = e_opt_getstr(&state);
            fuzz::require(operand ? text != nullptr && *operand == text : text == nullptr, "another operand");
        } else if (getter % 4 == 2) {
            int64_t number = 42;
            const int result = e_opt_getrangeint(&state, &number, -8, 99);
            fuzz::require(result == why || (operand && result == e_opt_out_of_range), "a number's result");
            fuzz::require(result == e_opt_ok ? number >= -8 && number <= 99 : number == 42, "a number");
        } else {
            int64_t number;
            const int result = e_opt_getsize(&state, &number);
            fuzz::require(result == why || (operand && result == e_opt_bad_suffix), "a size's result");
        }
    }
    int64_t number;
    fuzz::require(e_getoption(&state) == e_end && e_opt_getint(&state, &number) == e_opt_past_end,
                  "it goes on");
    fuzz::require(arguments.argv[arguments.argc] == nullptr, "no end of the operands");
    fuzz::require(model.operands == fuzz::Words(arguments.argv, arguments.argv + arguments.argc),
                  "the operands");
}

}  // namespace option_model
