// A fresh folder of one test, unique to the process (mkdtemp), removed when
// the test passed and kept, with its name printed, when it failed.
#pragma once

#include <string>

class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::string& path() const { return path_; }
    // path() + "/" + name
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }

private:
    std::string path_;
};
