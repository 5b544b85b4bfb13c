#pragma once

// What the targets share: arguments made of a fuzzer's bytes, and a command run in this process.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

using Words = std::vector<std::string>;

inline void require(bool holds, const char* what) {
    if (holds) return;
    fprintf(stderr, "violated: %s\n", what);
    abort();
}

// The bytes, cut at every NUL.
inline Words split(const uint8_t* data, size_t size) {
    Words words(1);
    for (const char byte : std::string_view(reinterpret_cast<const char*>(data), size)) {
        if (byte == '\0') {
            words.emplace_back();
        } else {
            words.back() += byte;
        }
    }
    return words;
}

// Words as a command gets them, each in memory of its own so that the sanitizer sees every step beside it.
class Arguments {
  public:
    explicit Arguments(const Words& words) : argc(static_cast<int>(words.size())) {
        for (const std::string& word : words) texts_.push_back(strdup(word.c_str()));
        vector_ = texts_;
        vector_.push_back(nullptr);
        argv = vector_.data();
    }
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;
    ~Arguments() {
        for (char* text : texts_) free(text);
    }

    int argc;
    char** argv;

  private:
    std::vector<char*> texts_, vector_;
};

struct Run {
    int status;
    std::string text;  // of both streams
};

inline Run run(int (*entry)(int, char**), const Words& words) {
    Arguments arguments(words);
    char* text = nullptr;
    size_t size = 0;
    FILE* const streams[] = {stdout, stderr};
    stdout = stderr = open_memstream(&text, &size);
    Run result{entry(arguments.argc, arguments.argv), {}};
    fclose(stdout);
    stdout = streams[0];
    stderr = streams[1];
    result.text.assign(text, size);
    free(text);
    return result;
}

}  // namespace fuzz
