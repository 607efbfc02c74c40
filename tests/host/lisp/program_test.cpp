// program_test.cpp: runs the programs of this folder and compares what they print with the comments
// in them:
//   ; expect: TEXT          the next line that is printed
//   ; expect error: TEXT    the next line that is printed is "; error: TEXT"; what follows it in the
//                           file goes on as a program of its own
//   ; expect end            the program has ended here by an error that it dealt with itself; what
//                           follows goes on as one of its own
//   ; answer: TEXT          a line of the answers to prompts
// Empty lines and the chain of calls behind an error aren't compared. @TMP@ stands for a directory
// of the test's own.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/session.h"
#include "host/core/text.h"
#include "host/lisp/api.h"
#include "tests/host/files/temporary_directory.h"

namespace
{

namespace fs = std::filesystem;
using namespace host;

const fs::path folder = fs::path(ZENT_SOURCE_DIR) / "tests/host/lisp";

std::vector<std::string> programs()
{
    std::vector<std::string> out;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.path().extension() == ".lsp")
            out.push_back(fs::relative(entry.path(), folder).string());
    std::sort(out.begin(), out.end());
    return out;
}

std::string replaced(std::string text, const std::string& from, const std::string& to)
{
    for (std::size_t at = 0; (at = text.find(from, at)) != text.npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

std::string without_end_blanks(std::string line)
{
    while (!line.empty() && line.back() == ' ')
        line.pop_back();
    return line;
}

// A program in the pieces that errors end, with what it is to print.
struct script {
    std::vector<std::string> pieces;
    std::vector<std::string> expected;
    std::string answers;
};

script read_script(const fs::path& path, const std::string& tmp)
{
    std::ifstream in(path, std::ios::binary);
    script s;
    std::string piece, line;
    int lines = 0;
    const auto behind = [&](const char* mark) {
        const std::size_t at = line.find(mark);
        return at == line.npos ? std::string() : line.substr(at + std::string(mark).size());
    };
    while (std::getline(in, line)) {
        line = replaced(line, "@TMP@", tmp);
        piece += line + "\n";
        ++lines;
        const bool failure = line.find("; expect error: ") != line.npos;
        if (failure)
            s.expected.push_back("; error: " + without_end_blanks(behind("; expect error: ")));
        else if (line.find("; expect: ") != line.npos)
            s.expected.push_back(without_end_blanks(behind("; expect: ")));
        else if (line.find("; answer: ") != line.npos || line.ends_with("; answer:"))
            s.answers += behind("; answer: ") + "\n";
        if (failure || line.find("; expect end") != line.npos) {
            s.pieces.push_back(piece);
            piece.assign(static_cast<std::size_t>(lines), '\n'); // the next piece keeps its line numbers
        }
    }
    s.pieces.push_back(piece);
    return s;
}

std::vector<std::string> compared_lines(const std::string& history)
{
    std::vector<std::string> out;
    std::istringstream in(history);
    for (std::string line; std::getline(in, line);) {
        line = without_end_blanks(line);
        if (!line.empty() && !line.starts_with(";   "))
            out.push_back(line);
    }
    return out;
}

class LispProgram : public testing::TestWithParam<std::string>
{
};

TEST_P(LispProgram, PrintsWhatItSays)
{
    const temporary_directory tmp;
    const script s = read_script(folder / GetParam(), tmp.path);
    run_settings().share = (folder / "dialogs").string();
    run_settings().registry = tmp.path + "/registry.reg";
    run_settings().clock = "20240229.123456";
    std::string history_text;
    answers_from_text(s.answers);
    document& doc = open_document();
    capture_history(&history_text);
    for (const std::string& piece : s.pieces)
        lisp::evaluate_text(doc, piece, GetParam());
    capture_history(nullptr);
    close_all_documents();
    EXPECT_EQ(compared_lines(history_text), s.expected) << history_text;
}

std::string test_name(const testing::TestParamInfo<std::string>& program)
{
    std::string name = program.param.substr(0, program.param.size() - 4);
    for (char& c : name)
        if (!std::isalnum(static_cast<unsigned char>(c)))
            c = '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(Programs, LispProgram, testing::ValuesIn(programs()), test_name);

} // namespace
