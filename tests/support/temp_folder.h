// Fresh folders of one test: unique to the process (mkdtemp under the
// system's temporary folder), removed when the test passed and kept, with
// their names printed, when it failed.
#pragma once

#include <string>

// A new empty folder "zemok-<stem>-XXXXXX", swept at the end of the test.
std::string freshFolder(const std::string& stem = "test");

// The sweeper of freshFolder, installed once by the test main.
void installFolderSweeper();

// A fresh folder as an object: path() and path / name.
class TempFolder {
public:
    TempFolder() : path_(freshFolder()) {}
    const std::string& path() const { return path_; }
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }

private:
    std::string path_;
};
