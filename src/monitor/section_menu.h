// The local menu of sections: its record, kept from the entry to Exit, and
// its commands.  Each command works on the current line of the menu's own
// command stack; one that lacks something pushes the command that supplies
// it and runs again when that one is done.
#pragma once

#include "core/e4dataset.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace section_menu {

// Slots of the record: the examined variable, the number of points, the
// width is set, a curve is plotted and no move made since, the section runs
// along the direction vector.
enum Slot : int { Variable = 1, Points = 2, WidthSet = 3, Plotted = 4, AlongDirection = 6 };

enum class Result { Done, Pushed, Exit, Failed, Illegal, Abandon };

constexpr int kDefaultPoints = 71;

// Row k (1..7) of the parameter list, 50 characters.
std::string parameterRow(int k);

struct Menu {
    Menu(double& value, double* point, int count) : f(value), x(point), n(count) {}
    double& f;
    double* x;
    int n;

    std::array<int, 16> slot{};
    double W = 0.0;
    int points = 0;
    double h = 0.0;
    int half = 0;
    Vec1<double, kMaxVar> dirv;
    std::string given;      // a name from FILE=name
    std::string stemWord;   // "var", "eig" or "_section"
    std::string stemIndex;  // the number behind it
    std::string title;

    // What the last plot ran along, for Move.
    int plotVariable = 0;
    double plotW = 0.0, plotH = 0.0;
    Vec1<double, kMaxVar> plotDirection;

    std::vector<std::string> stack;
    int sp = 0;
    std::string line;
    std::array<std::string, 6> words;

    int& at(int k) { return slot[static_cast<std::size_t>(k - 1)]; }
    // Word k (1-based) without trailing blanks.
    std::string word(int k) const;
    void push(std::string_view text);
    void pop();
    void clear();
    // The top line into `line` and `words`.
    void readTop();
    // A question of a command; "EXIT" once the terminal input has ended.
    std::string ask(std::string_view question, std::string_view def) const;
};

Result variable(Menu& m);
Result npoints(Menu& m);
Result size(Menu& m);
Result plot(Menu& m);
Result move(Menu& m);
Result direct(Menu& m);
Result file(Menu& m);

}  // namespace section_menu
