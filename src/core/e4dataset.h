// The data set of a minimization, E4DataSet, with its status vector iStat,
// the gradient-scheme and termination tables, and E4RST1.
#pragma once

#include "core/status_rows.h"

#include <array>
#include <string>
#include <string_view>

constexpr int kMaxVar = 128;
constexpr int kStatRows = 105;

// A 1-based vector of fixed extent: v(1) .. v(N).
template <class T, int N>
struct Vec1 {
    std::array<T, N> a{};
    T& operator()(int i) { return a[static_cast<std::size_t>(i - 1)]; }
    const T& operator()(int i) const { return a[static_cast<std::size_t>(i - 1)]; }
    T* data() { return a.data(); }
    const T* data() const { return a.data(); }
    void fill(const T& v) { a.fill(v); }
};

// A column-major matrix with leading dimension LD and NC columns: m(i, j),
// 1-based.
template <int LD, int NC = LD>
struct Mat1 {
    std::array<double, LD * NC> a{};
    double& operator()(int i, int j) { return a[static_cast<std::size_t>((j - 1) * LD + i - 1)]; }
    double operator()(int i, int j) const { return a[static_cast<std::size_t>((j - 1) * LD + i - 1)]; }
    double* data() { return a.data(); }
    const double* data() const { return a.data(); }
};

struct E4DataSetRecord {
    Vec1<int, kStatRows> iStat;

    Vec1<double, kMaxVar> xStart, xEnd, xScale, bL, bU, direct, gStart, gEnd;
    Vec1<double, kMaxVar> deltaX, deltaG, xStep, stpMax, finDif, rXTol, deviat, R_eigen;
    Vec1<double, kMaxVar> aux1, aux2, aux3, aux4;
    Vec1<int, kMaxVar> iFixer, iAux1;
    Vec1<double, 2 * kMaxVar + 1> Hdiag;
    // Hesse has room for a 129th column: the simplex search keeps n + 1
    // vertices in it.
    Mat1<kMaxVar, kMaxVar + 1> Hesse;
    Mat1<kMaxVar> V_eigen;
    Vec1<double, 12> rSaved;
    Vec1<int, 16> iSaved;

    double fStart = 0, fEnd = 0, deltaF = 0, deltaXn = 0;
    double rFTol = 0, tolScl = 0, hCond = 0, FrlErr = 0, temper = 0, Tsced = 0, hCondNow = 0;
    int iFlag = 0;

    // File names, 32 characters, blank-padded.
    std::string crName, drName, dwName, svName, hpName;
    // Comment characters of replies and initialization lines (4 characters).
    std::string commentChars;

    int& nVar() { return iStat(row::nVar); }
    int nVar() const { return iStat(row::nVar); }
};

extern E4DataSetRecord E4DataSet;

constexpr int kFileNameWidth = 32;

// Comment text of row `row` of the status vector (as REPORT STATUS lists it).
std::string_view iStatComment(int row);
// Row text of gradient scheme `value` (0..4; others "... UNDEFINED ...").
std::string gradientSchemeRow(int value);
// Row text of local termination mode `value` (0..5).
std::string localTerminationRow(int value);
// Row text of overall termination mode `value`, 32 characters.
std::string overallTerminationRow(int value);

// A text blank-padded (or cut) to `width`.
std::string padded(std::string_view text, int width);

// Puts E4DataSet in its start state: all zero, xScale 1, file names at
// their start values.
void resetE4DataSet();

// Drops what depends on changed data; mode beginning with "A" is the full reset.
void E4RST1(std::string_view mode);
