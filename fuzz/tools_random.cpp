// Runs of the drafting tools with inputs of chance, the same at every run.
//
//   tools_random COUNT [SEED]                as a test
//   tools_random COUNT SEED --collect DIR    keeps the inputs that made a tool say something new behind what
//                                            it had said before, and goes on from those: the corpus
//   tools_random 0 0 --show FILE             what a file of the corpus stands for, and what comes of it
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "fuzz/tools_run.h"

namespace
{

constexpr std::size_t SHORTEST = 4, LONGEST = 140;

std::string random_bytes(std::mt19937& random)
{
    std::string bytes(SHORTEST + random() % (LONGEST - SHORTEST), '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random() & 255);
    return bytes;
}

// Another input with a few places changed, left out or put in.
std::string changed_bytes(std::string bytes, std::mt19937& random)
{
    for (auto times = 1 + random() % 4; times > 0; --times) {
        const std::size_t at = random() % (bytes.size() + 1);
        const auto way = random() % 3;
        if (way == 0 && at < bytes.size())
            bytes[at] = static_cast<char>(random() & 255);
        else if (way == 1 && bytes.size() > SHORTEST && at < bytes.size())
            bytes.erase(at, 1 + random() % 4);
        else
            bytes.insert(at, random_bytes(random).substr(0, 1 + random() % 6));
    }
    return bytes;
}

// Neighbouring lines of the history without their numbers, those of each operation by themselves.
std::set<std::string> features_of(char operation, const std::string& history)
{
    std::set<std::string> out;
    std::string before, line;
    for (const char c : history + "\n") {
        if (c != '\n') {
            if (!std::isdigit(static_cast<unsigned char>(c)) && c != '.' && c != '-' && c != '+')
                line += c;
            continue;
        }
        line = line.substr(0, line.find_first_of(":?")); // the prompt without its answer
        out.insert(operation + before + "\n" + line);
        before = std::move(line);
        line.clear();
    }
    return out;
}

class collector
{
public:
    explicit collector(std::string directory) : directory_(std::move(directory)) {}
    void offer(const std::string& bytes, const std::string& history)
    {
        std::set<std::string> features = features_of(static_cast<char>(bytes[0] & 7), history);
        const std::size_t known = known_.size();
        known_.merge(features);
        if (known_.size() == known)
            return;
        kept_.push_back(bytes);
        char name[32];
        std::snprintf(name, sizeof name, "/random_%03zu", kept_.size());
        std::ofstream(directory_ + name, std::ios::binary) << bytes;
    }
    const std::vector<std::string>& kept() const { return kept_; }

private:
    std::string directory_;
    std::set<std::string> known_;
    std::vector<std::string> kept_;
};

int show(const char* file)
{
    std::ifstream in(file, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(in), {});
    if (!in) {
        std::fprintf(stderr, "%s can't be read\n", file);
        return 1;
    }
    const std::string history = run_tool(bytes);
    print_tool_input();
    std::printf("history:\n%s", history.c_str());
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    const std::string option = argc > 4 ? argv[3] : "";
    if (option == "--show")
        return show(argv[4]);
    const long count = argc > 1 ? std::atol(argv[1]) : 1000;
    const auto seed = static_cast<std::mt19937::result_type>(argc > 2 ? std::atol(argv[2]) : 20000);
    collector kept(option == "--collect" ? argv[4] : "");
    std::mt19937 random(seed);
    for (long i = 0; i < count; ++i) {
        const bool goes_on = !kept.kept().empty() && random() % 2;
        const std::string bytes =
            goes_on ? changed_bytes(kept.kept()[random() % kept.kept().size()], random) : random_bytes(random);
        const std::string history = run_tool(bytes);
        if (option == "--collect")
            kept.offer(bytes, history);
    }
    std::printf("%ld runs, seed %lu", count, static_cast<unsigned long>(seed));
    if (option == "--collect")
        std::printf(", %zu kept", kept.kept().size());
    std::printf("\n");
}
