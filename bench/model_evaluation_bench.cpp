// Benchmark of one evaluation of the scattering model and its misfit on 101
// points: the work of one call of the user function after the dialogue.
//
// Two workloads.  The first runs on a linear grid of s (0.005 to 0.255) for
// each kind of phase and for a sample of all four.  The second is the
// workload of the usual comparisons with other small-angle scattering
// programs: 101 points log-spaced from s = 0.005 to 0.5 (1/angstrom); a
// core-shell sphere (core 10, shell to 40, Schulz width 6) without and with
// the sticky-hard-sphere structure factor (Rhs 45, tau 0.2, volume fraction
// 0.05); a core-shell cylinder of length 300 averaged over 11 radii; an
// ellipsoid of revolution (35, 35, 70); and those three together.
//
// The model keeps each phase's curve while that phase's parameters stay the
// same.  Every case therefore alternates between two parameter sets (the
// outer radius 40 and 40.5), so that each evaluation computes every curve
// anew, as in a fit where all parameters move; the last case changes only
// the volume fractions, as in a fit of the composition of fixed phases.
#include "scatter/model_curves.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr int kPoints = 101;

std::vector<double> linearGrid() {
    std::vector<double> s;
    for (int k = 0; k < kPoints; ++k) s.push_back(0.005 + 0.0025 * k);
    return s;
}

std::vector<double> logGrid() {
    std::vector<double> s;
    for (int k = 0; k < kPoints; ++k) s.push_back(0.005 * std::pow(100.0, k / 100.0));
    return s;
}

ModelPhase phase(int type, double Vf = 1.0) {
    ModelPhase p;
    p.phaseType = type;
    p.Vf = Vf;
    p.shell = {10.0, 0.5, 40.0, 1.0, 6.0, 2};
    p.len = 300.0;
    p.Rhs = 45.0;
    p.tau = 0.2;
    p.Rell = 35.0;
    p.nu = 2.0;
    return p;
}

// The same phase with its structure factor switched off (tau below 1e-5).
ModelPhase withoutStructureFactor(ModelPhase p) {
    p.tau = 0.0;
    return p;
}

enum class Change { AllParameters, VolumeFractions };

// The model and the misfit against a curve, as one call of the user
// function makes them, alternating between two parameter sets.
void evaluate(benchmark::State& state, const std::vector<double>& s,
              const std::vector<ModelPhase>& phases, double cSys,
              Change change = Change::AllParameters) {
    std::vector<double> I(kPoints), w(kPoints);
    for (int k = 0; k < kPoints; ++k) {
        I[k] = 1.0 / (1.0 + 1e4 * s[k] * s[k]);
        w[k] = 1.0 / I[k];
    }
    std::vector<ModelPhase> other = phases;
    if (change == Change::VolumeFractions) {
        other[0].Vf *= 1.5;  // all normalized fractions move, and the sphere's eta
    } else {
        for (ModelPhase& p : other) {
            p.shell.Rout += 0.5;
            p.Rell += 0.5;
        }
    }
    ModelPhase work[kMaxPhases];
    const int n = static_cast<int>(phases.size());
    bool second = false;
    for (auto _ : state) {
        const std::vector<ModelPhase>& set = second ? other : phases;
        second = !second;
        std::copy(set.begin(), set.end(), work);
        evaluateModel(work, n, cSys, s.data(), kPoints);
        benchmark::DoNotOptimize(objectiveValue(I.data(), w.data(), kPoints));
    }
}

// Linear grid, each kind of phase.
void PolydisperseSphereWithStructureFactor(benchmark::State& st) {
    evaluate(st, linearGrid(), {phase(1)}, 0.05);
}
void PolydisperseCylinder(benchmark::State& st) { evaluate(st, linearGrid(), {phase(2)}, 0.05); }
void Ellipsoid(benchmark::State& st) { evaluate(st, linearGrid(), {phase(4)}, 0.05); }
void Dumbbell(benchmark::State& st) { evaluate(st, linearGrid(), {phase(3)}, 0.05); }
void FourPhases(benchmark::State& st) {
    evaluate(st, linearGrid(), {phase(1), phase(2), phase(3), phase(4)}, 0.05);
}

// The comparison workload on the log grid.
void CoreShellSphereSchulz(benchmark::State& st) {
    evaluate(st, logGrid(), {withoutStructureFactor(phase(1))}, 0.05);
}
void CoreShellSphereSchulzStickyHardSpheres(benchmark::State& st) {
    evaluate(st, logGrid(), {phase(1)}, 0.05);
}
void CoreShellCylinder11Radii(benchmark::State& st) { evaluate(st, logGrid(), {phase(2)}, 0.05); }
void EllipsoidOfRevolution(benchmark::State& st) { evaluate(st, logGrid(), {phase(4)}, 0.05); }
// The three phases in equal shares; cSys 0.15 keeps the sphere's volume
// fraction at 0.05.
void SphereCylinderEllipsoid(benchmark::State& st) {
    evaluate(st, logGrid(), {phase(1), phase(2), phase(4)}, 0.15);
}
void SphereCylinderEllipsoidOnlyVolumeFractionsChange(benchmark::State& st) {
    evaluate(st, logGrid(), {phase(1), phase(2), phase(4)}, 0.15, Change::VolumeFractions);
}

BENCHMARK(PolydisperseSphereWithStructureFactor)->Unit(benchmark::kMicrosecond);
BENCHMARK(PolydisperseCylinder)->Unit(benchmark::kMicrosecond);
BENCHMARK(Ellipsoid)->Unit(benchmark::kMicrosecond);
BENCHMARK(Dumbbell)->Unit(benchmark::kMicrosecond);
BENCHMARK(FourPhases)->Unit(benchmark::kMicrosecond);
BENCHMARK(CoreShellSphereSchulz)->Unit(benchmark::kMicrosecond);
BENCHMARK(CoreShellSphereSchulzStickyHardSpheres)->Unit(benchmark::kMicrosecond);
BENCHMARK(CoreShellCylinder11Radii)->Unit(benchmark::kMicrosecond);
BENCHMARK(EllipsoidOfRevolution)->Unit(benchmark::kMicrosecond);
BENCHMARK(SphereCylinderEllipsoid)->Unit(benchmark::kMicrosecond);
BENCHMARK(SphereCylinderEllipsoidOnlyVolumeFractionsChange)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
