// The word splitter R02GEL and its family R02TNW, R02TNW3, R02GEL0, R02TNW1,
// R02GEL1, which keep their place in a caller-owned array saveTTW.
#pragma once

#include <string>
#include <string_view>

// States of the splitter.
enum SplitState {
    kSplitNothingRead = 0,
    kSplitInWord = 1,
    kSplitBehindDelimiter = 2,  // behind a strong delimiter, or a word handed out
    kSplitBehindBlank = 3,      // behind a blank that followed a word
    kSplitInBoundaries = 4,
    kSplitBehindLinker = 5,
    kSplitLineFinished = 6,
    kSplitFailed = 7,
};

// Cuts one word out of `line`.
//   wordNo > 0: that word, counted from the start of the line; -1 (any
//   negative): the next word, going on from where the last call stopped;
//   0: the last word of the line.
//   delimiters: a blank in the list (or an empty list) is the weak delimiter,
//   the other characters are strong ones.  boundaries: pairs opening/closing
//   (nesting); linkers: join the words at their two sides.  Empty boundary
//   and linker lists mean none.  joinBounds 1: an opening boundary goes on
//   with the word before it, 0: it starts a new word.
//   word (field, its size is the width), wordLen, start (1-based, 0 when
//   empty), count (words found so far), pos (last character looked at),
//   ch (the character just read, blank at the end of the line), lastDelim
//   (the strong delimiter before the word handed out, blank if none), state,
//   depth and openStack (open boundaries; grows when needed) carry the place
//   between calls: set state to 0 for a new line.
//   status 0 found; 1 found, the last word; -1 no such word; 2 / 3 as 0 / 1
//   with the word cut at the field width; -2 linker without a word to its
//   left; -3 unmatched boundary; -4 a character in two lists.  A call in the
//   failed state writes "Processing failed." and gives -1.
void R02GEL(std::string_view line, int wordNo, std::string_view delimiters,
            std::string_view boundaries, std::string_view linkers, int joinBounds,
            std::string& word, int& wordLen, int& count, int& start, int& pos, char& ch,
            char& lastDelim, int& state, int& depth, std::string& openStack, int& status);

// The family keeps the place in saveTTW (1-based elements as saveTTW[k-1]):
// 1 state (the caller sets it to 0 for a new line), 2 words found, 3 last
// position looked at, 4 trimmed length of the line, 6 first position of the
// word last returned; R02TNW3 also 7 boundary depth, 8 joinBounds.
// saveTTW has 6 elements, 8 for R02TNW3.

// No boundaries, no linkers; status 2 (word cut) becomes -2.
void R02TNW(std::string_view line, int wordNo, std::string_view delimiters, std::string& word,
            int& wordLen, int* saveTTW, int& status);
// Boundaries and linkers, joinBounds from saveTTW(8).
void R02TNW3(std::string_view line, int wordNo, std::string_view delimiters,
             std::string_view boundaries, std::string_view linkers, std::string& word,
             int& wordLen, char& lastDelim, char& ch, int* saveTTW, int& status);
// No boundaries or linkers; hands back ch and lastDelim.
void R02GEL0(std::string_view line, int wordNo, std::string_view delimiters, std::string& word,
             int& wordLen, char& ch, char& lastDelim, int* saveTTW, int& status);
// The next word; true while a word is handed out.  status 0, 1 (last word),
// -1 (no more words), -2 for a word longer than its field (the rest of the
// word is dropped, no message).
bool R02TNW1(std::string_view line, std::string_view delimiters, std::string& word, int& wordLen,
             int* saveTTW, int& status);
// As R02TNW1 for the word numbered wordNo (0 the last, below 0 the next).
bool R02GEL1(std::string_view line, int wordNo, std::string_view delimiters, std::string& word,
             int& wordLen, int* saveTTW, int& status);

// Back to the program's start: the first-call flags of the family are set.
void resetWordSplitter();
