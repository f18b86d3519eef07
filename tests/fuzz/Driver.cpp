// The program around a fuzz target: every input of the corpus as it stands, then mutated ones until
// the time is over. See README.md.
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "Mutator.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
extern "C" void __sanitizer_set_death_callback(void (*callback)()) __attribute__((weak));

namespace {

using quarv::fuzz::Input;
using quarv::fuzz::Mutator;
namespace fs = std::filesystem;

constexpr unsigned LongestSeconds = 20;  // for one input

std::string crashFile;
Input current;

void KeepCurrent() {
    std::ofstream file(crashFile, std::ios::binary);
    file.write(reinterpret_cast<const char*>(current.data()),
               static_cast<std::streamsize>(current.size()));
    file.flush();
    std::fprintf(stderr, "the input is left as %s\n", crashFile.c_str());
}

void OnSignal(int signal) {
    KeepCurrent();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

Input Load(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void Run(Input input) {
    current = std::move(input);
    ::alarm(LongestSeconds);
    LLVMFuzzerTestOneInput(current.data(), current.size());
    ::alarm(0);
}

struct Options {
    long seconds = 1;
    uint64_t seed = 1;
    std::vector<Input> corpus;
};

void AddFolder(const fs::path& folder, std::vector<Input>& corpus) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(folder)) files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    for (const fs::path& file : files) corpus.push_back(Load(file));
}

Options Read(int count, char** arguments) {
    Options options;
    for (int i = 1; i < count; ++i) {
        const std::string word = arguments[i];
        if (word == "--seconds" && i + 1 < count) {
            options.seconds = std::atol(arguments[++i]);
        } else if (word == "--seed" && i + 1 < count) {
            options.seed = std::strtoull(arguments[++i], nullptr, 10);
        } else if (fs::is_directory(word)) {
            AddFolder(word, options.corpus);
        } else {
            options.corpus.push_back(Load(word));
        }
    }
    return options;
}

}  // namespace

int main(int count, char** arguments) {
    const Options options = Read(count, arguments);
    if (options.corpus.empty()) {
        std::fprintf(stderr, "usage: %s [--seconds N] [--seed N] FILE|FOLDER...\n", arguments[0]);
        return 2;
    }
    crashFile = "crash-" + fs::path(arguments[0]).filename().string();
    for (const int signal : {SIGABRT, SIGSEGV, SIGFPE, SIGILL, SIGALRM}) {
        std::signal(signal, OnSignal);
    }
    if (__sanitizer_set_death_callback) __sanitizer_set_death_callback(KeepCurrent);
    for (const Input& input : options.corpus) Run(input);
    Mutator mutator(options.corpus, options.seed);
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(options.seconds);
    long runs = 0;
    for (; std::chrono::steady_clock::now() < end; ++runs) Run(mutator.Next());
    std::printf("%zu inputs kept, %ld made\n", options.corpus.size(), runs);
    return 0;
}
