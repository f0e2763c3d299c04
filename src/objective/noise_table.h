// The table of differences of the noise estimate (DifferenceTable) with its
// analysis and listing, and deriveSteps, the initial steps read off it.
#pragma once

#include <array>

struct NoiseResult {
    bool found = false;   // a column behaved like noise
    double absolute = 0;  // the absolute noise read off it
};

// 14 columns in one packed array: column 1 holds 14 values, column j holds
// 15 - j and starts behind column j - 1.  Only columns up to 8 are formed.
class DifferenceTable {
public:
    void setValues(const double* T);
    // Value T(k) of the first column, k = 1..14.
    double value(int k) const { return packed_[static_cast<std::size_t>(k - 1)]; }
    // Forms columns 2 to 8 until one behaves like noise; writes its notes
    // at message level 1 and above on `channel`.
    NoiseResult analyse(int level, int channel);
    // "Finite-difference table is as follows:" and the 14 rows.
    void print(int channel) const;
    // Entry k of column j.
    double entry(int j, int k) const { return packed_[static_cast<std::size_t>(start(j) + k - 1)]; }

private:
    static int start(int j) { return (j - 1) * 15 - (j - 1) * j / 2; }
    double& at(int j, int k) { return packed_[static_cast<std::size_t>(start(j) + k - 1)]; }
    std::array<double, 105> packed_{};
    int last_ = 1;  // last column formed
};

// Sets xStep from the table (h the step multiplier, d in aux2, L its length).
void deriveSteps(const double* x, double A, double L, double h, const DifferenceTable& table,
                 int level, int channel);
