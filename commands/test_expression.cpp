#include "commands/test_expression.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <span>

#include <sys/stat.h>
#include <unistd.h>

namespace {

bool equal(const char* a, const char* b) {
    return strcmp(a, b) == 0;
}

class Words {
  public:
    Words(int* count, char*** position) : count_(count), position_(position) {}

    [[nodiscard]] int count() const { return *count_; }
    [[nodiscard]] const char* operator[](int index) const { return (*position_)[index]; }
    [[nodiscard]] bool starts_with(const char* word) const { return count() > 0 && equal((*this)[0], word); }

    void take(int number) {
        *count_ -= number;
        *position_ += number;
    }

  private:
    int* count_;
    char*** position_;
};

// What the words read so far make of the result of those to come: each "!", and each operand with its "-a" or
// "-o", waits for that result, and there may be a hundred thousand of them. As there are only twelve results,
// a table of what becomes of each says it all, and no stack has to grow with the words.
class Pending {
  public:
    [[nodiscard]] int outcome(int result) const { return outcomes_[result - lowest]; }

    // From now on the result goes through step first.
    template <typename Step>
    void add(Step step) {
        int8_t old[results];
        std::copy_n(outcomes_, results, old);
        for (int result = lowest; result <= highest; result++)
            outcomes_[result - lowest] = old[step(result) - lowest];
    }

    void add_not() {
        add([](int result) { return result < 0 ? result : static_cast<int>(result == 0); });
    }
    // The error codes take part in the bitwise or, literally.
    void add_and(int left) {
        add([left](int result) { return result | left; });
    }
    void add_or(int left) {
        add([left](int result) { return result < 0 ? result : static_cast<int>(left != 0 && result != 0); });
    }

  private:
    static constexpr int lowest = -8;
    static constexpr int highest = 3;
    static constexpr int results = highest - lowest + 1;

    int8_t outcomes_[results] = {-8, -7, -6, -5, -4, -3, -2, -1, 0, 1, 2, 3};
};

int truth(bool value) {
    return value ? test_true : test_false;
}

// Less than, equal to or greater than 0, as a is to b.
template <typename T>
int order(T a, T b) {
    return (a > b) - (a < b);
}

bool holds(int mask, int order) {
    int bit = order < 0 ? test_less : order == 0 ? test_equal : test_greater;
    return (mask & bit) != 0;
}

// Texts without a number are 0. Unlike atoll, this is defined for numbers that are too large: they saturate.
int64_t to_integer(const char* text) {
    return strtoll(text, nullptr, 10);
}

int compare_integers(Words& words, const char* left, int mask) {
    if (words.count() < 3) return test_missing_operand;
    int64_t right = 0;
    int length = 3;
    if (equal(words[2], "-l")) {
        if (words.count() < 4) return test_missing_operand;
        right = static_cast<int64_t>(strlen(words[3]));
        length = 4;
    } else {
        right = to_integer(words[2]);
    }
    words.take(length);
    return truth(holds(mask, order(to_integer(left), right)));
}

int compare_strings(Words& words, const char* left, int mask) {
    if (words.count() < 3) return test_missing_operand;
    const char* right = words[2];
    words.take(3);
    return truth(holds(mask, strcmp(left, right)));
}

// A file that is not there is as old as can be, and the same as any other that is not there.
struct stat status_or_zeros(const char* path) {
    struct stat status;
    if (stat(path, &status) != 0) status = {};
    return status;
}

int compare_files(Words& words, const char* left, int relation) {
    if (words.count() < 3) return test_missing_operand;
    const struct stat first = status_or_zeros(left);
    const struct stat second = status_or_zeros(words[2]);
    words.take(3);

    if (relation == test_same_file) {
        int place = order(first.st_dev, second.st_dev);
        if (place == 0) place = order(first.st_ino, second.st_ino);
        return place < 0 ? test_before : truth(place == 0);
    }
    int age = order(first.st_mtim.tv_sec, second.st_mtim.tv_sec);
    if (age == 0) age = order(first.st_mtim.tv_nsec, second.st_mtim.tv_nsec);
    return truth(relation == test_not_older ? age >= 0 : age <= 0);
}

bool has_type(const char* path, mode_t type) {
    struct stat status;
    return stat(path, &status) == 0 && (status.st_mode & S_IFMT) == type;
}

bool has_content(const char* path) {
    struct stat status;
    return stat(path, &status) == 0 && status.st_size >= 1;
}

int test_word(char letter, const char* word) {
    switch (letter) {
    case 'b': return truth(has_type(word, S_IFBLK));
    case 'c': return truth(has_type(word, S_IFCHR));
    case 'd': return truth(has_type(word, S_IFDIR));
    case 'f': return truth(has_type(word, S_IFREG));
    case 'p': return truth(has_type(word, S_IFIFO));
    case 'S': return truth(has_type(word, S_IFSOCK));
    case 'h':
    case 'L': return truth(has_type(word, S_IFLNK));
    case 's': return truth(has_content(word));
    case 'e': return truth(access(word, F_OK) == 0);
    case 'r': return truth(access(word, R_OK) == 0);
    case 'w': return truth(access(word, W_OK) == 0);
    case 'x': return truth(access(word, X_OK) == 0);
    case 'n': return truth(word[0] != '\0');
    case 'z': return truth(word[0] == '\0');
    default: return test_unknown_operator;
    }
}

int read_unary(Words& words, const char* name) {
    if (name[0] != '-') return test_no_operator;
    if (strlen(name) > 2) return test_excess;
    const char* word = words[1];
    words.take(2);
    return test_word(name[1], word);
}

// The operand whose first word is the first of the remaining ones.
int read_operand(Words& words) {
    const char* first = words[0];
    char length[24];  // of a word, in digits
    if (equal(first, "-l")) {
        if (words.count() < 2) return test_missing_operand;
        *std::to_chars(length, std::end(length) - 1, strlen(words[1])).ptr = '\0';
        first = length;
        words.take(1);
    }
    if (words.count() < 2) return first[0] == '-' ? test_missing_operand : test_no_operator;

    const char* name = words[1];
    if (int mask = gn_readintcmp(name); mask > 0) return compare_integers(words, first, mask);
    if (int mask = gn_readstrcmp(name); mask > 0) return compare_strings(words, first, mask);
    if (int relation = gn_readfilecmp(name); relation > 0) return compare_files(words, first, relation);
    return read_unary(words, first);
}

// Consumes what stands behind an operand. True when another expression follows; otherwise *value is the
// result.
bool continues(Words& words, bool skip_one, int* value, Pending& pending) {
    if (skip_one) words.take(1);
    if (words.count() == 0) return false;
    if (words.starts_with(")")) {
        if (!skip_one) *value = test_closed_operand;
        return false;
    }
    if (words.starts_with("-a")) {
        pending.add_and(*value);
    } else if (words.starts_with("-o")) {
        pending.add_or(*value);
    } else {
        *value = test_excess;
        return false;
    }
    words.take(1);
    return true;
}

int evaluate(Words& words, Pending& pending) {
    for (;;) {
        while (words.starts_with("!")) {
            words.take(1);
            pending.add_not();
        }
        if (words.count() == 0) return pending.outcome(test_empty);
        // Whatever follows: nothing could close it without being an error first.
        if (words.starts_with("(")) return pending.outcome(test_missing_operand);

        int value = read_operand(words);
        if (value < 0 || !continues(words, false, &value, pending)) return pending.outcome(value);
    }
}

struct Operator {
    const char* word;
    int meaning;
};

int find(std::span<const Operator> operators, const char* word) {
    if (word == nullptr) return -2;
    for (const Operator& known : operators) {
        if (equal(known.word, word)) return known.meaning;
    }
    return -1;
}

}  // namespace

int gn_readintcmp(const char* word) {
    static constexpr Operator operators[] = {
        {"-lt", test_less},
        {"-eq", test_equal},
        {"-le", test_less | test_equal},
        {"-gt", test_greater},
        {"-ne", test_less | test_greater},
        {"-ge", test_equal | test_greater},
    };
    return find(operators, word);
}

int gn_readstrcmp(const char* word) {
    static constexpr Operator operators[] = {
        {"=", test_equal},
        {"==", test_equal},
        {"!=", test_less | test_greater},
    };
    return find(operators, word);
}

int gn_readfilecmp(const char* word) {
    static constexpr Operator operators[] = {
        {"-ef", test_same_file},
        {"-nt", test_not_older},
        {"-ot", test_not_newer},
    };
    return find(operators, word);
}

int gn_test_eval(int* argc, char*** argv) {
    Words words(argc, argv);
    Pending pending;
    return evaluate(words, pending);
}

int gn_test_eval_rest(int* argc, char*** argv, bool skip_one, int value) {
    Words words(argc, argv);
    Pending pending;
    return continues(words, skip_one, &value, pending) ? evaluate(words, pending) : value;
}
