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
    std::string text;
};

// What a call prints on both streams.
template <typename Call>
std::string printed(Call call) {
    char* text = nullptr;
    size_t size = 0;
    FILE* const streams[] = {stdout, stderr};
    stdout = stderr = open_memstream(&text, &size);
    call();
    fclose(stdout);
    stdout = streams[0];
    stderr = streams[1];
    std::string result(text, size);
    free(text);
    return result;
}

inline Run run(int (*entry)(int, char**), const Words& words) {
    Arguments arguments(words);
    Run result{};
    result.text = printed([&] { result.status = entry(arguments.argc, arguments.argv); });
    return result;
}

}  // namespace fuzz
