// Runs the built zemok program with text on its standard input and gives
// back what it wrote and its exit code.
#pragma once

#include <string>
#include <vector>

struct ZemokRun {
    std::string out;  // standard output
    int exitCode = -1;
};

// Runs zemok in `workDir` (created if needed; a fresh temporary folder when
// empty) with `input` on standard input and `args` as its arguments.
ZemokRun runZemok(const std::string& input, const std::vector<std::string>& args = {},
                  const std::string& workDir = "");

// A fresh empty folder under the system's temporary folder.
std::string freshFolder(const std::string& stem);
// The whole contents of a file, or "" when it cannot be read.
std::string fileText(const std::string& path);
void writeFile(const std::string& path, const std::string& text);
