// The problem catalogue: problemTitle (the 21 titles) and testProblemInfo
// (welcome text, dimension, limits and dimension message of each test problem).
#include "objective/target_function.h"
#include "objective/test_problems.h"

#include <array>
#include <string_view>

namespace {

constexpr std::string_view kUndefined = "... UNDEFINED ...";

constexpr std::array<std::string_view, kProblemTitles> kTitles = {
    "Rosenbrock",
    "Powell-Wood",
    "Wood problem",
    "Trigonometric multimodal problem",
    "Spiral chute",
    "A cunning problem",
    "2-dimensional squared function",
    "User-defined squared problem",
    "Sinusoidal chute",
    "One-dimensional problem",
    "Least Squares exponential approximation",
    "Least Squares polynomial approximation",
    "Polynomial approximation (nonsmooth case)",
    "Constant function",
    kUndefined,
    kUndefined,
    kUndefined,
    kUndefined,
    kUndefined,
    "User's problem",
    kUndefined,
};

// Problem 1's tail is chosen by its form; this entry is the classical one.
const std::array<TestProblemInfo, kTestProblems> kInfo = {{
    {"Rosenbrock function", true, 2, 2, 0, 0, "-dimensional classical Rosenbrock function"},
    {"Powell-Wood function", true, 4, 4, 0, 0, "-dimensional Powell-Wood function"},
    {"", false, 4, 4, 80, 1600, "-dimensional Wood function"},
    {"multimodal trigonometric function", true, 2, 10, 0, 0, "-dimensional trigonometric function"},
    {"", false, 3, 3, 60, 1140, "-dimensional spiral chute"},
    {"", false, 2, 2, 40, 680, "-dimensional function #6 by Skokov"},
    {"", false, 2, 2, 6, 102, "-dimensional squared problem by Frieden"},
    {"user-defined squared problem", true, 2, 2, 0, 0, "-dimensional user-defined squared problem"},
    {"sinusoidal chute", true, 2, 2, 0, 0, "-dimensional sinusoidal chute"},
    {"one-dimensional problem", false, 1, 1, 30, 200, "-dimensional problem"},
    {"", false, 4, 4, 80, 1600, "-dimensional LS exponential approximation problem"},
    {"Least Squares polinomial approximation", true, 2, 2, 0, 0,
     "-dimensional LS polinomial approximation problem"},
    {"non-smooth polinomial approximation", true, 2, 2, 0, 0,
     "-dimensional polinomial approximation (nonsmooth) problem"},
    {"constant function ", true, 1, 1, 0, 0, "-dimensional constant function"},
}};

}  // namespace

std::string problemTitle(int code) {
    std::string_view title = code >= 1 && code <= kProblemTitles
                                 ? kTitles[static_cast<std::size_t>(code - 1)]
                                 : kUndefined;
    return padded(title, kProblemTitleWidth);
}

const TestProblemInfo& testProblemInfo(int code) {
    return kInfo[static_cast<std::size_t>(code - 1)];
}
