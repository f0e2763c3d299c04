// Helpers shared by the file-specification routines: the file-system kinds,
// the field words, and the message lines of the family.
#pragma once

#include "textfile/file_spec.h"

#include <string>
#include <string_view>

namespace filespec {

// How a file system word is parsed: FAT32 is parsed as FAT and differs from
// it only by its limits.
enum class Kind { Fat, Unix, Vms, Unknown };

// The word's kind: it begins with FAT, UNIX or VMS, either case.
Kind kindOf(std::string_view fileSystem);

// The trimmed text of a field (trailing white space cut).
std::string trimmed(std::string_view text);

// "NODE" ... "OTHER": the selector words of the six fields.
std::string_view selectorWord(int field);
// The word of a field in messages ("FILE NAME" for the name).
std::string_view messageWord(int field);

// "text" in double quotation marks.
std::string quoted(std::string_view text);

// tag, one blank, the dashes and the mark: "R02PFS ---E- ".
std::string head(std::string_view tag, char mark);

// The second line of a message: 12 blanks and the text in double quotes.
void quotedLine(std::string_view text);

// Two lines: head + text + the word in quotes, then " truncated to:" and the
// cut word in quotes.
void truncationLines(std::string_view tag, std::string_view text, std::string_view word,
                     std::string_view cut);

// The three lines for an unknown file system word (a blank word shows as one
// blank).
void unknownFileSystemLines(std::string_view tag, std::string_view fileSystem);

// Puts text into a blank-padded field; false when it does not fit (the
// field then holds what fits).
bool putField(std::string& field, std::string_view text);

}  // namespace filespec
