#pragma once

// What several tests need.

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <random>
#include <string>

// Other numbers in each run; the environment's GARNEL_TEST_SEED repeats one.
inline std::mt19937_64 seeded_random() {
    const char* fixed = getenv("GARNEL_TEST_SEED");
    const uint64_t seed = fixed != nullptr ? strtoull(fixed, nullptr, 10) : std::random_device{}();
    std::cout << "GARNEL_TEST_SEED=" << seed << '\n';
    return std::mt19937_64(seed);
}

// A new empty directory, which goes with all that is in it.
class TemporaryDirectory {
  public:
    explicit TemporaryDirectory(const std::filesystem::path& parent = std::filesystem::temp_directory_path())
        : path_(parent / "garnel.XXXXXX") {
        if (mkdtemp(path_.data()) == nullptr) abort();
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    ~TemporaryDirectory() { std::filesystem::remove_all(path_); }

    [[nodiscard]] std::filesystem::path path() const { return path_; }
    [[nodiscard]] const char* name() const { return path_.c_str(); }

  private:
    std::string path_;
};
