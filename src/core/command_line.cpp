// Storage of the program's command-line lists.
#include "core/command_line.h"

CommandLineLists& mutableCommandLineLists() {
    static CommandLineLists lists;
    return lists;
}

const CommandLineLists& commandLineLists() { return mutableCommandLineLists(); }

void resetCommandLineLists() { mutableCommandLineLists() = CommandLineLists{}; }
