// The model's whole-curve forms against the one-value routines of every
// phase type, and the curves kept between evaluations against fresh ones.
#include "scatter/form_factors.h"
#include "scatter/model_curves.h"
#include "scatter/phase_intensity.h"
#include "scatter/radius_distributions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <vector>

namespace {

// 101 points log-spaced from 0.002 to 0.6 (1/angstrom).
std::vector<double> logGrid() {
    std::vector<double> s;
    for (int k = 0; k <= 100; ++k) s.push_back(0.002 * std::pow(300.0, k / 100.0));
    return s;
}

ModelPhase phase(int type, ShellParticle shell, double len = 0.0, double Rell = 0.0,
                 double nu = 0.0) {
    ModelPhase p;
    p.phaseType = type;
    p.Vf = 1.0;
    p.shell = shell;
    p.len = len;
    p.Rell = Rell;
    p.nu = nu;
    return p;
}

// One of each kind: Schulz and Gauss, with a core, without one (0 and
// negative), monodisperse; prolate and oblate ellipsoids.
std::vector<ModelPhase> everyKind() {
    return {phase(1, {10.0, 0.5, 40.0, 1.0, 6.0, 2}), phase(1, {-4.0, 0.5, 25.0, 1.0, 5.0, 1}),
            phase(1, {12.0, -0.3, 30.0, 1.2, 0.0, 2}), phase(2, {10.0, 0.5, 40.0, 1.0, 6.0, 2}, 300.0),
            phase(2, {0.0, 0.5, 30.0, 1.0, 8.0, 1}, 80.0), phase(2, {15.0, 2.0, 20.0, 1.0, 0.0, 2}, 500.0),
            phase(3, {5.0, 0.5, 25.0, 1.0, 3.0, 2}), phase(3, {5.0, 0.5, 25.0, 1.0, 0.0, 2}),
            phase(4, {}, 0.0, 35.0, 2.0), phase(4, {}, 0.0, 60.0, 0.4)};
}

// The intensity of a phase at one s by the one-value routines: every
// integrand called through GAUSSQ with std::sin, std::cos and S17J1Y1.
double oneValue(const ModelPhase& p, double s) {
    double radLow = 0.0, radHigh = 0.0, cylLow = 0.0, cylStep = 0.0;
    sphereLimits(p.shell.Rout, p.shell.dR, radLow, radHigh);
    cylinderLimits(p.shell.Rout, p.shell.dR, cylLow, cylStep);
    switch (p.phaseType) {
        case 1: return sphereIntensity(s, p.shell, radLow, radHigh);
        case 2: return cylinderIntensity(s, p.shell, p.len, cylLow, cylStep);
        case 3: return dumbbellIntensity(s, p.shell, radLow, radHigh);
        default: return ellipsoidIntensity(s, p.Rell, p.nu);
    }
}

const double* typeRow(int type) {
    switch (type) {
        case 1: return ModelCurves.sphInt[0];
        case 2: return ModelCurves.cylInt[0];
        case 3: return ModelCurves.dmbInt[0];
        default: return ModelCurves.elpInt[0];
    }
}

TEST(ModelCurveForms, EveryPhaseTypeAgreesWithTheOneValueRoutines) {
    // The curves compute once what does not change along them and sum in
    // the same order: the same numbers.  Only the ellipsoid takes sin and cos
    // from the vector kernel, which may differ from the library's in the
    // last bit: a few roundings (1e-15 measured), well inside the 1e-13 the
    // model allows itself.  tau = 0: no structure factor.
    const std::vector<double> s = logGrid();
    const int n = static_cast<int>(s.size());
    for (ModelPhase p : everyKind()) {
        resetModelCurves();
        evaluateModel(&p, 1, 0.1, s.data(), n);
        double worst = 0.0;
        for (int k = 0; k < n; ++k) {
            const double want = oneValue(p, s[k]);
            worst = std::max(worst, std::fabs(typeRow(p.phaseType)[k] - want) / std::fabs(want));
        }
        EXPECT_LE(worst, p.phaseType == 4 ? 1e-14 : 0.0)
            << "type " << p.phaseType << ", Rout " << p.shell.Rout << ", Rell " << p.Rell;
    }
}

TEST(ModelCurveForms, KeptCurvesGiveWhatAFreshEvaluationGives) {
    // A sequence of evaluations as a fit makes them, each changing one thing.
    // Every result must equal, bit for bit, a fresh evaluation of the same
    // sample made after a reset.  The SPHERE phase has a structure factor,
    // which follows its normalized Vf.
    const std::vector<double> s = logGrid();
    std::vector<double> shifted = s;
    shifted[50] *= 1.0000001;
    std::vector<ModelPhase> sample = everyKind();
    sample.resize(4);
    sample[0].Rhs = 45.0;
    sample[0].tau = 0.2;
    struct Step {
        double* field;  // what changes, nullptr for nothing
        double value;
        const std::vector<double>* grid;
    };
    const std::vector<Step> steps = {
        {nullptr, 0.0, &s},
        {&sample[0].Vf, 3.0, &s},             // only the volume fractions
        {&sample[2].shell.Rout, 31.0, &s},    // one phase's own radius
        {&sample[3].len, 350.0, &s},          // the cylinder's length
        {&sample[1].shell.Rin, -4.5, &s},     // a negative core, kept as such
        {nullptr, 0.0, &shifted},             // one point of the grid moves
        {&sample[0].shell.dR, 6.5, &shifted}, // the sphere's width
    };
    const auto evaluate = [&](const std::vector<double>& grid) {
        std::vector<ModelPhase> work = sample;
        evaluateModel(work.data(), 4, 0.15, grid.data(), 101);
    };
    const std::vector<ModelPhase> start = sample;
    std::vector<ModelCurvesRecord> fresh(steps.size());
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (steps[i].field) *steps[i].field = steps[i].value;
        resetModelCurves();
        evaluate(*steps[i].grid);
        fresh[i] = ModelCurves;
    }
    sample = start;
    resetModelCurves();
    for (std::size_t i = 0; i < steps.size(); ++i) {
        // The fields point into sample, which holds the starting values again.
        if (steps[i].field) *steps[i].field = steps[i].value;
        evaluate(*steps[i].grid);
        EXPECT_EQ(std::memcmp(&fresh[i], &ModelCurves, sizeof(ModelCurvesRecord)), 0)
            << "step " << i;
    }
}

}  // namespace
