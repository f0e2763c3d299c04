// freshFolder and its sweeper: every folder made during a test is removed
// when the test ends well, so that a run leaves nothing behind and two runs
// at once never share a folder.
#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <vector>

namespace {

std::vector<std::string>& madeInThisTest() {
    static std::vector<std::string> folders;
    return folders;
}

class FolderSweeper : public ::testing::EmptyTestEventListener {
    void OnTestEnd(const ::testing::TestInfo& info) override {
        for (const std::string& dir : madeInThisTest()) {
            if (info.result()->Failed()) {
                std::cerr << "kept for inspection: " << dir << "\n";
                continue;
            }
            std::error_code ec;
            std::filesystem::remove_all(dir, ec);
        }
        madeInThisTest().clear();
    }
};

}  // namespace

std::string freshFolder(const std::string& stem) {
    std::string pattern = (std::filesystem::temp_directory_path() / ("zemok-" + stem + "-XXXXXX")).string();
    std::vector<char> text(pattern.begin(), pattern.end());
    text.push_back('\0');
    if (mkdtemp(text.data()) == nullptr) {
        ADD_FAILURE() << "cannot make a folder like " << pattern;
        return pattern;
    }
    madeInThisTest().push_back(text.data());
    return text.data();
}

void installFolderSweeper() { ::testing::UnitTest::GetInstance()->listeners().Append(new FolderSweeper); }
