// The data set record E4DataSet: its start state, the comment rows of iStat,
// the gradient-scheme and termination tables, and E4RST1.
#include "core/e4dataset.h"

#include <array>
#include <utility>

E4DataSetRecord E4DataSet;

namespace {

constexpr std::string_view kReserved = "--- Reserved ---";

const std::pair<int, std::string_view> kComments[] = {
    {1, "problem code: 1:19=TEST, 20=USER's"},
    {2, "method of minimization being executed"},
    {3, "method of minimization executed"},
    {4, "operation mode: 0=INTERACTIVE, 1=AUTO"},
    {5, "computation mode: 0=RUN, 1=CONTINUE"},
    {6, "terminal output stopping mode: 0=NO, 1=YES"},
    {7, "message level: 0=NO MESSAGES"},
    {8, "derivative estimation scheme (0:3)"},
    {9, "local termination checking mode (0:4)"},
    {10, "overall termination checking mode (0:1)"},
    {11, "tolerance multiplier switch: 0=OFF, 1=ON"},
    {12, "hessian condition limit switch: 0=OFF, 1=ON"},
    {20, "I/O channel for data saving"},
    {21, "command file is open"},
    {22, "source data file is open"},
    {23, "output file is open"},
    {30, "number of performed function evaluations"},
    {31, "number of performed iterations"},
    {32, "number of performed gradient estimations"},
    {33, "maximum number of function evaluations"},
    {34, "maximum number of search iterations"},
    {35, "total number of problem variables"},
    {36, "number of problem variables to be varied"},
    {37, "function value"},
    {38, "argument values"},
    {39, "absolute values of initial search steps"},
    {40, "rel/abs argument tolerance to be attained"},
    {41, "rel/abs function tolerance to be attained"},
    {42, "tolerance multiplier switch"},
    {43, "values of argument deviate for Monte-Carlo"},
    {44, "upper bound on hessian condition number"},
    {45, "function computation noise (rel/abs)"},
    {47, "rel/abs values of finite-differences"},
    {48, "gradient at the current point"},
    {49, "approximation to Hessian diagonal"},
    {50, "approximation to Hessian matrix"},
    {51, "lower bounds on variables"},
    {52, "upper bounds on variables"},
    {53, "maximum abs. step length for linear search"},
    {54, "argument scaling factors"},
    {55, "simple bounds usage mode"},
    {56, "number of variable for coordinate descent"},
    {57, "argument values are scaled"},
    {58, "number of terms in a vector target function"},
    {59, "direction vector"},
    {60, "hessian eigenvalues"},
    {61, "hessian eigenvectors (columnwise)"},
    {65, "temperature for simulated annealing"},
    {66, "number of tries per temperature"},
    {67, "temperature scedule factor"},
    {97, "first seed for random generators"},
    {98, "second seed for random generators"},
    {99, "number of randoms to skip"},
    {101, "activator of a dialogue designed in \"USERF\""},
    {102, "type of the USERF function"},
    {103, "change the user's function type"},
    {104, "USERF output level"},
    {105, "reserved for use in USERF"},
};

constexpr std::string_view kUndefined = "... UNDEFINED ...";

const std::array<std::string_view, 5> kGradientSchemes = {
    "adaptive finite-difference procedure", "fixed forward finite-differences procedure",
    "fixed central finite-differences procedure", "analytically expressed gradient", kUndefined};

const std::array<std::string_view, 6> kLocalTermination = {
    "exit on argument tolerance",
    "exit on function tolerance",
    "exit on either funct. or arg. tolerance",
    "exit on both funct. and arg. tolerance",
    "exit on single interval reduction step",
    "exit on single successful linear search step"};

template <std::size_t N>
std::string tableRow(const std::array<std::string_view, N>& rows, int index, int width) {
    if (index < 0 || index >= static_cast<int>(N)) return padded(kUndefined, width);
    return padded(rows[static_cast<std::size_t>(index)], width);
}

}  // namespace

std::string padded(std::string_view text, int width) {
    std::string f(text.substr(0, static_cast<std::size_t>(width)));
    f.resize(static_cast<std::size_t>(width), ' ');
    return f;
}

std::string_view iStatComment(int row) {
    for (const auto& [r, text] : kComments) {
        if (r == row) return text;
    }
    return kReserved;
}

std::string gradientSchemeRow(int value) { return tableRow(kGradientSchemes, value, 50); }
std::string localTerminationRow(int value) { return tableRow(kLocalTermination, value, 50); }

std::string overallTerminationRow(int value) {
    if (value == 0) return padded("hard checking mode", 32);
    if (value == 1) return padded("weak checking mode", 32);
    return padded(kUndefined, 32);
}

void resetE4DataSet() {
    E4DataSet = E4DataSetRecord{};
    E4DataSet.xScale.fill(1.0);
    E4DataSet.crName = padded("zemok.cmd", kFileNameWidth);
    E4DataSet.drName = padded("zemok.inp", kFileNameWidth);
    E4DataSet.dwName = padded("zemok.out", kFileNameWidth);
    E4DataSet.svName = padded("zemok.sav", kFileNameWidth);
    E4DataSet.hpName = padded("zemok.hlp", kFileNameWidth);
    E4DataSet.commentChars = padded("", 4);
}
