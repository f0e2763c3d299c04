// The model curve and the objective: normalization of the volume fractions,
// the scale found by least squares, the misfit, the deviation of the fit,
// and the noise of simulated curves.
#include "scatter/form_factors.h"
#include "scatter/model_curves.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

ModelPhase sphere(double Vf, double Rout, double dR = 0.0) {
    ModelPhase p;
    p.phaseType = 1;
    p.Vf = Vf;
    p.shell.Rout = Rout;
    p.shell.roout = 1.0;
    p.shell.dR = dR;
    p.shell.iDist = 1;
    return p;
}

struct Curve {
    std::vector<double> s, I, err, w;
};

// A measured curve with 1 percent errors and weights normalized as the data
// input makes them.
Curve measured(int n) {
    Curve c;
    for (int k = 0; k < n; ++k) {
        double s = 0.01 + 0.004 * k;
        c.s.push_back(s);
        c.I.push_back(100.0 / (1.0 + std::pow(30.0 * s, 4)) + 1e-3);
        c.err.push_back(0.01 * c.I.back());
    }
    double norm = 0;
    for (int k = 0; k < n; ++k) norm += std::pow(c.I[k] / c.err[k], 2);
    for (int k = 0; k < n; ++k) c.w.push_back(1.0 / c.err[k] / std::sqrt(norm));
    return c;
}

double misfit(std::vector<ModelPhase> phases, const Curve& c) {
    evaluateModel(phases.data(), static_cast<int>(phases.size()), 0.0, c.s.data(), static_cast<int>(c.s.size()));
    return objectiveValue(c.I.data(), c.w.data(), static_cast<int>(c.s.size()));
}

TEST(ModelCurves, OnlyTheRatiosOfTheVolumeFractionsCount) {
    resetModelCurves();
    Curve c = measured(40);
    double a = misfit({sphere(2.0, 30.0), sphere(2.0, 60.0, 6.0)}, c);
    double b = misfit({sphere(0.5, 30.0), sphere(0.5, 60.0, 6.0)}, c);
    EXPECT_NEAR(a, b, 1e-14 * std::max(1.0, a));
    double one = misfit({sphere(0.3, 45.0)}, c);
    double other = misfit({sphere(7.0, 45.0)}, c);
    EXPECT_NEAR(one, other, 1e-14 * std::max(1.0, one));
    EXPECT_GT(one, 0.0);
    EXPECT_LE(one, 1.0);  // never worse than no model at all
}

TEST(ModelCurves, AModelEqualToTheDataFitsExactly) {
    Curve c = measured(30);
    std::vector<ModelPhase> phases = {sphere(1.0, 40.0, 4.0)};
    evaluateModel(phases.data(), 1, 0.0, c.s.data(), 30);
    double norm = 0;
    for (int k = 0; k < 30; ++k) {
        c.I[k] = 3.5 * ModelCurves.sumCurve[k];
        c.err[k] = 0.02 * c.I[k];
        norm += std::pow(c.I[k] / c.err[k], 2);
    }
    for (int k = 0; k < 30; ++k) c.w[k] = 1.0 / c.err[k] / std::sqrt(norm);
    EXPECT_LT(misfit(phases, c), 1e-28);
    EXPECT_NEAR(ModelCurves.scaleB, 3.5, 1e-13);
    EXPECT_NEAR(fitDeviation(c.I.data(), c.err.data(), 30), 0.0, 1e-12);
}

TEST(ModelCurves, AllVolumeFractionsZeroGiveTheFiniteMisfitOfNoModel) {
    Curve c = measured(20);
    std::vector<ModelPhase> phases = {sphere(0.0, 30.0), sphere(0.0, 60.0)};
    double f = misfit(phases, c);
    EXPECT_EQ(phases[0].Vf, 0.0);
    EXPECT_EQ(ModelCurves.sumCurve[5], 0.0);
    EXPECT_EQ(ModelCurves.scaleB, 0.0);
    EXPECT_NEAR(f, 1.0, 1e-14);  // the weights make the data's own norm 1
}

TEST(SimulatedNoise, NoiseOfAGivenSizeAndRepeatable) {
    const int n = 4000;
    std::vector<double> in(n, 50.0), out(n), again(n), other(n);
    NOISEADD(n, in.data(), out.data(), 0.1, 77);
    NOISEADD(n, in.data(), again.data(), 0.1, 77);
    NOISEADD(n, in.data(), other.data(), 0.1, 78);
    EXPECT_EQ(out, again);
    EXPECT_NE(out, other);
    double mean = 0, sq = 0;
    for (double v : out) {
        double g = (v / 50.0 - 1.0) / 0.1;
        mean += g;
        sq += g * g;
    }
    mean /= n;
    EXPECT_NEAR(mean, 0.0, 0.06);
    EXPECT_NEAR(std::sqrt(sq / n - mean * mean), 1.0, 0.06);
    std::vector<double> none(n);
    NOISEADD(n, in.data(), none.data(), 0.0, 77);
    EXPECT_EQ(none, in);
    // Negative noise: the deviation grows as the square root of the value.
    std::vector<double> counts(n, 400.0), poisson(n);
    NOISEADD(n, counts.data(), poisson.data(), -1.0, 77);
    double var = 0;
    for (double v : poisson) var += (v - 400.0) * (v - 400.0);
    EXPECT_NEAR(std::sqrt(var / n), 20.0, 1.5);
}

}  // namespace
