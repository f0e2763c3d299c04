// TempFolder: mkdtemp under the system's temporary folder.
#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <vector>

TempFolder::TempFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "zemok-test-XXXXXX").string();
    std::vector<char> text(pattern.begin(), pattern.end());
    text.push_back('\0');
    if (mkdtemp(text.data()) != nullptr) path_ = text.data();
}

TempFolder::~TempFolder() {
    if (path_.empty()) return;
    if (::testing::Test::HasFailure()) {
        std::cerr << "kept for inspection: " << path_ << "\n";
        return;
    }
    std::error_code ec;
    std::filesystem::remove_all(path_, ec);
}
