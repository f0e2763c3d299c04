// The program's command line as two lists: keys (words beginning with "/"
// or "-") and arguments, each entry at most 128 characters.
#pragma once

#include <string>
#include <vector>

struct CommandLineLists {
    std::vector<std::string> keys;
    std::vector<std::string> args;
};

const CommandLineLists& commandLineLists();
CommandLineLists& mutableCommandLineLists();
void resetCommandLineLists();
