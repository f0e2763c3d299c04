// String tools: R02LEN, R02BLANK, R02CASE, R02CMP, R02PFX, R02EQ, R02CHAR,
// R02SCAN, R02ABBR, R02DROP, R02LINE.
#pragma once

#include <string>
#include <string_view>
#include <vector>

// Length of a text without trailing white space (blank, characters 9 to 13
// and the zero character).
int R02LEN(std::string_view text);

// True for the characters that count as white space in a text field.
bool isWhiteChar(char c);

// Fills the whole field with blanks (its size stays).
void R02BLANK(std::string& text);

// Case mode of one character: 0 nothing, 1 upper, -1 lower, 2 swap case.
// ASCII letters only.
char caseChar(char c, int mode);
// Applies the case mode to every character of the field.
void R02CASE(std::string& text, int mode);

// Cuts and compresses the field in place.  first/last select the part that
// stays (0 the whole, negative from the first / to the last non-blank);
// squeeze 0 keeps inner blanks, 1 leaves one blank of several, any other
// value removes them all; mode is the case mode.  The text is moved to
// column 1 and blanked behind; newLen is its length, minus the width when
// first lies beyond the field or the width is 0 (nothing changes then).
void R02CMP(std::string& text, int first, int last, int squeeze, int mode, int& newLen);

// True if the trimmed text begins with the whole trimmed key.  Both empty is
// true, an empty key with a non-empty text false.  mode: case mode applied to
// each character of both sides before they are compared (1 or -1 fold case).
bool R02PFX(std::string_view text, std::string_view key, int mode);

// True if both trimmed texts are equal, characters compared after the case mode.
bool R02EQ(std::string_view a, std::string_view b, int mode);

// True if the character c is in the trimmed set (after the case mode).
bool R02CHAR(char c, std::string_view set, int mode);

// Position (1-based) of the first character of text that is in set, looked
// for between positions from and to.  The scan runs backwards when from is
// negative (then |from| is the start) or greater than to.  0 if none.
int R02SCAN(std::string_view set, std::string_view text, int from, int to, int mode);

// Looks word up by prefix in the first count entries of table.  match 0: no
// entry (or the word is longer than an entry); 1: one entry, the word is
// replaced by it and length is its new length; 2: more than one.  wordLen and
// entryLen are the widths of the word and of an entry; a value below 1 takes
// the width of the field itself.
void R02ABBR(std::string& word, const std::vector<std::string>& table, int count, int& match,
             int& length, int wordLen = 0, int entryLen = 0);

// Removes every character of the trimmed set from the field (letters compared
// after the case mode); the rest moves left and the field is blanked behind.
// length is the new trimmed length.
void R02DROP(std::string& text, std::string_view set, int mode, int& length);

// Composes a line "left ... : middle   right" in the field out (its size is
// the width).  The separator ':' stands in column pos - 2 (within limits);
// a filler other than blank fills the gap behind left when pos > 3; right
// starts at column pos2 or behind middle.  A negative pos right-justifies a
// left that fills the space.  outLen is the last column used.
void R02LINE(std::string_view left, std::string_view middle, std::string_view right, int pos,
             int pos2, char filler, std::string& out, int& outLen);
