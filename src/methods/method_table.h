// The methods of minimization: one row per method number 1..20 with its row
// text, the word of the METHOD command, what the method uses, its rule of
// limits and the search that runs it.  METHOD, CHECK, RUN, CONTINUE and
// REPORT all read this table.
#pragma once

#include "core/search_limits.h"

#include <string>
#include <string_view>

constexpr int kMethodRows = 20;

// A search works on E4DataSet and returns its status in iFlag.
using SearchRoutine = void (*)(int& iFlag);

// The METHOD word is split at its first "-": the first part must begin with
// `first`, the second with `second` ("" matches any second part).
struct MethodWord {
    std::string_view first;
    std::string_view second;
};

// The minimizer a method number belongs to.
enum class Minimizer { None, FirstOrder, CoordinateDescent, Simplex, MonteCarlo, AnnealedSimplex };

struct MethodRow {
    std::string_view text;              // 50-character row, "Chosen algorithm"
    std::string_view word;              // the METHOD word as users write it
    MethodWord match[2];                // the forms that choose it (unused: {"", ""})
    Minimizer minimizer;
    LimitRule limits;
    bool gradientScheme;                // uses the gradient scheme and tolScl (1..11)
    bool localTermination;              // reports the local termination (1..14 but 12)
    bool simpleBounds;                  // uses bL and bU (12)
    bool finiteDifferences;             // uses finDif and reports the gradient (1..12)
    bool conditionLimit;                // uses hCond (6..11)
    bool deviates;                      // Monte-Carlo steps use deviat (16, 17)
    bool temperature;                   // temper, NtriesT and Tsced (17, 18)
    bool countsTries;                   // maxITR is taken as maxNFE (15..18)
    SearchRoutine search;               // nullptr: the search is not available yet
};

// Row of method `number`; numbers outside 1..20 give row 20 (undefined).
const MethodRow& methodTableRow(int number);
// Row text of method `number`, 50 characters, blank-padded.
std::string methodRow(int number);
// The method a METHOD word chooses, 0 when none does.
int methodOfWord(std::string_view word);
// True when a search of this method exists.
bool methodAvailable(int number);
