// Sections of the surface: the function sampled along a line through the
// current point (a coordinate, the direction vector or an eigenvector of
// the Hessian), written to a .sec file and drawn as an SVG picture beside
// it.  E4SCT2 samples and writes, E4SCT1 is the dialogue (direct form and
// local menu), E4CmdSection the monitor's SECTION command.
#pragma once

#include "monitor/monitor_state.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

constexpr int kMaxSectionPoints = 4096;

// The curve of the last section: offsets X from the current point, in units
// of the direction vector, and the function values F; n points.
struct SectionCurve {
    int n = 0;
    std::array<double, kMaxSectionPoints> X{};
    std::array<double, kMaxSectionPoints> F{};
};
const SectionCurve& lastSection();

using SectionFunction = double (*)(double* x);

// Samples fun at x + k h dirv (free variables only) for k from -(points/2)
// to points - 1 - points/2, with h = W / (points - 1), writes stem + ".sec"
// and draws stem + ".svg".  f is evaluated when the data set holds no value.
// points is brought into 3..4096.  err: 0 good, -1 width 0 (no text), -2
// width too small, -3 the file could not be opened or written.
void E4SCT2(SectionFunction fun, double& f, double* x, const double* dirv, int n, double W, int& points,
            double& h, std::string_view stem, std::string_view title, int& err);

// The section picture stem + ".svg": the n points (X, F) as a curve with
// the title; the console says where it went.  Returns the iostat of the
// writing, or -1 when a value is not a number and nothing was drawn.
int drawSectionPicture(std::string_view stem, std::string_view title, int n, const double* X, const double* F);

// The dialogue of the SECTION command on the words of the command (each 32
// characters; words[0] is word 1).  f and x are the current value and point,
// n the number of variables.  err: 0 good, 1 a bad number or frame size in
// the direct form, 10 a failure of the local menu in auto mode.
void E4SCT1(double& f, double* x, int& n, std::string* words, int maxWords, int& err);

// The local menu of sections (SECTION,EXPLORE); err as for E4SCT1.
void sectionMenu(double& f, double* x, int n, std::string_view fileName, int& err);

// --- shared by the two forms of the dialogue --------------------------------

// The file stem of a section: a name given by FILE=name takes the place of
// the standard stem word ("var", "eig", "_section"); the suffix follows.
std::string sectionStem(std::string_view given, std::string_view standard, std::string_view suffix);
// A word or reply as a number; empty when blank or not a number.
std::optional<double> sectionReal(std::string_view text);
std::optional<int> sectionInteger(std::string_view text);
// A number as the dialogue shows it, without blanks.
std::string sectionNumberText(double v);
std::string sectionIntegerText(int i);
// Gives up reading the command file, as CLOSE,COMMAND,READ does.
void giveUpCommandFile();
// The target function as a section samples it.
double sectionTarget(double* x);

// SECTION[,i|FILE=name|EXPLORE[,width[,points[,frame]]]]; interactive mode only.
Outcome E4CmdSection(MonitorState& m);
