// Runs the built zemok program with text on its standard input and gives
// back what it wrote and its exit code.
#pragma once

#include "support/temp_folder.h"

#include <string>
#include <vector>

struct ZemokRun {
    std::string out;  // standard output
    int exitCode = -1;
};

// Runs zemok in `workDir` (created if needed; a fresh temporary folder when
// empty) with `input` on standard input and `args` as its arguments, as a
// script that starts quietly:
// - a folder without zemok.ini gets a copy of the shipped data/zemok.ini;
// - unless `args` hold a key of the letter C, the key "-C" is added behind
//   them, so that no title pages are shown and no dialogue-mode question
//   takes the first line of the script; the line " Key # n: [-C]" that
//   echoes the added key is left out of `out`.
ZemokRun runZemok(const std::string& input, const std::vector<std::string>& args = {},
                  const std::string& workDir = "");
// Runs zemok as a user starts it: `args` as they are, nothing added to the
// folder or taken out of the output, and HOME set to `home`.
ZemokRun runZemokAsStarted(const std::string& input, const std::vector<std::string>& args,
                           const std::string& workDir, const std::string& home);

// The whole contents of a file, or "" when it cannot be read.
std::string fileText(const std::string& path);
void writeFile(const std::string& path, const std::string& text);
