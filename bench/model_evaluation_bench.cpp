// Benchmark of one evaluation of the scattering model and its misfit on 101
// points for each kind of phase and for a sample of all four.
#include "scatter/model_curves.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <vector>

namespace {

std::vector<double> grid() {
    std::vector<double> s;
    for (int k = 0; k < 101; ++k) s.push_back(0.005 + 0.0025 * k);
    return s;
}

ModelPhase phase(int type) {
    ModelPhase p;
    p.phaseType = type;
    p.Vf = 1.0;
    p.shell = {10.0, 0.5, 40.0, 1.0, 6.0, 2};
    p.len = 300.0;
    p.Rhs = 45.0;
    p.tau = 0.2;
    p.Rell = 35.0;
    p.nu = 2.0;
    return p;
}

// The model and the misfit against a curve, as one call of the user
// function makes them after the dialogue.
void evaluate(benchmark::State& state, std::vector<ModelPhase> phases) {
    std::vector<double> s = grid(), I(101), w(101);
    for (int k = 0; k < 101; ++k) {
        I[k] = 1.0 / (1.0 + 1e4 * s[k] * s[k]);
        w[k] = 1.0 / I[k];
    }
    ModelPhase work[kMaxPhases];
    const int n = static_cast<int>(phases.size());
    for (auto _ : state) {
        std::copy(phases.begin(), phases.end(), work);
        evaluateModel(work, n, 0.05, s.data(), 101);
        benchmark::DoNotOptimize(objectiveValue(I.data(), w.data(), 101));
    }
}

void PolydisperseSphereWithStructureFactor(benchmark::State& st) { evaluate(st, {phase(1)}); }
void PolydisperseCylinder(benchmark::State& st) { evaluate(st, {phase(2)}); }
void Ellipsoid(benchmark::State& st) { evaluate(st, {phase(4)}); }
void Dumbbell(benchmark::State& st) { evaluate(st, {phase(3)}); }
void FourPhases(benchmark::State& st) { evaluate(st, {phase(1), phase(2), phase(3), phase(4)}); }

BENCHMARK(PolydisperseSphereWithStructureFactor)->Unit(benchmark::kMicrosecond);
BENCHMARK(PolydisperseCylinder)->Unit(benchmark::kMicrosecond);
BENCHMARK(Ellipsoid)->Unit(benchmark::kMicrosecond);
BENCHMARK(Dumbbell)->Unit(benchmark::kMicrosecond);
BENCHMARK(FourPhases)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
