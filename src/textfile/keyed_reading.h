// Keyed text reading: I05FTSF (finds the line of a key in a text file),
// I05RS2 (text value of a key) and I05RIN2 (integer value of a key).
#pragma once

#include <string>
#include <string_view>

// Finds a line of the file on `channel` that holds both tokens.  White space
// inside the tokens and the lines does not count and letters are folded, so
// "x = 1" and "X=1" are the same to the search; a token is found inside a
// longer word too.  An empty token is not looked for; both empty: status 0
// at once.  An access word beginning with R rewinds first; any other word
// searches on from where the file stands and goes round once.  The line
// found comes back in `line` (cut or padded to its size; a field of size 0
// takes the whole record), with the file standing behind it.
// status 0 located; -1 not found (message "I05FTSF --E- NOT FOUND"); a
// positive read-failure code (message "I05FTSF --E- Search FAILED").
void I05FTSF(int channel, std::string_view token1, std::string_view token2, std::string_view access,
             std::string& line, int& status);

// Text value of a key: word 2 of the line that holds `token` (searched from
// the start of the file), delimiters blank and "=".  The value field keeps
// its size and is set only when a non-empty word was found (a field of size
// 0 takes the word as it is).  status 0 fine; 1 the line begins with a
// comment character of `commentChars`; -1 no token given, or the key is not
// in the file; a positive code for a read failure.
void I05RS2(int channel, std::string_view token, std::string& value, std::string_view commentChars,
            int& status);

// Integer value of a key: the word behind the word equal to `token`,
// delimiters blank, "=" and ":".  A missing key leaves `value` as it was;
// any other failure sets it to 0.  status 0 fine; -10 no token; -11 no line
// found; -1 the token is not a word of the line; -2 the line is too short;
// -3 the line begins with a comment; -4 no word behind the token; -5 the
// word is not an integer.
void I05RIN2(int channel, std::string_view token, int& value, std::string_view commentChars,
             int& status);
