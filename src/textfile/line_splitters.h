// Line splitters R02CLS (a whole line into numbered words) and R02CLS2
// ("FILE=name" into two words), and the monitor's command-line split.
#pragma once

#include <string>
#include <string_view>

// Delimiters and comment list of the monitor's command lines: blank (weak),
// "," and ";" in a field of eight characters, comment character "!".
inline constexpr std::string_view kCommandDelimiters = " ,;     ";
inline constexpr std::string_view kCommandComments = "!!";

// Splits line into words number first to last: words[k-1] receives word k,
// each a field whose size is the word width.  "=" links words unless it is a
// delimiter; no boundaries.  A line whose first non-blank character is a
// comment character (when the comment list is shorter than a word) gives
// blank words; a later word that begins with one is blanked and ends the
// split, except the last word of the line, which is kept.
// status 0 words remain beyond `last`; 1 the line was used up (or a comment
// ended it, or it has fewer than `first` words); -11 first > last; -12 a word
// field of width 0; any other negative value is the splitter's failure.
void R02CLS(std::string_view line, std::string* words, int last, int first,
            std::string_view delimiters, std::string_view comments, int& status);

// Splits a text such as "FILE=name" at blank or "=": word1 and, when a
// non-empty second word follows, word2; count 1 or 2.  status 0; -11 a word
// field of width 0; -12 a blank text; other negative values from the splitter.
void R02CLS2(std::string_view text, std::string& word1, std::string& word2, int& count,
             int& status);

// The monitor's split: words[0..5] become fields of 32 characters holding
// words 1 to 6 of the line (delimiters kCommandDelimiters, comments "!!").
void splitMonitorCommand(std::string_view line, std::string* words, int& status);
