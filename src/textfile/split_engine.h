// SplitCall and splitWord: the state machine behind R02GEL, shared by the
// splitter family; the family may silence the word-length warning.
#pragma once

#include <string>
#include <string_view>

// The arguments of one call of the splitter, as references to the caller's.
struct SplitCall {
    std::string_view line;
    int wordNo;
    std::string_view delimiters;
    std::string_view boundaries;
    std::string_view linkers;
    int joinBounds;
    std::string& word;
    int& wordLen;
    int& count;
    int& start;
    int& pos;
    char& ch;
    char& lastDelim;
    int& state;
    int& depth;
    std::string& openStack;
    int& status;
};

// Runs the splitter; warnCut false drops the message for a cut word (the
// status still tells it).
void splitWord(const SplitCall& call, bool warnCut);
