// The table of the methods of minimization.
#include "methods/method_table.h"

#include "core/e4dataset.h"
#include "core/string_tools.h"
#include "methods/annealed_simplex.h"
#include "methods/bounded_driver.h"
#include "methods/coordinate_descent.h"
#include "methods/first_order_driver.h"
#include "methods/monte_carlo.h"
#include "methods/simplex_search.h"

#include <array>

namespace {

constexpr std::string_view kUndefined = "... UNDEFINED ...";
constexpr MethodWord kNone{"", ""};
using L = LimitRule;
using M = Minimizer;

// Columns: text, word, forms, minimizer, limits, gradient scheme, local termination,
// simple bounds, finite differences, condition limit, deviates,
// temperature, counts tries, search.
constexpr std::array<MethodRow, kMethodRows> kMethods = {{
    {"Fletcher-Reeves", "F-R", {{"F", "R"}, kNone}, M::FirstOrder, L::FirstOrder, true, true, false, true, false, false, false, false, E4FOM1},
    {"Polak-Ribiere", "P-R", {{"P", "R"}, kNone}, M::FirstOrder, L::FirstOrder, true, true, false, true, false, false, false, false, E4FOM1},
    {"Beale-Powell", "B-P", {{"B", "P"}, kNone}, M::FirstOrder, L::FirstOrder, true, true, false, true, false, false, false, false, E4FOM1},
    {"Perry-Shanno one-step quasi-Newton", "P-S", {{"P", "S"}, kNone}, M::FirstOrder, L::FirstOrder, true, true, false, true, false, false, false, false, E4FOM1},
    {kUndefined, "", {kNone, kNone}, M::None, L::FirstOrder, true, true, false, true, false, false, false, false, nullptr},
    {"Davidon-Fletcher-Powell", "D-F-P", {{"D", "F"}, kNone}, M::FirstOrder, L::FirstOrder, true, true, false, true, true, false, false, false, E4FOM1},
    {"Broyden-Fletcher-Goldfarb-Shanno", "B-F-G-S", {{"B", "F"}, kNone}, M::FirstOrder, L::FirstOrder, true, true, false, true, true, false, false, false, E4FOM1},
    {"Broyden", "BR", {{"BR", ""}, kNone}, M::FirstOrder, L::FirstOrder, true, true, false, true, true, false, false, false, E4FOM1},
    {"Fletcher (combined of D-F-P and B-F-G-S)", "FL", {{"FL", ""}, kNone}, M::FirstOrder, L::FirstOrder, true, true, false, true, true, false, false, false, E4FOM1},
    {"Oren-Luenberger (self-scaling)", "O-L", {{"O", "L"}, kNone}, M::FirstOrder, L::FirstOrder, true, true, false, true, true, false, false, false, E4FOM1},
    {"Oren-Spedicato (self-scaling)", "O-S", {{"O", "S"}, kNone}, M::FirstOrder, L::FirstOrder, true, true, false, true, true, false, false, false, E4FOM1},
    {"B-F-G-S with simple bounds", "SB", {{"SB", ""}, {"S", "B"}}, M::FirstOrder, L::FirstOrder, false, false, true, true, false, false, false, false, E4FOM1},
    {kUndefined, "", {kNone, kNone}, M::None, L::CoordinateDescent, false, true, false, false, false, false, false, false, nullptr},
    {"coordinate descent", "C-D", {{"C", "D"}, kNone}, M::CoordinateDescent, L::CoordinateDescent, false, true, false, false, false, false, false, false, E4CDM1},
    {"downhill simplex (Nelder and Mead)", "N-M", {{"N", "M"}, kNone}, M::Simplex, L::Simplex, false, false, false, false, false, false, false, true, E04DSMNM},
    {"Monte-Carlo (conventional)", "M-C", {{"M", "C"}, kNone}, M::MonteCarlo, L::MonteCarlo, false, false, false, false, false, true, false, true, E4MCM1},
    {"Monte-Carlo (simulated annealing)", "SA-MC", {{"SA", "MC"}, kNone}, M::MonteCarlo, L::AnnealedMonteCarlo, false, false, false, false, false, true, true, true, E4MCM1},
    {"downhill simplex (simulated annealing)", "SA-NM", {{"SA", "NM"}, kNone}, M::AnnealedSimplex, L::Simplex, false, false, false, false, false, false, true, true, E04DSMSA},
    {kUndefined, "", {kNone, kNone}, M::None, L::None, false, false, false, false, false, false, false, false, nullptr},
    {kUndefined, "", {kNone, kNone}, M::None, L::None, false, false, false, false, false, false, false, false, nullptr},
}};

}  // namespace

const MethodRow& methodTableRow(int number) {
    if (number < 1 || number > kMethodRows) number = kMethodRows;
    return kMethods[static_cast<std::size_t>(number - 1)];
}

std::string methodRow(int number) {
    if (number < 1 || number > kMethodRows) return padded(kUndefined, 50);
    return padded(methodTableRow(number).text, 50);
}

int methodOfWord(std::string_view word) {
    std::string w(word.substr(0, static_cast<std::size_t>(R02LEN(word))));
    R02CASE(w, 1);
    const std::size_t dash = w.find('-');
    const std::string first = w.substr(0, dash);
    const std::string second = dash == std::string::npos ? "" : w.substr(dash + 1);
    for (int number = 1; number <= kMethodRows; ++number) {
        for (const MethodWord& form : methodTableRow(number).match) {
            if (form.first.empty()) continue;
            if (!first.starts_with(form.first)) continue;
            if (!form.second.empty() && !second.starts_with(form.second)) continue;
            return number;
        }
    }
    return 0;
}

bool methodAvailable(int number) {
    return number >= 1 && number <= kMethodRows && methodTableRow(number).search != nullptr;
}
