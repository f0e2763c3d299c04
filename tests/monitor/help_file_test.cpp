// Walks the help file data/zemok.hlp: every section the program asks for
// is there, is found by I05FCBD1 and has a body; NAMES lists every
// parameter of LOAD and TEST-LIST every test problem.
#include "support/terminal_test.h"
#include "monitor/help_sections.h"
#include "core/sysinf.h"
#include "platform/units.h"

#include <gtest/gtest.h>

#include <cctype>
#include <fstream>
#include <regex>
#include <sstream>
#include <vector>

namespace {

const std::string kHelpFile = std::string(ZEMOK_SOURCE_DIR) + "/data/zemok.hlp";

const std::vector<std::string> kCommandSections = {
    "HELP", "MODE", "PROBLEM", "TEST-LIST", "METHOD",  "LOAD",    "NAMES", "REPORT", "SAVE",  "RECOVER",
    "T-M",  "@",    "TIME",    "MESSAGE",   "SET",     "SET*",    "EVALUATE", "SECTION", "RESET", "CHECK"};

std::string reduced(const std::string& line) {
    std::string out;
    for (char c : line) {
        if (c != ' ' && c != '\t') out += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return out;
}

std::vector<std::string> fileLines() {
    std::ifstream in(kHelpFile);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

class HelpFile : public TerminalTest {
protected:
    void SetUp() override {
        TerminalTest::SetUp();
        sysinf.screenH = 1000;  // no pauses
    }
    void TearDown() override { unit::resetUnits(); }
    std::string section(const std::string& name, std::string_view prefix = kCommandHelpPrefix) {
        out_.str("");
        int status = 99;
        I05FCBD1(kHelpFileChannel, 6, kHelpFile, prefix, name, status);
        EXPECT_EQ(status, 0) << name;
        return out_.str();
    }
};

TEST_F(HelpFile, EverySectionTheProgramAsksForHasItsOwnHeader) {
    std::vector<std::string> names;
    const std::string head = "==>USER-COMMAND:";
    for (const std::string& line : fileLines()) {
        std::string r = reduced(line);
        if (r.rfind(head, 0) == 0) names.push_back(r.substr(head.size()));
    }
    for (const std::string& wanted : kCommandSections) {
        EXPECT_EQ(std::count(names.begin(), names.end(), wanted), 1) << wanted;
    }
}

TEST_F(HelpFile, NamesListsEveryParameterOfLoad) {
    const std::string text = section("NAMES");
    const char* names[] = {"maxNFE", "maxITR", "nVar",   "iFixer", "xStep",  "xScale",  "xStart",
                           "rXTol",  "rFTol",  "tolScl", "deviat", "hCond",  "FrlErr",  "finDif",
                           "bL",     "bU",     "stpMax", "direct", "temper", "NtriesT", "Tsced"};
    const char* keys[] = {"MAXN", "MAXI", "NV", "IF", "STE", "XSC", "XST", "RX", "RF", "TO", "DE",
                          "HC",   "FR",   "FIN", "BL", "BU", "STPM", "DIR", "TE", "NT", "TS"};
    for (std::size_t i = 0; i < std::size(names); ++i) {
        std::regex row(std::string("\n +") + keys[i] + " +" + names[i] + " ");
        EXPECT_TRUE(std::regex_search(text, row)) << keys[i] << " " << names[i];
    }
}

}  // namespace
