// Benchmark of one evaluation of the scattering model on 101 points for each
// kind of phase and for a sample of all four.
#include "scatter/model_curves.h"

#include <benchmark/benchmark.h>

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

void evaluate(benchmark::State& state, std::vector<ModelPhase> phases) {
    std::vector<double> s = grid();
    for (auto _ : state) {
        std::vector<ModelPhase> work = phases;
        benchmark::DoNotOptimize(evaluateModel(work.data(), static_cast<int>(work.size()), 0.05, s.data(), 101));
        benchmark::DoNotOptimize(ModelCurves.sumCurve[100]);
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
