// The model curve of the sample: evaluateModel (volume fractions, limits,
// structure factors, intensities, sum), objectiveValue, fitDeviation.
#include "scatter/model_curves.h"

#include "core/machine_constants.h"
#include "scatter/form_factors.h"
#include "scatter/phase_intensity.h"
#include "scatter/radius_distributions.h"
#include "scatter/structure_factor.h"

#include <algorithm>
#include <cmath>
#include <cstring>

ModelCurvesRecord ModelCurves;

namespace {

// Each phase's curve is kept between evaluations, keyed on the parameters
// that the curve reads and on the s grid, so that a phase whose parameters
// did not change costs a copy (a fit of the volume fractions alone, or a
// sample with fixed phases).  What is kept is the curve before the factors
// that change with the other phases: a SPHERE phase's structure factor
// depends on its normalized volume fraction and is applied on every call.
constexpr int kMaxKeys = 7;

struct KeptCurve {
    bool valid = false;
    int type = 0;
    double key[kMaxKeys] = {};
    double curve[kMaxPoints] = {};
};

struct KeptCurves {
    int nPts = -1;
    double s[kMaxPoints] = {};
    KeptCurve phase[kMaxPhases];
};

KeptCurves kept;

// The parameters that the form curve of a phase reads, in key[]; their count.
int curveKey(const ModelPhase& p, double* key) {
    const ShellParticle& sh = p.shell;
    switch (p.phaseType) {
        case 1:
        case 2:
        case 3: {
            const double values[kMaxKeys] = {sh.Rin, sh.roin, sh.Rout, sh.roout, sh.dR,
                                             static_cast<double>(sh.iDist), p.len};
            const int n = p.phaseType == 2 ? 7 : 6;
            std::memcpy(key, values, sizeof(double) * n);
            return n;
        }
        case 4:
            key[0] = p.Rell;
            key[1] = p.nu;
            return 2;
        default: return 0;
    }
}

bool sameBits(const double* a, const double* b, int n) {
    return std::memcmp(a, b, sizeof(double) * static_cast<std::size_t>(n)) == 0;
}

// Forgets every kept curve when the s grid is not the one they were made on.
void keepGrid(const double* s, int nPts) {
    if (kept.nPts == nPts && sameBits(kept.s, s, nPts)) return;
    for (KeptCurve& c : kept.phase) c.valid = false;
    kept.nPts = nPts;
    std::memcpy(kept.s, s, sizeof(double) * static_cast<std::size_t>(nPts));
}

}  // namespace

void resetModelCurves() {
    ModelCurves = ModelCurvesRecord{};
    kept = KeptCurves{};
}

namespace {

void normalizeVolumeFractions(ModelPhase* phases, int nPhase) {
    double total = 0;
    for (int j = 0; j < nPhase; ++j) total += std::fabs(phases[j].Vf);
    if (total == 0.0) total = X02RMDC(2);
    for (int j = 0; j < nPhase; ++j) phases[j].Vf /= total;
}

struct Limits {
    double radLow = 0, radHigh = 0, cylLow = 0, cylStep = 0;
};

Limits limitsOf(const ModelPhase& p) {
    Limits l;
    if (p.phaseType == 2) {
        cylinderLimits(p.shell.Rout, p.shell.dR, l.cylLow, l.cylStep);
    } else {
        sphereLimits(p.shell.Rout, p.shell.dR, l.radLow, l.radHigh);
    }
    return l;
}

// The form curve of phase j (for a SPHERE phase without its structure
// factor, for a DUMBBELL phase the sphere's) into out; false for a phase of
// no known type.
bool formCurve(const ModelPhase& p, const double* s, int nPts, double* out) {
    const Limits l = limitsOf(p);
    switch (p.phaseType) {
        case 1:
        case 3: sphereCurve(s, nPts, p.shell, l.radLow, l.radHigh, out); return true;
        case 2: cylinderCurve(s, nPts, p.shell, p.len, l.cylLow, l.cylStep, out); return true;
        case 4: ellipsoidCurve(p.Rell, p.nu, s, nPts, out); return true;
        default: return false;
    }
}

// The kept form curve of phase j, computed anew when its key changed;
// nullptr for a phase of no known type.
const double* keptFormCurve(const ModelPhase& p, int j, const double* s, int nPts) {
    KeptCurve& c = kept.phase[j];
    double key[kMaxKeys];
    const int n = curveKey(p, key);
    if (c.valid && c.type == p.phaseType && sameBits(c.key, key, n)) return c.curve;
    c.valid = formCurve(p, s, nPts, c.curve);
    c.type = p.phaseType;
    std::memcpy(c.key, key, sizeof(double) * static_cast<std::size_t>(n));
    return c.valid ? c.curve : nullptr;
}

// The intensity curve of phase j in the array of its type; returns that row,
// or nullptr for a phase of no known type, which adds nothing.
const double* phaseCurve(const ModelPhase& p, int j, const double* s, int nPts) {
    ModelCurvesRecord& mc = ModelCurves;
    const double* form = keptFormCurve(p, j, s, nPts);
    const std::size_t bytes = sizeof(double) * static_cast<std::size_t>(nPts);
    switch (p.phaseType) {
        case 1:
            for (int k = 0; k < nPts; ++k) mc.sphInt[j][k] = form[k] * mc.strFac[j][k];
            return mc.sphInt[j];
        case 2: std::memcpy(mc.cylInt[j], form, bytes); return mc.cylInt[j];
        case 3:
            std::memcpy(mc.sphInt[j], form, bytes);
            for (int k = 0; k < nPts; ++k) {
                mc.dmbInt[j][k] = 2.0 * (SINCF(2.0 * s[k] * p.shell.Rout) + 1.0) * mc.sphInt[j][k];
            }
            return mc.dmbInt[j];
        case 4: std::memcpy(mc.elpInt[j], form, bytes); return mc.elpInt[j];
        default: return nullptr;
    }
}

}  // namespace

int evaluateModel(ModelPhase* phases, int nPhase, double cSys, const double* s, int nPts) {
    ModelCurvesRecord& mc = ModelCurves;
    nPts = std::clamp(nPts, 0, kMaxPoints);  // the records hold no more
    nPhase = std::clamp(nPhase, 0, kMaxPhases);
    normalizeVolumeFractions(phases, nPhase);
    SphereInteraction spheres[kMaxPhases];
    for (int j = 0; j < nPhase; ++j) {
        spheres[j] = {phases[j].phaseType, phases[j].Vf, phases[j].Rhs, phases[j].tau};
    }
    int status = structureFactors(nPhase, spheres, cSys, s, nPts, &mc.strFac[0][0], kMaxPoints);
    keepGrid(s, nPts);
    const double* curve[kMaxPhases];
    for (int j = 0; j < nPhase; ++j) curve[j] = phaseCurve(phases[j], j, s, nPts);
    for (int k = 0; k < nPts; ++k) {
        double sum = 0;
        for (int j = 0; j < nPhase; ++j) sum += phases[j].Vf * (curve[j] ? curve[j][k] : 0.0);
        mc.sumCurve[k] = sum;
    }
    return status;
}

double objectiveValue(const double* I, const double* w, int nPts) {
    ModelCurvesRecord& mc = ModelCurves;
    double up = 0, down = 0;
    for (int k = 0; k < nPts; ++k) {
        up += I[k] * mc.sumCurve[k] * w[k] * w[k];
        down += (mc.sumCurve[k] * w[k]) * (mc.sumCurve[k] * w[k]);
    }
    mc.scaleB = down > 0 ? up / down : 0.0;
    double f = 0;
    for (int k = 0; k < nPts; ++k) {
        double r = (I[k] - mc.scaleB * mc.sumCurve[k]) * w[k];
        f += r * r;
    }
    return f;
}

double fitDeviation(const double* I, const double* err, int nPts) {
    ModelCurvesRecord& mc = ModelCurves;
    mc.sigmaFit = 0;
    if (nPts < 2) return 0;
    double sum = 0;
    for (int k = 0; k < nPts; ++k) {
        double r = (I[k] - mc.scaleB * mc.sumCurve[k]) / err[k];
        sum += r * r;
    }
    mc.sigmaFit = std::sqrt(sum / (nPts - 1));
    return mc.sigmaFit;
}
