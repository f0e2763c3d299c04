// Help file sections: I05FCBD1, which shows a section page by page, and
// helpSection, the monitor's call for the help of one command.
#pragma once

#include <string_view>

// Channel of the help file while a section is shown.
constexpr int kHelpFileChannel = 40;
// Prefix of the headers of the monitor's sections, and of the title pages.
inline constexpr std::string_view kCommandHelpPrefix = "==> USER-COMMAND: ";
inline constexpr std::string_view kTitlePrefix = "==>";

// Shows every section of the help file `fileName` whose header line, with
// blanks removed and letters in upper case, begins with prefix followed by
// section (a prefix test, so "SET" also shows "SET*"); with an empty prefix
// the whole file.  Output goes to outChannel; on the terminal each line gets
// one leading blank and a pause comes every screenH - 2 lines.
// status 0 done; 1 the user typed "E" at a pause; 2 no such section (its
// message is written); -1 the file could not be opened; -2 a read or write
// failed.
void I05FCBD1(int fileChannel, int outChannel, std::string_view fileName, std::string_view prefix,
              std::string_view section, int& status);

// The monitor's help on one command: section `section` of the help file
// hpName, on dwUnit.  Returns the status of I05FCBD1.
int helpSection(std::string_view section);
