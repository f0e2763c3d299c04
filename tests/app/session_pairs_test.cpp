// The end-to-end sessions of tests/data/sessions: each file holds one case,
// run by the built zemok in a fresh folder and compared with the output
// written out by hand.  A file is made of sections, each opened by a line
//   == args            the arguments, one a line (runZemok adds "-C")
//   == file <name>     a file put into the folder before the run
//   == shipped <name>  the file of data/ put into the folder
//   == input           the lines typed
//   == expected        the whole output; a line "..." stands for any text,
//                      so that the parts between must come in this order
//   == result <name>   the whole contents of a file after the run
//   == exit            the exit code (0 when not given)
// Lines before the first section (comments beginning with "#") say what
// the case shows.
#include "support/run_zemok.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sstream>
#include <vector>

namespace {

struct Section {
    std::string kind, name, text;
};

std::vector<Section> sectionsOf(const std::string& path) {
    std::vector<Section> out;
    std::istringstream in(fileText(path));
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with("== ")) {
            std::istringstream head(line.substr(3));
            Section s;
            head >> s.kind >> s.name;
            out.push_back(s);
        } else if (!out.empty()) {
            out.back().text += line + "\n";
        }
    }
    return out;
}

// Whether `out` is the expected text, "..." lines standing for any text.
bool matches(const std::string& out, const std::string& expected) {
    std::vector<std::string> parts(1);
    std::istringstream in(expected);
    for (std::string line; std::getline(in, line);) {
        if (line == "...") parts.emplace_back();
        else parts.back() += line + "\n";
    }
    if (parts.size() == 1) return out == expected;
    if (!out.starts_with(parts.front()) || !out.ends_with(parts.back())) return false;
    std::size_t at = parts.front().size();
    for (std::size_t k = 1; k + 1 < parts.size(); ++k) {
        at = out.find(parts[k], at);
        if (at == std::string::npos) return false;
        at += parts[k].size();
    }
    return at + parts.back().size() <= out.size();
}

TEST(Sessions, EveryCaseGivesItsExpectedOutputAndFiles) {
    const std::filesystem::path folder = std::string(ZEMOK_TEST_DATA) + "/sessions";
    int cases = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        SCOPED_TRACE(entry.path().filename().string());
        const std::string dir = freshFolder("pair");
        std::string input, expected;
        std::vector<std::string> args;
        std::map<std::string, std::string> results;
        int exitCode = 0;
        for (const Section& s : sectionsOf(entry.path().string())) {
            if (s.kind == "args") {
                std::istringstream words(s.text);
                for (std::string a; std::getline(words, a);) args.push_back(a);
            }
            if (s.kind == "file") writeFile(dir + "/" + s.name, s.text);
            if (s.kind == "shipped") writeFile(dir + "/" + s.name, fileText(std::string(ZEMOK_SOURCE_DIR) + "/data/" + s.name));
            if (s.kind == "input") input = s.text;
            if (s.kind == "expected") expected = s.text;
            if (s.kind == "result") results[s.name] = s.text;
            if (s.kind == "exit") exitCode = std::stoi(s.text);
        }
        ZemokRun run = runZemok(input, args, dir);
        EXPECT_TRUE(matches(run.out, expected)) << run.out;
        EXPECT_EQ(run.exitCode, exitCode);
        for (const auto& [name, text] : results) EXPECT_EQ(fileText(dir + "/" + name), text) << name;
        ++cases;
    }
    EXPECT_GE(cases, 20);
}

}  // namespace
